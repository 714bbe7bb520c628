#include "core/ui/form1.h"

#include "core/logfilter.h"
#include "platform/files.h"
#include "stats/ui/collectionwindow.h"
#include "stats/ui/logstats.h"
#include "ui/keptfilters.h"
#include "ui/statustext.h"
#include "ui_form1.h"

#include <QSet>
#include <QShortcut>

#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

void Form1::wireFilter()
{
    FilterBar &bar = *m_ui->filterBar;
    bar.setMonths(m_options.regional.months);
    if (!m_options.lookFolder.isEmpty()) {
        // They were once in the file of the windows' look.
        bar.setKeptFilters(KeptFilters(filePath(m_options.lookFolder, u"filters.ini"_s),
            filePath(m_options.lookFolder, u"windows.ini"_s)));
    }
    connect(&bar, &FilterBar::changed, this, [this] { applyFilter(); });
    connect(new QShortcut(Qt::CTRL | Qt::Key_K, this), &QShortcut::activated, &bar,
        [&bar] { bar.setFocus(Qt::ShortcutFocusReason); });
    m_listsLater.setSingleShot(true);
    connect(&m_listsLater, &QTimer::timeout, this, [this] { refreshLists(); });
}

void Form1::applyFilter()
{
    m_ui->filterBar->setOverruled(false);
    const LogFilter &filter = m_ui->filterBar->filter();
    LogRows::Filter lets;
    if (!filter.isEmpty()) {
        lets = [matches = LogFilterMatcher(filter, m_config.settings().inMiles())](
                   const LogEntry &entry, qint32 /*number*/) mutable { return matches(entry); };
    }
    Grid &grid = *m_ui->Grid1;
    grid.setFilter(std::move(lets));
    // What is being edited is marked once it is shown, even if the log was changed while it was hidden.
    if (grid.row() == 0 && grid.chosenCount() == 0 && m_form->state() == EntryForm::State::Editing) {
        if (const int row = grid.rowOfEntry(m_selected); row > 0) {
            grid.setRow(row);
            grid.showRow(row);
        }
    }
    showCounts();
    tellStatistics();
    refreshMap();
}

// Statistics of what is shown follow.
void Form1::tellStatistics()
{
    if (auto *statistics = findChild<logStats *>(QString(), Qt::FindDirectChildrenOnly)) {
        statistics->shownChanged();
    }
    if (auto *collection = findChild<CollectionWindow *>(QString(), Qt::FindDirectChildrenOnly)) {
        collection->shownChanged();
    }
}

void Form1::showCounts()
{
    m_ui->filterBar->setCounts(
        static_cast<qsizetype>(m_rows.shown().size()), static_cast<qsizetype>(m_rows.all().size()));
    tellEmpty();
}

// Shows these rows alone, which no filter's text can tell.
void Form1::showEntries(const QList<qint32> &entries, const QString &words)
{
    m_ui->filterBar->setOverruled(true);
    m_ui->Grid1->setFilter([wanted = QSet<qint32>(entries.begin(), entries.end())](const LogEntry & /*entry*/,
                               qint32 number) { return wanted.contains(number); });
    showCounts();
    refreshMap();
    tellStatistics();
    m_status->tell(words, u"Show All"_s, [this] {
        m_status->clear();
        applyFilter();
    });
}

// What the filter's lists and the map show follows the log; a large log is walked through when there is time.
void Form1::listsChanged()
{
    constexpr qint32 atOnce = 2000;
    constexpr int laterMs = 200;
    showCounts();
    if (log().count() <= atOnce) {
        refreshLists();
    } else {
        m_listsLater.start(laterMs);
    }
}

void Form1::refreshLists()
{
    m_listsLater.stop();
    m_ui->filterBar->setLists(filterLists(log()));
    refreshMap();
}

// The bar's filter, and what the map has filtered.
void Form1::clearFilter()
{
    m_ui->filterBar->clear();
}

// A filter that hides the entry is cleared.
void Form1::makeShown(qint32 entry)
{
    if (m_rows.isFiltered() && m_rows.rowOf(entry) < 0) {
        clearFilter();
        m_status->setText(u"The filter was cleared to show it"_s);
    }
}

// What was added or changed although the filter hides it is said so, with a way to see it.
void Form1::tellHidden(const QString &done, qint32 entry)
{
    tellHidden(done, {&entry, 1});
}

// The same of many; what was deleted is no news.
void Form1::tellHidden(const QString &done, std::span<const qint32> entries)
{
    std::vector<qint32> hidden;
    if (m_rows.isFiltered()) {
        std::vector<char> isKnown(static_cast<std::size_t>(log().count()));
        for (const qint32 entry : m_rows.shown()) {
            isKnown[static_cast<std::size_t>(entry)] = 1;
        }
        for (const qint32 entry : entries) {
            if (entry < log().count() && !isDeleted(log().entry(entry))
                && std::exchange(isKnown[static_cast<std::size_t>(entry)], 1) == 0) {
                hidden.push_back(entry);
            }
        }
    }
    if (hidden.empty()) {
        tell(done);
        return;
    }
    if (!mayTell()) {
        return;
    }
    const QString which = entries.size() == 1 ? u", which the filter hides"_s
                                              : u", %1 of them the filter hides"_s.arg(hidden.size());
    m_status->tell(done + which, u"Show"_s, [this, entry = hidden.front()] {
        clearFilter();
        if (const int row = m_ui->Grid1->rowOfEntry(entry); row > 0) {
            m_ui->Grid1->setRow(row);
            m_ui->Grid1->showRow(row);
        }
        m_status->clear();
    });
}

} // namespace quillon
