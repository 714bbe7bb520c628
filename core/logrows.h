#pragma once

#include "core/logbook.h"
#include "core/logfields.h"
#include "platform/datetime.h"

#include <QHash>
#include <QString>

#include <compare>
#include <functional>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace quillon {

/// Who shows the rows and is told before and after they change.
class LogRowsWatcher
{
public:
    LogRowsWatcher() = default;
    LogRowsWatcher(const LogRowsWatcher &) = delete;
    LogRowsWatcher &operator=(const LogRowsWatcher &) = delete;
    virtual ~LogRowsWatcher() = default;

    /// The rows are about to be those of `after` instead of `before`, both by entry number.
    virtual void rowsChanging(std::span<const qint32> before, std::span<const qint32> after) = 0;
    virtual void rowsChanged() = 0;
    /// The cells of these rows, both included, show something else; no row comes or goes.
    virtual void cellsChanged(int firstRow, int lastRow) = 0;
};

/// The view of the log: which entries there are rows for, and in which order. A row is the number of its
/// entry; its cells are the entry's own fields, except where an update left what was typed.
class LogRows
{
public:
    /// The log must outlive the object; whoever changes its entries tells here. Typed dates are read with
    /// `months`.
    LogRows(const Logbook &log, MonthNames months);

    void setWatcher(LogRowsWatcher *watcher) { m_watcher = watcher; }

    /// What the derived columns show; without it they are empty. It is asked whenever a cell is shown or
    /// sorted.
    using Derived = std::function<QString(const LogEntry &, qint32 number, GridColumn)>;
    void setDerived(Derived derived) { m_derived = std::move(derived); }
    /// What is told of a derived cell that is pointed at; where this says nothing, it is the cell's text.
    void setTips(Derived tips) { m_tips = std::move(tips); }

    /// A row for each entry, deleted ones included, sorted by Date/Time; rows of one Date/Time stay in log
    /// order. Forgets what was typed and the sorting by a column. `changed` are the entries whose rows may
    /// read otherwise than before; none by number stands for all.
    void refill(std::span<const qint32> changed = {});

    /// All rows in the order of the last refill, whatever is sorted or filtered: what is exported.
    [[nodiscard]] std::span<const qint32> all() const { return m_all; }
    /// All rows in the order of the grid, whatever is filtered.
    [[nodiscard]] std::span<const qint32> sorted() const { return m_sorted; }
    /// The rows of the grid.
    [[nodiscard]] std::span<const qint32> shown() const { return m_shown; }
    /// The row of the entry in shown(); -1 when there is none.
    [[nodiscard]] int rowOf(qint32 entry) const;

    [[nodiscard]] const Logbook &log() const { return m_log; }
    /// The cell of an entry's row.
    [[nodiscard]] QString text(qint32 entry, GridColumn column) const;
    /// What is told of the cell when it is pointed at.
    [[nodiscard]] QString tip(qint32 entry, GridColumn column) const;
    /// Its Date/Time cell as a moment. Throws "Type mismatch" with `doing` and the text for a typed one that
    /// is none.
    [[nodiscard]] DateTime moment(qint32 entry, const QString &doing) const;

    /// Lets a cell show this text until the next refill.
    void setTyped(qint32 entry, GridColumn column, const QString &text);

    /// Entries have changed: their rows show their fields again, in the place where they are.
    void entriesChanged(std::span<const qint32> entries);
    /// The log is as it was before or after a change once more: rows are where a refill and the sorting would
    /// put them (a typed Date/Time that is none stays with the moment of its entry), what was typed over
    /// `entries` is forgotten, rows of entries that are gone go.
    void restore(std::span<const qint32> entries);

    /// Which column the grid is sorted by, and how.
    struct Sorting
    {
        GridColumn column {};
        bool descending = false;

        bool operator==(const Sorting &) const = default;
    };
    /// Sorts by the cells of a column, numbers as numbers, Date/Time as moments (throws "Type mismatch" for a
    /// typed one that is none). Nothing: as the last refill left them. Equal cells stay in the order they
    /// have.
    void sortBy(std::optional<Sorting> sorting);
    [[nodiscard]] std::optional<Sorting> sorting() const { return m_sortedBy; }

    /// Shows only the rows of entries for which `filter`, given the entry and its number, is true; all
    /// without one. The entries are asked again whenever they change.
    using Filter = std::function<bool(const LogEntry &, qint32 number)>;
    void setFilter(Filter filter);
    [[nodiscard]] bool isFiltered() const { return static_cast<bool>(m_filter); }

private:
    [[nodiscard]] bool isInPlace(std::span<const qint32> rows, std::size_t at) const;
    [[nodiscard]] std::vector<qint32> inOrderOfTime(std::span<const qint32> changed) const;
    [[nodiscard]] std::vector<qint32> sortedBy(
        std::vector<qint32> rows, Sorting sorting, const std::function<DateTime(qint32)> &momentOf) const;
    [[nodiscard]] std::vector<qint32> sortedAgain(std::vector<qint32> changed) const;
    [[nodiscard]] std::strong_ordering timeOrder(qint32 left, qint32 right) const;
    [[nodiscard]] DateTime momentToSort(qint32 entry) const;
    [[nodiscard]] std::weak_ordering cellOrder(qint32 left, qint32 right) const;
    void askFilter(std::span<const qint32> entries);
    void noteStayed(std::span<const qint32> entries);
    void forgetTyped(std::span<const qint32> entries);
    void tellCells(std::span<const qint32> entries);
    void show(std::vector<qint32> all, std::vector<qint32> sorted);

    const Logbook &m_log;
    LogRowsWatcher *m_watcher = nullptr;
    Derived m_derived;
    Derived m_tips;
    std::vector<qint32> m_all;
    std::vector<qint32> m_sorted;
    std::vector<qint32> m_base; ///< m_sorted before the last sorting by a column
    std::vector<qint32> m_shown;
    std::vector<char> m_passes; ///< by entry, while something is filtered
    bool m_inOrder = true; ///< m_all is in the order of time
    std::vector<qint32> m_stayed; ///< entries whose cells have changed while their rows stayed
    std::optional<Sorting> m_sortedBy;
    Filter m_filter;
    QHash<std::pair<qint32, int>, QString> m_typed; ///< by entry and column
    MonthNames m_months;
};

} // namespace quillon
