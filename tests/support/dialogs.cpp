#include "support/dialogs.h"

#include <QAbstractButton>
#include <QApplication>
#include <QInputDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace quillon::test {

namespace {

SeenDialog describe(QWidget *dialog)
{
    SeenDialog seen;
    seen.title = dialog->windowTitle();
    if (const auto *box = qobject_cast<QMessageBox *>(dialog)) {
        seen.text = box->text();
        seen.icon = box->icon();
        if (box->defaultButton()) {
            seen.defaultButton = box->standardButton(box->defaultButton());
        }
    } else if (const auto *input = qobject_cast<QInputDialog *>(dialog)) {
        seen.text = input->labelText();
        seen.input = input->textValue();
    }
    return seen;
}

void escape(QWidget *dialog)
{
    QTest::keyClick(dialog, Qt::Key_Escape);
}

} // namespace

DialogAnswers::DialogAnswers(QObject *parent)
    : QObject(parent)
{
    connect(&m_timer, &QTimer::timeout, this, &DialogAnswers::look);
    m_timer.start(1);
}

void DialogAnswers::press(QMessageBox::StandardButton button)
{
    m_answers.append([button](QWidget *dialog) {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        if (box && box->button(button)) {
            QTest::mouseClick(box->button(button), Qt::LeftButton);
        } else {
            qWarning("the open dialog has no such button");
            escape(dialog);
        }
    });
}

void DialogAnswers::type(const QString &text)
{
    m_answers.append([text](QWidget *dialog) {
        if (auto *edit = dialog->findChild<QLineEdit *>()) {
            edit->selectAll();
            edit->insert(text);
            QTest::keyClick(edit, Qt::Key_Return);
        } else {
            qWarning("the open dialog asks for no text");
            escape(dialog);
        }
    });
}

void DialogAnswers::accept()
{
    m_answers.append([](QWidget *dialog) { QTest::keyClick(dialog, Qt::Key_Return); });
}

void DialogAnswers::cancel()
{
    m_answers.append(escape);
}

void DialogAnswers::doing(const std::function<void(QWidget *)> &work)
{
    m_answers.append(work);
}

QStringList DialogAnswers::takeTexts()
{
    QStringList texts;
    for (const SeenDialog &seen : std::as_const(m_seen)) {
        texts += seen.text;
    }
    m_seen.clear();
    return texts;
}

void DialogAnswers::look()
{
    QWidget *dialog = QApplication::activeModalWidget();
    if (!dialog || !dialog->isVisible() || m_busy) {
        return;
    }
    m_busy = true;
    m_seen.append(describe(dialog));
    const std::function<void(QWidget *)> answer = m_answers.isEmpty() ? escape : m_answers.takeFirst();
    answer(dialog);
    m_busy = false;
}

} // namespace quillon::test
