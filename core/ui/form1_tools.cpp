#include "core/ui/form1.h"

#include "ui/form2.h"
#include "ui/frmsplash.h"
#include "ui/scratchpad.h"

namespace quillon {

// Setup.
void Form1::menuSetup_Click()
{
    auto *window = new Form2(this, m_config);
    connect(window, &Form2::saved, this, [this] {
        showTitle();
        populateGrid();
    });
    window->show();
}

// Scratch Pad.
void Form1::Command12_Click()
{
    if (!m_scratchPad) {
        m_scratchPad = new ScratchPad(this, m_config);
    }
    m_scratchPad->show();
    m_scratchPad->raise();
    m_scratchPad->activateWindow();
    m_scratchPad->offerKeptNote();
}

// About.
void Form1::menuAbout_Click()
{
    (new frmSplash(this, frmSplash::Use::About, m_config.settings().propagationUrl))->show();
}

// Exit: every change was saved when it was made.
void Form1::MenuFileExit_Click()
{
    close();
}

} // namespace quillon
