#include "ui/shortcutfirst.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

/// A field that has every key with Ctrl for editing.
class Greedy : public QLineEdit
{
public:
    using QLineEdit::QLineEdit;

    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::ShortcutOverride) {
            event->accept();
            return true;
        }
        return QLineEdit::event(event);
    }
};

} // namespace

class TestShortcutFirst : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theShortcutWorksInAField_data()
    {
        QTest::addColumn<bool>("first");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("activated");
        QTest::newRow("without it") << false << int(Qt::Key_E) << 0;
        QTest::newRow("with it") << true << int(Qt::Key_E) << 1;
        QTest::newRow("another key") << true << int(Qt::Key_B) << 0;
    }
    void theShortcutWorksInAField()
    {
        QFETCH(bool, first);
        QFETCH(int, key);
        QFETCH(int, activated);
        QWidget window;
        auto *layout = new QHBoxLayout(&window);
        auto *field = new Greedy(&window);
        layout->addWidget(field);
        if (first) {
            new ShortcutFirst(window, {QKeySequence(Qt::CTRL | Qt::Key_E)});
        }
        const QShortcut shortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(key)), &window);
        const QSignalSpy spy(&shortcut, &QShortcut::activated);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        field->setFocus();
        QTest::keyClick(field, static_cast<Qt::Key>(key), Qt::ControlModifier);
        QCOMPARE(spy.count(), activated);
    }
};

QTEST_MAIN(TestShortcutFirst)
#include "tst_shortcutfirst.moc"
