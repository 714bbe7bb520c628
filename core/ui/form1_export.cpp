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

#include <QProgressBar>

#include <optional>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QString exported(int count, const QString &path)
{
    return u"%1 receptions exported to %2"_s.arg(QString::number(count), path);
}

} // namespace

// Transmitters as KML.
void Form1::menuExportGoogleTX_Click()
{
    const QString path = writeTransmitterKml(
        m_config.applicationDir(), transmitters(), m_options.regional.codePage, *m_options.fileCalls);
    tell(u"%1 transmitters exported to %2"_s.arg(QString::number(transmitters().count()), path));
    openFile(path);
}

// Logbook as KML.
void Form1::menuExportGoogleLog_Click()
{
    const QString path = writeLogbookKml(
        m_config.applicationDir(), log(), transmitters(), m_options.regional.codePage, *m_options.fileCalls);
    tellExported(path);
    openFile(path);
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
            {m_rows, transmitters(), m_config.settings().callsign, versionText(), localNow()},
            m_options.regional, *m_options.fileCalls, [this, &bar](int done, int count) {
                if (bar) {
                    m_progress->setRange(0, count);
                    m_progress->setValue(done);
                    m_progress->repaint();
                }
            });
    }
    tellExported(index);
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
    const TextLogRange range {toDateTime(fromText, months, u"Export from"_s),
        toDateTime(toText, months, u"Export to"_s), m_config.settings().inMiles(),
        ownPropagationMapUrl(m_config.settings().fmlistUrl, now, m_config.settings().omid)
            .value_or(QString())};
    Command10_Click();
    TextLogFile written;
    {
        const Hidden hidden(*m_ui->Grid1);
        written =
            writeTextLog(m_config.applicationDir(), m_rows, range, m_options.regional, *m_options.fileCalls);
    }
    tell(exported(written.count, written.path));
    openFile(written.path);
}

void Form1::tellExported(const QString &path)
{
    tell(exported(receptionsNow(), path));
}

} // namespace quillon
