#include "core/ui/dialog1.h"

#include "core/typedfields.h"
#include "ui/guard.h"
#include "ui/messages.h"
#include "ui/onelinefields.h"
#include "ui/problemwatch.h"
#include "ui_dialog1.h"

namespace quillon {

using namespace Qt::StringLiterals;

Dialog1::Dialog1(const CodePage &codePage, QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::Dialog1>())
{
    m_ui->setupUi(this);
    keepFieldsOnOneLine(*this);
    watchForProblems(*m_ui->problem, codePage,
        {{m_ui->Text1, FieldKind::Freq}, {m_ui->Text2, FieldKind::PiCode},
            {m_ui->Text3, FieldKind::RdsName}});
    QSizePolicy keepsItsPlace = m_ui->fromForm->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    m_ui->fromForm->setSizePolicy(keepsItsPlace);
    showFromForm(false);
    connect(m_ui->Text1, &QLineEdit::textChanged, this, [this](const QString &text) {
        const QString usual = usualFrequency(text);
        m_ui->freqStored->setText(usual == text ? QString() : u"stored so; usual is "_s + usual);
    });
    connect(m_ui->Text2, &QLineEdit::textEdited, this, [this] { showFromForm(false); });
    setAttribute(Qt::WA_DeleteOnClose);
    connect(
        m_ui->OKButton, &QPushButton::clicked, this, [this] { guarded(this, [this] { OKButton_Click(); }); });
    connect(m_ui->CancelButton, &QPushButton::clicked, this, [this] { CancelButton_Click(); });
    m_ui->Text1->setFocus();
    m_ui->Text1->selectAll();
}

Dialog1::~Dialog1() = default;

void Dialog1::offer(const QString &freq, const QString &piCode)
{
    if (!piCode.isEmpty()) {
        m_ui->Text2->setText(piCode);
        showFromForm(true);
    }
    if (!freq.isEmpty()) {
        m_ui->Text1->setText(freq);
    }
    m_ui->Text1->selectAll();
}

// A PI code that nobody touched can be that of the station before.
void Dialog1::showFromForm(bool shown)
{
    m_ui->fromForm->setVisible(shown);
    m_ui->Text2->setAccessibleName(shown ? u"PI code, from the form"_s : u"PI code"_s);
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
