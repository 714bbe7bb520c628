#include "core/ui/entryform.h"

#include "core/suggestions.h"
#include "core/typedfields.h"
#include "ui/fieldcompleter.h"
#include "ui/messages.h"
#include "ui_entryform.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QTimer>

#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

void EntryForm::wire()
{
    QList<QWidget *> fields = editableFields();
    fields += {m_ui->uid, m_ui->Combo2->lineEdit(), m_ui->Combo3->lineEdit()};
    for (QWidget *field : std::as_const(fields)) {
        field->installEventFilter(this);
    }
    for (QLineEdit *field : {m_ui->Text1, m_ui->Text2, m_ui->Text5, m_ui->Text6, m_ui->Text7, m_ui->Text8,
             m_ui->Text9, m_ui->Text10, m_ui->uid, m_ui->Combo2->lineEdit(), m_ui->Combo3->lineEdit()}) {
        connect(field, &QLineEdit::returnPressed, this, [this, field] {
            const auto *completer = field->findChild<FieldCompleter *>();
            if (!completer || !completer->isChoosing()) {
                Q_EMIT enterPressed();
            }
        });
    }
    connect(m_ui->Combo1, &QComboBox::activated, this, [this] { Combo1_Click(); });
    connect(m_ui->Combo3, &QComboBox::activated, this, [this] { listSites(country()); });
    const QList<QAbstractButton *> buttons = findChildren<QAbstractButton *>();
    for (QAbstractButton *pressed : buttons) {
        // The field was left before the press, and the wrong date in it is not yet told.
        connect(pressed, &QAbstractButton::pressed, this, [this] { m_pressRefused = m_dateRefused; });
    }
}

void EntryForm::completeFrom(const Logbook &log)
{
    new FieldCompleter(
        *m_ui->Text8, [this, &log] { return rdsNamesOf(log, typedField(LogField::PiCode, piCode())); });
    new FieldCompleter(*m_ui->Text5, [this, &log] { return sitesOf(log, country().trimmed()); });
}

void EntryForm::watchEdits()
{
    const auto note = [this] {
        m_edited = true;
        Q_EMIT edited();
    };
    const QList<QLineEdit *> fields = findChildren<QLineEdit *>();
    for (QLineEdit *field : fields) {
        connect(field, &QLineEdit::textEdited, this, note);
        connect(field, &QLineEdit::textChanged, this, &EntryForm::textChanged);
    }
    for (QComboBox *combo : {m_ui->Combo1, m_ui->Combo2, m_ui->Combo3}) {
        connect(combo, &QComboBox::activated, this, note);
    }
    connect(m_ui->Text9, &QLineEdit::textChanged, this, [this] { tellStored(); });
    tellStored();
    connect(m_ui->Text3, &QPlainTextEdit::textChanged, this, [this, note] {
        if (m_ui->Text3->document()->isModified()) {
            note();
        }
    });
}

bool EntryForm::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Y && key->modifiers() == Qt::ControlModifier) {
            // In a field it is typing that is made again.
            if (event->type() == QEvent::KeyPress) {
                const auto *combo = qobject_cast<QComboBox *>(watched);
                QObject *text = combo ? combo->lineEdit() : watched;
                if (text) {
                    QMetaObject::invokeMethod(text, "redo");
                }
            }
            event->accept();
            return true;
        }
    }
    if (event->type() == QEvent::FocusOut) {
        const auto reason = static_cast<QFocusEvent *>(event)->reason();
        // Another window or a drop-down list takes the focus only for a while.
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason
            && reason != Qt::MenuBarFocusReason) {
            fieldLostFocus(watched);
        }
    }
    return QWidget::eventFilter(watched, event);
}

// What no field wanted.
void EntryForm::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
        Q_EMIT escapePressed();
        return;
    }
    QWidget::keyPressEvent(event);
}

void EntryForm::fieldLostFocus(const QObject *field)
{
    if (field == m_ui->Text1) {
        Text1_LostFocus();
    } else if (field == m_ui->Text2) {
        Text2_LostFocus();
    } else if (field == m_ui->Text6) {
        Text6_LostFocus();
    } else if (field == m_ui->Text8) {
        Text8_LostFocus();
    } else if (field == m_ui->Combo3) {
        Combo3_LostFocus();
    }
}

bool EntryForm::isDateWrong() const
{
    return !dateTime();
}

// Beneath the fields: that the frequency is stored as it was typed, where its usual spelling is another one.
void EntryForm::tellStored()
{
    const QString typed = m_ui->Text9->text();
    const QString usual = usualFrequency(typed);
    const bool differs = m_ui->Text9->isModified() && usual != typed;
    m_ui->freqStored->setText(
        differs ? u"Frequency is stored as typed, %1; usual is %2"_s.arg(typed, usual) : QString());
    m_ui->freqStored->setVisible(differs);
}

// PI Code.
void EntryForm::Text1_LostFocus()
{
    m_ui->Text1->setText(typedField(LogField::PiCode, m_ui->Text1->text()));
}

// Date / Time.
void EntryForm::Text2_LostFocus()
{
    if (isDateWrong() && !m_dateRefused) {
        m_dateRefused = true;
        // The button whose press left the field is not to stand pressed behind the message.
        QTimer::singleShot(0, this, [this] { tellInvalidDate(); });
    }
}

void EntryForm::tellInvalidDate()
{
    const QList<QAbstractButton *> buttons = findChildren<QAbstractButton *>();
    for (QAbstractButton *pressed : buttons) {
        pressed->setDown(false);
    }
    showMessage(this, u"Invalid Date"_s);
    if (isDateWrong()) {
        m_ui->Text2->setText(generalText(UtcNow()));
    }
    m_dateRefused = false;
}

// Power KW.
void EntryForm::Text6_LostFocus()
{
    m_ui->Text6->setText(typedField(LogField::Power, m_ui->Text6->text()));
}

// RDS Name (PS).
void EntryForm::Text8_LostFocus()
{
    m_ui->Text8->setText(typedField(LogField::RdsName, m_ui->Text8->text()));
}

// Country ITU.
void EntryForm::Combo3_LostFocus()
{
    listSites(country());
}

// Existing: fills the transmitter fields.
void EntryForm::Combo1_Click()
{
    if (m_ui->Combo1->currentIndex() >= 0) {
        showSite(m_ui->Combo1->currentText(), country());
    }
}

bool EntryForm::checkFocusedField()
{
    QWidget *field = window()->focusWidget();
    if (!field || !editableFields().contains(field)) {
        return true;
    }
    fieldLostFocus(field);
    return field != m_ui->Text2 || !isDateWrong();
}

bool EntryForm::takeRefusal()
{
    return std::exchange(m_pressRefused, false);
}

} // namespace quillon
