#include "core/ui/form1_longwork.h"
#include "core/ui/results.h"
#include "fmlist/autosearch.h"
#include "net/inet1.h"
#include "platform/pause.h"
#include "platform/runtimeerror.h"
#include "ui/desktop.h"
#include "ui/messages.h"
#include "ui/statustext.h"
#include "ui_form1.h"

#include <QApplication>

namespace quillon {

using namespace Qt::StringLiterals;

// Auto Search - PI and PS.
void Form1::menuFMListAutoSearch_Click()
{
    runAutoSearch(SearchMode::PiAndPs);
}

// Auto Search - PI.
void Form1::menuFMLSearchPI_Click()
{
    runAutoSearch(SearchMode::Pi);
}

// View Auto Update Log.
void Form1::menuFMLAutoUpdateViewLog_Click()
{
    openFile(m_config.path(u"autoupdate.log"_s));
}

void Form1::runAutoSearch(SearchMode mode)
{
    m_inet->requireIdle(u"Searching FMList for a day"_s);
    const Shown shown(*m_proclogs);
    autoSearch(mode);
}

void Form1::autoSearch(SearchMode mode)
{
    const QString answer = inputBox(this,
        u"Logs from what day do you want Quillon to automatically find a match for from FMList?"_s,
        u"Auto Lookup"_s, dateText(localNow()));
    if (answer.isEmpty()) {
        return;
    }
    const DayWindow window = dayWindow(answer, m_options.regional.months);
    if (!askYesNo(this,
            u"If FMList returns an exact match do you want to automatically update your log book entry?"_s,
            u"Auto Update Record"_s)) {
        showMessage(this, u"Auto update cancelled"_s);
        return;
    }
    if (m_rows.sorted().empty()) {
        return;
    }
    AutoSearchTally tally;
    rememberKnown();
    try {
        const LogDocument::Group group(
            m_document, u"Auto Search of "_s + dateText({window.after.seconds + secondsPerDay}));
        searchEntries(mode, entriesToSearch(window), tally);
        // It ends with the last row, whether that was searched or not.
        (void)loadRow(m_rows.sorted().back());
    } catch (...) {
        // The program is ending, or a file cannot be written. What was found until now is kept.
        saveLogbook();
        throw;
    }
    saveLogbook();
    tellNews();
    if (tally.failed > 0) {
        m_status->setText(
            u"%1 of the requests to FMList failed; the last: %2"_s.arg(tally.failed).arg(tally.failure));
    }
    showMessage(this, updatedText(tally.updated));
}

// The entries of the window that are to be searched, in the order of the grid's rows.
std::vector<qint32> Form1::entriesToSearch(const DayWindow &window) const
{
    std::vector<qint32> entries;
    for (const qint32 entry : m_rows.sorted()) {
        if (isToBeSearched(log().entry(entry), window)) {
            entries.push_back(entry);
        }
    }
    return entries;
}

void Form1::searchEntries(SearchMode mode, const std::vector<qint32> &entries, AutoSearchTally &tally)
{
    LongWork work(*this, u"Searching %v of %m"_s);
    int done = 0;
    for (const qint32 entry : entries) {
        work.setProgress(++done, static_cast<int>(entries.size()));
        searchEntry(mode, entry, tally);
        QApplication::processEvents();
        if (work.isStopped()) {
            break;
        }
    }
}

void Form1::searchEntry(SearchMode mode, qint32 entry, AutoSearchTally &tally)
{
    if (!loadRow(entry)) {
        // Such a row is not loaded, and there is nothing to ask for.
        markEntry(entry, entry, Finding::None);
        return;
    }
    searchForForm(mode, tally);
    const Finding finding = findingOf(m_matchCount);
    if (finding == Finding::Exact) {
        updateFromResult(entry);
        ++tally.updated;
    } else {
        markEntry(entry, m_selected, finding);
    }
}

// Searches for the entry in the form. A failed request counts as no match.
void Form1::searchForForm(SearchMode mode, AutoSearchTally &tally)
{
    try {
        searchForStation({m_form->frequency(), m_form->piCode(), searchedName(mode, m_form->rdsName())});
    } catch (const RuntimeError &error) {
        m_matchCount = 0;
        ++tally.failed;
        tally.failure = error.doing();
        m_status->setText(tally.failure);
    }
}

void Form1::updateFromResult(qint32 row)
{
    writeUpdateLogRecord(row, u"BEFORE"_s);
    m_results->chooseStation(0);
    m_form->takeOver(m_results->station(0));
    storeUpdate(u"Take over"_s);
    writeUpdateLogRecord(row, u"AFTER"_s);
    Pause(2);
}

// "None" or "Multi".
void Form1::markEntry(qint32 row, qint32 number, Finding finding)
{
    const LogEntry &entry = log().entry(number);
    LogChange change;
    change.setField(number, entry, LogField::FMList, markedField(entry.fmlist, finding));
    m_document.commit({{}, change, {}}, LogDocument::Saving::Later);
    m_rows.setTyped(row, GridColumn::FMList, findingText(finding));
}

// One line of autoupdate.log: the cells of a row.
void Form1::writeUpdateLogRecord(qint32 row, const QString &stage)
{
    QStringList columns;
    for (int column = 0; column < gridColumnCount; ++column) {
        columns += m_rows.text(row, static_cast<GridColumn>(column));
    }
    appendToFile(m_config.path(u"autoupdate.log"_s),
        updateLogLine(localNow(), stage, columns, m_options.regional.codePage), *m_options.fileCalls);
}

} // namespace quillon
