#include "core/ui/form1_stations.h"
#include "geo/ui/dialog.h"
#include "stats/ui/collectionwindow.h"
#include "stats/ui/logstats.h"
#include "txdb/derivedcells.h"
#include "txdb/distances.h"
#include "ui/busypointer.h"
#include "ui/form2.h"
#include "ui/frmsplash.h"
#include "ui/guard.h"
#include "ui/messages.h"
#include "ui/openwindow.h"
#include "ui/scratchpad.h"
#include "ui/windowmemory.h"
#include "ui_form1.h"

#include <QScopeGuard>

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
    const LogDocument::Group step(m_document, u"Re-Calculate Distances"_s);
    m_document.commit({{}, {}, measuredTransmitters(transmitters(), m_config.settings(), m_decimalComma)},
        LogDocument::Saving::Sites);
    const auto shown = qScopeGuard([this] { populateGrid(); });
    m_document.commit({{}, givenDistances(transmitters(), log()), {}});
    tell(u"Distances re-calculated: %1 sites"_s.arg(transmitters().count()));
}

// Measure Distances at Once.
void Form1::menuViewDistances_Toggled(bool on)
{
    if (m_memory) {
        m_memory->setTicked(u"distances"_s, on);
    }
    if (on && !homePosition(m_config.settings())) {
        tell(u"Distances are measured as soon as home is set in the setup"_s);
    }
}

// A reception that is added or updated gets the distance that a re-calculation would give it.
void Form1::measure(LogEntry &entry, SiteChanges &sites) const
{
    if (!m_ui->menuViewDistances->isChecked()) {
        return;
    }
    if (const auto distance =
            measuredDistance(entry.transmitter, entry.country, transmitters(), m_config.settings(), sites)) {
        entry.dist = *distance;
    }
}

// The same of a change of many.
Change Form1::measured(Change change, Measured which) const
{
    if (m_ui->menuViewDistances->isChecked()) {
        measureChange(change.log, log(), which, transmitters(), m_config.settings(), change.sites);
    }
    return change;
}

// Converter.
void Form1::menuToolsConverter_Click()
{
    if (openWindow<Dialog>(*this)) {
        return;
    }
    auto *window = new Dialog(m_config.settings(), this);
    connect(window, &Dialog::sendToLogBook, this,
        [this, window](const QString &latitude, const QString &longitude) {
            const bool open = m_form->state() != EntryForm::State::AtRest && !m_longWork;
            window->tell(
                open ? QString() : u"No reception is open in the log: choose one or press New first"_s);
            if (open) {
                m_form->setPosition(latitude, longitude);
            }
        });
    window->show();
}

// Stats.
void Form1::menuStats_Click()
{
    if (!openWindow<logStats>(*this)) {
        auto *window = new logStats(log(), m_config.applicationDir(), this, *m_options.fileCalls);
        window->setRows(m_rows);
        window->show();
    }
}

// Setup.
void Form1::menuSetup_Click()
{
    if (openWindow<Form2>(*this)) {
        return;
    }
    auto *window = new Form2(this, m_config);
    connect(window, &Form2::saved, this, [this] { guarded(this, [this] { settingsSaved(); }); });
    window->show();
}

// What the settings decide is shown anew.
void Form1::settingsSaved()
{
    populateGrid();
    // The filter's distances are in the unit that is set.
    if (m_ui->filterBar->isOverruled()) {
        refreshMap();
    } else {
        applyFilter();
    }
    if (auto *collection = findChild<CollectionWindow *>(QString(), Qt::FindDirectChildrenOnly)) {
        collection->logChanged();
    }
    m_probably->settingsChanged();
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
