#include "core/ui/dialog1.h"

#include "ui/guard.h"
#include "ui/messages.h"
#include "ui/onelinefields.h"
#include "ui_dialog1.h"

namespace quillon {

using namespace Qt::StringLiterals;

Dialog1::Dialog1(QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::Dialog1>())
{
    m_ui->setupUi(this);
    keepFieldsOnOneLine(*this);
    setAttribute(Qt::WA_DeleteOnClose);
    connect(
        m_ui->OKButton, &QPushButton::clicked, this, [this] { guarded(this, [this] { OKButton_Click(); }); });
    connect(m_ui->CancelButton, &QPushButton::clicked, this, [this] { CancelButton_Click(); });
    m_ui->Text2->setFocus();
}

Dialog1::~Dialog1() = default;

void Dialog1::offer(const QString &freq, const QString &piCode)
{
    if (!piCode.isEmpty()) {
        m_ui->Text2->setText(piCode);
    }
    if (!freq.isEmpty()) {
        m_ui->Text1->setText(freq);
    }
    m_ui->Text2->selectAll();
}

// OK: logs the station.
void Dialog1::OKButton_Click()
{
    if (m_ui->Text1->text().isEmpty()) {
        showMessage(this, u"Frequency empty"_s);
        return;
    }
    if (m_ui->Text2->text().isEmpty() && m_ui->Text3->text().isEmpty()) {
        showMessage(this, u"PI and Name empty"_s);
        return;
    }
    m_ui->Text2->setText(m_ui->Text2->text().toUpper());
    // The window closes: a second click that is under way logs nothing.
    m_ui->OKButton->setEnabled(false);
    Q_EMIT quickAdd(m_ui->Text1->text(), m_ui->Text2->text(), m_ui->Text3->text());
    close();
}

// Cancel: closes the window.
void Dialog1::CancelButton_Click()
{
    close();
}

} // namespace quillon
