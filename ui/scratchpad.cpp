#include "ui/scratchpad.h"

#include "core/config.h"
#include "core/linebreaks.h"
#include "ui/guard.h"
#include "ui_scratchpad.h"

namespace quillon {

using namespace Qt::StringLiterals;

ScratchPad::ScratchPad(QWidget *parent, Config &config)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::ScratchPad>())
    , m_config(config)
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    connect(m_ui->OKButton, &QPushButton::clicked, this,
        [this] { guarded(this, [this] { ScratchPad_OKButton_Click(); }); });
    connect(m_ui->CancelButton, &QPushButton::clicked, this, [this] { CancelButton_Click(); });
}

ScratchPad::~ScratchPad() = default;

void ScratchPad::offerKeptNote()
{
    if (m_ui->Text1->document()->isEmpty()) {
        m_offered = m_config.settings().scratchPad;
        m_ui->Text1->setPlainText(m_offered);
    }
}

// Save.
void ScratchPad::ScratchPad_OKButton_Click()
{
    QString note = m_offered;
    if (m_ui->Text1->document()->isModified()) {
        // A line of the text box ends with CR LF.
        note = m_ui->Text1->document()
                   ->toRawText()
                   .replace(QChar::ParagraphSeparator, "\r\n"_L1)
                   .replace(QChar::LineSeparator, "\r\n"_L1);
    }
    m_config.changeConfig(u"SCRATCH_PAD="_s, foldedLineBreaks(note));
    close();
}

// Cancel.
void ScratchPad::CancelButton_Click()
{
    close();
}

} // namespace quillon
