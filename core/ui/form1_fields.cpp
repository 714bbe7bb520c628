#include "core/ui/form1.h"

#include "ui/messages.h"
#include "ui_form1.h"

#include <QTimer>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

void setBackground(QWidget *field, const QColor &background, const QColor &text)
{
    QPalette palette;
    if (background.isValid()) {
        for (const QPalette::ColorRole role : {QPalette::Base, QPalette::Button}) {
            palette.setColor(role, background);
        }
        for (const QPalette::ColorRole role :
            {QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText}) {
            palette.setColor(role, text);
        }
    }
    field->setPalette(palette);
}

} // namespace

QList<QWidget *> Form1::editableFields() const
{
    return {m_ui->Text1, m_ui->Text2, m_ui->Text3, m_ui->Combo3, m_ui->Text5, m_ui->Text6, m_ui->Text7,
        m_ui->Text8, m_ui->Text9, m_ui->Text10, m_ui->Combo1, m_ui->Combo2};
}

// Browse state. The fields that also serve the searches stay enabled.
void Form1::lockEntryForm()
{
    for (QWidget *widget : std::initializer_list<QWidget *> {m_ui->Text2, m_ui->Text3, m_ui->Text6,
             m_ui->Text7, m_ui->Text10, m_ui->Combo1, m_ui->Combo2, m_ui->Command1, m_ui->Command3,
             m_ui->Command9, m_ui->Command15, m_ui->Command5, m_ui->Command11}) {
        widget->setEnabled(false);
    }
}

// Editing state.
void Form1::unlockEntryForm()
{
    const QList<QWidget *> fields = editableFields();
    for (QWidget *field : fields) {
        field->setEnabled(true);
    }
    for (QWidget *button : std::initializer_list<QWidget *> {m_ui->Command1, m_ui->Command4, m_ui->Command5,
             m_ui->Command11, m_ui->Command6, m_ui->Command7, m_ui->Command8}) {
        button->setEnabled(true);
    }
}

// Yellow: an existing entry is loaded.
void Form1::highlightEntryForm()
{
    const QList<QWidget *> fields = editableFields();
    for (QWidget *field : fields) {
        setBackground(field, QColor(255, 255, 0), Qt::black);
    }
}

void Form1::normalEntryForm()
{
    const QList<QWidget *> fields = editableFields();
    for (QWidget *field : fields) {
        setBackground(field, {}, {});
    }
}

void Form1::fieldLostFocus(QObject *field)
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

// PI Code.
void Form1::Text1_LostFocus()
{
    m_ui->Text1->setText(m_ui->Text1->text().trimmed().toUpper());
}

// Date / Time.
void Form1::Text2_LostFocus()
{
    if (!parseDateTime(m_ui->Text2->text(), m_options.regional.months)) {
        m_ui->Text2->setText(utcNowText());
        // The button whose press left the field is not to stand pressed behind the message.
        m_dateRefused = true;
        QTimer::singleShot(0, this, [this] { tellInvalidDate(); });
    }
}

void Form1::tellInvalidDate()
{
    const QList<QAbstractButton *> buttons = findChildren<QAbstractButton *>();
    for (QAbstractButton *button : buttons) {
        button->setDown(false);
    }
    m_dateRefused = false;
    showMessage(this, u"Invalid Date"_s);
}

// Power KW.
void Form1::Text6_LostFocus()
{
    m_ui->Text6->setText(m_ui->Text6->text().toUpper());
}

// RDS Name (PS).
void Form1::Text8_LostFocus()
{
    m_ui->Text8->setText(m_ui->Text8->text().replace(u' ', u'_'));
}

// Country ITU.
void Form1::Combo3_LostFocus()
{
    listTransmittersForCountry(m_ui->Combo3->currentText());
}

// Existing: fills the transmitter fields.
void Form1::Combo1_Click()
{
    if (m_ui->Combo1->currentIndex() >= 0) {
        selectTransmitter(m_ui->Combo1->currentText(), m_ui->Combo3->currentText());
    }
}

void Form1::listTransmittersForCountry(const QString &country)
{
    const QStringList names = m_transmitters.namesOfCountry(country);
    m_ui->Combo1->setUpdatesEnabled(false);
    m_ui->Combo1->clear();
    m_ui->Combo1->addItems(names);
    m_ui->Combo1->setCurrentIndex(-1);
    m_ui->Combo1->setUpdatesEnabled(true);
}

void Form1::selectTransmitter(const QString &name, const QString &country)
{
    const auto found = m_transmitters.find(name, country);
    if (!found) {
        return;
    }
    const Transmitter &transmitter = m_transmitters.row(*found);
    m_ui->Text5->setText(transmitter.name);
    m_ui->Text7->setText(transmitter.latitude);
    m_ui->Text10->setText(transmitter.longitude);
}

} // namespace quillon
