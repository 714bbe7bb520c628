#include "support/accessibility.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QKeySequence>
#include <QLabel>
#include <QMap>
#include <QMenuBar>
#include <QRadioButton>
#include <QTest>

namespace quillon::test {

using namespace Qt::StringLiterals;

namespace {

// The letters that Alt chooses, each with the captions that claim it.
QMap<QChar, QStringList> mnemonics(const QStringList &captions)
{
    QMap<QChar, QStringList> claimed;
    for (const QString &caption : captions) {
        const QKeySequence keys = QKeySequence::mnemonic(caption);
        if (!keys.isEmpty()) {
            claimed[keys.toString().back()] += caption;
        }
    }
    return claimed;
}

} // namespace

QList<QWidget *> controlsOf(const QWidget &window)
{
    QList<QWidget *> controls;
    const QList<QWidget *> all = window.findChildren<QWidget *>();
    for (QWidget *widget : all) {
        const auto *parent = widget->parentWidget();
        const bool part = widget->objectName().startsWith(u"qt_") || qobject_cast<const QComboBox *>(parent)
            || qobject_cast<const QAbstractScrollArea *>(parent)
            || (parent && qobject_cast<const QAbstractScrollArea *>(parent->parentWidget()));
        if (widget->window() == &window && (widget->focusPolicy() & Qt::TabFocus) && !part
            && !qobject_cast<QMenuBar *>(widget)) {
            controls += widget;
        }
    }
    return controls;
}

QStringList withoutName(const QWidget &window)
{
    QStringList names;
    const QList<QWidget *> controls = controlsOf(window);
    for (QWidget *control : controls) {
        const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(control);
        if (!interface || interface->text(QAccessible::Name).isEmpty()) {
            names += control->objectName();
        }
    }
    return names;
}

QStringList claimedTwice(const QStringList &captions)
{
    QStringList twice;
    const QMap<QChar, QStringList> claimed = mnemonics(captions);
    for (const QStringList &claimants : claimed) {
        if (claimants.size() > 1) {
            twice += claimants.join(u" and "_s);
        }
    }
    return twice;
}

QStringList captionsOf(const QWidget &window)
{
    QStringList captions;
    const QList<QLabel *> labels = window.findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        if (label->buddy()) {
            captions += label->text();
        }
    }
    const QList<QAbstractButton *> buttons = window.findChildren<QAbstractButton *>();
    for (const QAbstractButton *button : buttons) {
        captions += button->text();
    }
    return captions;
}

QStringList notReached(QWidget &window)
{
    const QList<QWidget *> controls = controlsOf(window);
    const auto hasFocus = [&] {
        return QApplication::focusWidget() && QApplication::focusWidget()->window() == &window;
    };
    if (!QTest::qWaitFor(hasFocus)) {
        return {u"none has the focus"_s};
    }
    QSet<const QWidget *> reached;
    for (qsizetype i = 0; i < 2 * controls.size() + 2; ++i) {
        for (const QWidget *at = QApplication::focusWidget(); at; at = at->parentWidget()) {
            reached += at;
        }
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QStringList names;
    for (const QWidget *control : controls) {
        // Of radio buttons the Tab key comes to the chosen one.
        const auto *radio = qobject_cast<const QRadioButton *>(control);
        if ((!radio || radio->isChecked()) && control->isEnabled() && control->isVisible()
            && !reached.contains(control)) {
            names += control->objectName();
        }
    }
    return names;
}

QStringList cutOff(const QWidget &window)
{
    QStringList names;
    const QList<QWidget *> all = window.findChildren<QWidget *>();
    for (const QWidget *widget : all) {
        const bool caption =
            qobject_cast<const QLabel *>(widget) || qobject_cast<const QAbstractButton *>(widget);
        if (!caption || !widget->isVisible() || widget->window() != &window) {
            continue;
        }
        const QSize wanted = widget->minimumSizeHint();
        const QRect place(widget->mapTo(&window, QPoint()), widget->size());
        if (widget->width() < wanted.width() || widget->height() < wanted.height()
            || !window.rect().contains(place)) {
            names += widget->objectName();
        }
    }
    return names;
}

} // namespace quillon::test
