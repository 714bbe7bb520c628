#include "ui/messages.h"

#include "platform/runtimeerror.h"
#include "ui/busypointer.h"

#include <QInputDialog>
#include <QMessageBox>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

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
    return box.exec();
}

} // namespace

void showMessage(QWidget *parent, const QString &text, const QString &title)
{
    showBox(parent, QMessageBox::NoIcon, title, text, QMessageBox::Ok);
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
    dialog.setMinimumWidth(420);
    return dialog.exec() == QDialog::Accepted ? dialog.textValue() : QString();
}

void showRuntimeError(QWidget *parent, const RuntimeError &error)
{
    const NormalPointer normal;
    showBox(parent, QMessageBox::Critical, {}, error.text(), QMessageBox::Ok);
}

} // namespace quillon
