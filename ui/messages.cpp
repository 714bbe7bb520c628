#include "ui/messages.h"

#include "platform/runtimeerror.h"
#include "ui/busypointer.h"

#include <QApplication>
#include <QGridLayout>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// What a title bar takes beside its title: icon, buttons and some air, in heights of its text.
constexpr int titleBarRest = 8;

int widthOfTitle(const QString &title)
{
    QFont font = QApplication::font("QMdiSubWindowTitleBar");
    font.setBold(true);
    const QFontMetrics metrics(font);
    return metrics.horizontalAdvance(title) + titleBarRest * metrics.height();
}

// A message box takes the width that its text wants, whatever stands above.
void makeRoomForTitle(QMessageBox &box)
{
    if (auto *grid = qobject_cast<QGridLayout *>(box.layout())) {
        grid->addItem(
            new QSpacerItem(widthOfTitle(box.windowTitle()), 0), grid->rowCount(), 0, 1, grid->columnCount());
    }
}

int showBox(QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text,
    QMessageBox::StandardButtons buttons)
{
    // Names and answers come from the air and from the network: never markup.
    QMessageBox box(icon, title.isEmpty() ? u"Quillon"_s : title, text, buttons, parent);
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    if (buttons & QMessageBox::No) {
        box.setDefaultButton(QMessageBox::No);
        box.setEscapeButton(QMessageBox::No);
    }
    makeRoomForTitle(box);
    return box.exec();
}

} // namespace

void showMessage(QWidget *parent, const QString &text, const QString &title)
{
    showBox(parent, QMessageBox::NoIcon, title, text, QMessageBox::Ok);
}

void showMessageWith(QWidget *parent, const QString &text, const QString &details, const QString &title)
{
    QMessageBox box(
        QMessageBox::NoIcon, title.isEmpty() ? u"Quillon"_s : title, text, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    box.setDetailedText(details);
    makeRoomForTitle(box);
    box.exec();
}

bool showMessageOr(QWidget *parent, const QString &text, const QString &otherButton)
{
    const NormalPointer normal;
    QMessageBox box(QMessageBox::NoIcon, u"Quillon"_s, text, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    const QPushButton *other = box.addButton(otherButton, QMessageBox::ActionRole);
    box.setDefaultButton(QMessageBox::Ok);
    box.setEscapeButton(QMessageBox::Ok);
    box.exec();
    return box.clickedButton() != other;
}

bool askYesNo(QWidget *parent, const QString &text, const QString &title)
{
    return showBox(parent, QMessageBox::Information, title, text, QMessageBox::Yes | QMessageBox::No)
        == QMessageBox::Yes;
}

QString inputBox(QWidget *parent, const QString &prompt, const QString &title, const QString &defaultText)
{
    QInputDialog dialog(parent);
    dialog.setWindowTitle(title.isEmpty() ? u"Quillon"_s : title);
    dialog.setLabelText(prompt);
    dialog.setTextValue(defaultText);
    // The dialog takes its least width from what is in it.
    constexpr int roomForAPath = 420;
    if (auto *label = dialog.findChild<QLabel *>()) {
        label->setTextFormat(Qt::PlainText);
        label->setMinimumWidth(qMax(roomForAPath, widthOfTitle(dialog.windowTitle())));
    }
    return dialog.exec() == QDialog::Accepted ? dialog.textValue() : QString();
}

void showRuntimeError(QWidget *parent, const RuntimeError &error)
{
    const NormalPointer normal;
    showBox(parent, QMessageBox::Critical, {}, error.text(), QMessageBox::Ok);
}

} // namespace quillon
