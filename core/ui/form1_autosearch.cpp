#include "core/ui/form1.h"

#include "fmlist/autosearch.h"
#include "platform/pause.h"
#include "platform/runtimeerror.h"
#include "ui/desktop.h"
#include "ui/inet1.h"
#include "ui/messages.h"
#include "ui/requestaborted.h"
#include "ui/widgetstate.h"
#include "ui_form1.h"

#include <QLabel>
#include <QProgressBar>
#include <QScopedValueRollback>

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
    const QScopedValueRollback automatic(m_automatic, true);
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
    const int lastRow = m_ui->Grid1->rows() - 1;
    if (lastRow == 0) {
        return;
    }
    AutoSearchTally tally;
    try {
        searchEntries(mode, entriesToSearch(window), tally);
    } catch (const RequestAborted &) {
        // The program is ending. What was found until now is kept.
        saveLogbook();
        throw;
    }
    makeCurrent(m_ui->Grid1->rows() - 1);
    saveLogbook();
    if (tally.failed > 0) {
        m_status->setText(
            u"%1 of the requests to FMList failed; the last: %2"_s.arg(tally.failed).arg(tally.failure));
    }
    showMessage(this, updatedText(tally.updated));
}

// The entries of the window without UID, in the order of the grid's rows. Rows are told apart by their entry
// from here on: the window stays usable, and a row can move while a request runs.
std::vector<qint32> Form1::entriesToSearch(const DayWindow &window)
{
    std::vector<qint32> entries;
    for (int row = 1; row < m_ui->Grid1->rows(); ++row) {
        const DateTime dateTime = toDateTime(m_ui->Grid1->text(row, GridColumn::DateTime),
            m_options.regional.months, u"Reading row %1 of the grid"_s.arg(row));
        if (window.contains(dateTime) && m_ui->Grid1->text(row, GridColumn::Uid).trimmed().isEmpty()) {
            entries.push_back(m_ui->Grid1->entryOfRow(row));
        }
    }
    return entries;
}

void Form1::searchEntries(SearchMode mode, const std::vector<qint32> &entries, AutoSearchTally &tally)
{
    const ShownProgress progress(*m_progress, u"Searching %v of %m"_s);
    m_progress->setRange(0, static_cast<int>(entries.size()));
    int done = 0;
    for (const qint32 entry : entries) {
        m_progress->setValue(++done);
        if (const int row = m_ui->Grid1->rowOfEntry(entry); row > 0) {
            makeCurrent(row);
            // A row without a frequency is not loaded, so there is nothing to search for.
            if (m_loadedRow == row) {
                searchCurrentEntry(mode, tally);
                treatFinding(m_ui->Grid1->rowOfEntry(entry), tally);
            }
        }
    }
}

// Searches for the entry in the form. A failed request counts as no match.
void Form1::searchCurrentEntry(SearchMode mode, AutoSearchTally &tally)
{
    const QString name = m_ui->Text8->text();
    m_ui->Text8->setText(searchedName(mode, name));
    try {
        Command11_Click();
    } catch (const RuntimeError &error) {
        m_matchCount = 0;
        ++tally.failed;
        tally.failure = error.text().section(u'\n', 1);
        m_status->setText(tally.failure);
    }
    m_ui->Text8->setText(name);
}

void Form1::treatFinding(int row, AutoSearchTally &tally)
{
    if (row == 0) {
        return;
    }
    if (m_loadedRow != row) {
        // Another entry was chosen while the request ran; the answer is still for this one.
        makeCurrent(row);
    }
    const Finding finding = findingOf(m_matchCount);
    if (finding == Finding::Exact) {
        writeUpdateLogRecord(row, u"BEFORE"_s);
        m_ui->List2->setListIndex(0);
        List2_DblClick(0);
        Command3_Click();
        writeUpdateLogRecord(row, u"AFTER"_s);
        Pause(2);
        ++tally.updated;
        return;
    }
    m_ui->Grid1->setText(row, GridColumn::FMList, findingText(finding));
    LogEntry &entry = m_log.entry(m_selected);
    entry.fmlist = markedField(entry.fmlist, finding);
}

// One line of autoupdate.log: the cells of a row.
void Form1::writeUpdateLogRecord(int row, const QString &stage)
{
    QStringList columns;
    for (int column = 0; column < gridColumnCount; ++column) {
        columns += m_ui->Grid1->text(row, column);
    }
    appendToFile(m_config.path(u"autoupdate.log"_s),
        updateLogLine(localNow(), stage, columns, m_options.regional.codePage));
}

} // namespace quillon
