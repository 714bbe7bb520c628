#include "core/ui/form1.h"

#include "export/kmlfiles.h"
#include "export/textlog.h"
#include "export/webpages.h"
#include "fmlist/weblinks.h"
#include "ui/busypointer.h"
#include "ui/desktop.h"
#include "ui/messages.h"
#include "ui/version.h"
#include "ui/widgetstate.h"
#include "ui_form1.h"

#include <optional>

namespace quillon {

using namespace Qt::StringLiterals;

// Transmitters as KML.
void Form1::menuExportGoogleTX_Click()
{
    openFile(writeTransmitterKml(
        m_config.applicationDir(), m_transmitters, m_options.regional.codePage, *m_options.fileCalls));
}

// Logbook as KML.
void Form1::menuExportGoogleLog_Click()
{
    openFile(writeLogbookKml(
        m_config.applicationDir(), m_log, m_transmitters, m_options.regional.codePage, *m_options.fileCalls));
}

// Web Page.
void Form1::menuExportWebPage_Click()
{
    QString index;
    {
        const BusyPointer busy;
        // The bar of an upload or an automatic search that runs stays theirs.
        std::optional<ShownProgress> bar;
        if (m_progress->isHidden()) {
            bar.emplace(*m_progress, u"Exporting %v of %m"_s);
        }
        const Hidden hidden(*m_ui->Grid1);
        index = exportWebPages(m_config.applicationDir(),
            {*m_ui->Grid1, m_log, m_transmitters, m_config.settings().callsign, versionText(), localNow()},
            m_options.regional, *m_options.fileCalls, [this, &bar](int done, int count) {
                if (bar) {
                    m_progress->setRange(0, count);
                    m_progress->setValue(done);
                    m_progress->repaint();
                }
            });
    }
    openFile(index);
}

// Text for E-Mail.
void Form1::menuExportEmail_Click()
{
    const DateTime now = localNow();
    const QString fromText =
        inputBox(this, u"Export from?"_s, u"Date Range"_s, generalText({now.seconds - secondsPerDay}));
    if (fromText.isEmpty()) {
        return;
    }
    const QString toText = inputBox(this, u"Export to?"_s, u"Date Range"_s, generalText(now));
    if (toText.isEmpty()) {
        return;
    }
    const MonthNames &months = m_options.regional.months;
    TextLogRange range {toDateTime(fromText, months, u"Export from"_s),
        toDateTime(toText, months, u"Export to"_s), m_config.settings().inMiles(),
        ownPropagationMapUrl(m_config.settings().fmlistUrl, now, m_config.settings().omid)
            .value_or(QString())};
    Command10_Click();
    QString written;
    {
        const Hidden hidden(*m_ui->Grid1);
        written = writeTextLog(
            m_config.applicationDir(), *m_ui->Grid1, range, m_options.regional, *m_options.fileCalls);
    }
    openFile(written);
}

} // namespace quillon
