#include "core/ui/form1.h"

#include "geo/ui/dialog.h"
#include "stats/ui/logstats.h"
#include "txdb/distances.h"
#include "ui/busypointer.h"
#include "ui/form2.h"
#include "ui/frmsplash.h"
#include "ui/guard.h"
#include "ui/messages.h"
#include "ui/openwindow.h"
#include "ui/scratchpad.h"
#include "ui_form1.h"

namespace quillon {

using namespace Qt::StringLiterals;

// Re-Calculate Distances.
void Form1::Command10_Click()
{
    if (!homeIsSet(m_config.settings())) {
        showMessage(this, u"Home Location not set, go to setup to configure"_s);
        return;
    }
    const BusyPointer busy;
    measureTransmitters(m_transmitters, m_config.settings(), m_decimalComma);
    saveTransmitterList();
    giveDistances(m_transmitters, m_log);
    populateGrid();
    saveLogbook();
}

// Converter.
void Form1::menuToolsConverter_Click()
{
    if (openWindow<Dialog>(*this)) {
        return;
    }
    auto *window = new Dialog(m_config.settings(), this);
    connect(window, &Dialog::sendToLogBook, this, [this](const QString &latitude, const QString &longitude) {
        guarded(this, [&] {
            m_ui->Text7->setText(latitude);
            m_ui->Text10->setText(longitude);
        });
    });
    window->show();
}

// Stats.
void Form1::menuStats_Click()
{
    if (!openWindow<logStats>(*this)) {
        (new logStats(m_log, m_config.applicationDir(), this))->show();
    }
}

// Setup.
void Form1::menuSetup_Click()
{
    if (auto *open = openWindow<Form2>(*this)) {
        open->fill();
        return;
    }
    auto *window = new Form2(this, m_config);
    connect(window, &Form2::saved, this, [this] { guarded(this, [this] { populateGrid(); }); });
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
    if (openWindow<frmSplash>(*this)) {
        return;
    }
    auto *window = new frmSplash(this, frmSplash::Use::About, m_config.settings().propagationUrl);
    window->tellDirectory(m_config.applicationDir());
    window->show();
}

// Exit: every change was saved when it was made.
void Form1::MenuFileExit_Click()
{
    close();
}

} // namespace quillon
