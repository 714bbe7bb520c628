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
        const std::vector<qint32> entries = entriesToSearch(window);
        searchEntries(mode, entries, window, tally);
        // It ends with the last row, whether that was searched or not.
        makeCurrent(m_ui->Grid1->rows() - 1);
    } catch (...) {
        // The program is ending, or a file cannot be written. What was found until now is kept.
        saveLogbook();
        throw;
    }
    saveLogbook();
    if (tally.failed > 0) {
        m_status->setText(
            u"%1 of the requests to FMList failed; the last: %2"_s.arg(tally.failed).arg(tally.failure));
    }
    showMessage(this, updatedText(tally.updated));
}

// The entries of the window that are to be searched, in the order of the grid's rows. Rows are told apart by
// their entry from here on: the window stays usable, and a row can move while a request runs.
std::vector<qint32> Form1::entriesToSearch(const DayWindow &window)
{
    std::vector<qint32> entries;
    for (int row = 1; row < m_ui->Grid1->rows(); ++row) {
        const qint32 entry = m_ui->Grid1->entryOfRow(row);
        if (isToBeSearched(m_log.entry(entry), window)) {
            entries.push_back(entry);
        }
    }
    return entries;
}

void Form1::searchEntries(
    SearchMode mode, const std::vector<qint32> &entries, const DayWindow &window, AutoSearchTally &tally)
{
    const ShownProgress progress(*m_progress, u"Searching %v of %m"_s);
    m_progress->setRange(0, static_cast<int>(entries.size()));
    int done = 0;
    for (const qint32 entry : entries) {
        m_progress->setValue(++done);
        // The user can have changed or deleted it while another was searched.
        if (isToBeSearched(m_log.entry(entry), window)) {
            searchEntry(mode, entry, tally);
        }
    }
}

void Form1::searchEntry(SearchMode mode, qint32 entry, AutoSearchTally &tally)
{
    const int row = m_ui->Grid1->rowOfEntry(entry);
    makeCurrent(row);
    if (m_ui->Grid1->text(row, GridColumn::Freq).isEmpty()) {
        // Such a row is not loaded, and there is nothing to ask for.
        markEntry(row, entry, Finding::None);
        return;
    }
    const qint32 loaded = m_selected;
    searchForForm(mode, tally);
    // A row can have moved, and another entry been chosen, while the request ran: the answer is for this one.
    const int rowNow = m_ui->Grid1->rowOfEntry(entry);
    const Finding finding = findingOf(m_matchCount);
    if (finding != Finding::Exact) {
        markEntry(rowNow, loaded, finding);
    } else if (m_log.entry(loaded).piCode != deletedPiCode && isLoaded(rowNow, loaded)) {
        updateFromResult(rowNow);
        ++tally.updated;
    }
}

// Searches for the entry in the form. A failed request counts as no match.
void Form1::searchForForm(SearchMode mode, AutoSearchTally &tally)
{
    try {
        searchForStation({m_ui->Text9->text(), m_ui->Text1->text(), searchedName(mode, m_ui->Text8->text())});
    } catch (const RuntimeError &error) {
        m_matchCount = 0;
        ++tally.failed;
        tally.failure = error.doing();
        m_status->setText(tally.failure);
    }
}

// Makes sure that the form holds that entry, fit to be stored. False when it cannot be loaded any more.
bool Form1::isLoaded(int row, qint32 entry)
{
    const auto holdsIt = [&] { return m_selected == entry && m_loadedRow == row; };
    if (!holdsIt() || !parseDateTime(m_ui->Text2->text(), m_options.regional.months)) {
        makeCurrent(row);
    }
    return holdsIt();
}

void Form1::updateFromResult(int row)
{
    writeUpdateLogRecord(row, u"BEFORE"_s);
    m_ui->List2->setListIndex(0);
    List2_DblClick(0);
    Command3_Click();
    writeUpdateLogRecord(row, u"AFTER"_s);
    Pause(2);
}

// "None" or "Multi".
void Form1::markEntry(int row, qint32 number, Finding finding)
{
    m_ui->Grid1->setText(row, GridColumn::FMList, findingText(finding));
    m_log.changeEntry(
        number, [finding](LogEntry &entry) { entry.fmlist = markedField(entry.fmlist, finding); });
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
