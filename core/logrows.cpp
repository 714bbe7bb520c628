#include "core/logrows.h"

#include "core/fetchahead.h"
#include "core/genericorder.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// Up to so many changed rows are moved one by one; more, and all are sorted.
constexpr std::size_t fewRows = 64;

std::pair<qint32, int> cell(qint32 entry, GridColumn column)
{
    return {entry, static_cast<int>(column)};
}

std::size_t placeIn(std::span<const qint32> rows, qint32 entry)
{
    return static_cast<std::size_t>(std::ranges::find(rows, entry) - rows.begin());
}

} // namespace

LogRows::LogRows(const Logbook &log, MonthNames months)
    : m_log(log)
    , m_months(std::move(months))
{
}

int LogRows::rowOf(qint32 entry) const
{
    const std::size_t place = placeIn(shown(), entry);
    return place < shown().size() ? static_cast<int>(place) : -1;
}

QString LogRows::text(qint32 entry, GridColumn column) const
{
    if (!m_typed.isEmpty()) {
        const auto typed = m_typed.constFind(cell(entry, column));
        if (typed != m_typed.cend()) {
            return typed.value();
        }
    }
    if (m_derived && !logColumn(column).field) {
        return m_derived(m_log.entry(entry), entry, column);
    }
    return cellText(m_log.entry(entry), column);
}

QString LogRows::tip(qint32 entry, GridColumn column) const
{
    const QString told =
        m_tips && !logColumn(column).field ? m_tips(m_log.entry(entry), entry, column) : QString();
    return told.isEmpty() ? text(entry, column) : told;
}

DateTime LogRows::moment(qint32 entry, const QString &doing) const
{
    const auto typed = m_typed.constFind(cell(entry, GridColumn::DateTime));
    return typed == m_typed.cend() ? m_log.entry(entry).dateTime : toDateTime(typed.value(), m_months, doing);
}

void LogRows::setTyped(qint32 entry, GridColumn column, const QString &text)
{
    if (text == cellText(m_log.entry(entry), column)) {
        m_typed.remove(cell(entry, column));
    } else {
        m_typed.insert(cell(entry, column), text);
    }
    noteStayed({&entry, 1});
    const int row = rowOf(entry);
    if (m_watcher && row >= 0) {
        m_watcher->cellsChanged(row, row);
    }
}

void LogRows::refill(std::span<const qint32> changed)
{
    std::vector<qint32> told(changed.begin(), changed.end());
    if (!changed.empty()) {
        for (auto typed = m_typed.cbegin(); typed != m_typed.cend(); ++typed) {
            told.push_back(typed.key().first);
        }
    }
    m_typed.clear();
    m_sortedBy.reset();
    const auto known = static_cast<qint32>(m_all.size());
    std::vector<qint32> added(static_cast<std::size_t>(std::max(m_log.count() - known, 0)));
    std::iota(added.begin(), added.end(), known);
    askFilter(added);
    std::vector<qint32> rows = inOrderOfTime(added);
    show(rows, rows);
    m_inOrder = true;
    m_stayed.clear();
    tellCells(told);
}

void LogRows::entriesChanged(std::span<const qint32> entries)
{
    askFilter(entries);
    forgetTyped(entries);
    noteStayed(entries);
    m_inOrder = m_inOrder && entries.size() <= fewRows && std::ranges::all_of(entries, [this](qint32 entry) {
        return isInPlace(m_all, placeIn(m_all, entry));
    });
    show(m_all, m_sorted);
    tellCells(entries);
}

void LogRows::restore(std::span<const qint32> entries)
{
    std::vector<qint32> changed(entries.begin(), entries.end());
    std::erase_if(changed, [this](qint32 entry) { return entry >= m_log.count(); });
    forgetTyped(entries);
    askFilter(changed);
    std::vector<qint32> all = inOrderOfTime(changed);
    std::vector<qint32> sorted = m_sortedBy ? sortedAgain(changed) : all;
    show(std::move(all), std::move(sorted));
    m_inOrder = true;
    m_stayed.clear();
    if (!changed.empty() || entries.empty()) {
        tellCells(changed);
    }
}

void LogRows::noteStayed(std::span<const qint32> entries)
{
    // Once they are many, all are sorted, and it does not matter which they are.
    for (const qint32 entry : entries) {
        if (m_sortedBy && m_stayed.size() <= fewRows
            && std::ranges::find(m_stayed, entry) == m_stayed.end()) {
            m_stayed.push_back(entry);
        }
    }
}

void LogRows::forgetTyped(std::span<const qint32> entries)
{
    if (m_typed.isEmpty()) {
        return;
    }
    for (const qint32 entry : entries) {
        for (const LogColumn &column : logFields()) {
            m_typed.remove(cell(entry, column.column));
        }
    }
}

// Many rows, or no row by name, stand for all.
void LogRows::tellCells(std::span<const qint32> entries)
{
    if (!m_watcher || m_shown.empty()) {
        return;
    }
    if (entries.empty() || entries.size() > fewRows) {
        m_watcher->cellsChanged(0, static_cast<int>(m_shown.size()) - 1);
        return;
    }
    for (const qint32 entry : entries) {
        if (const int row = rowOf(entry); row >= 0) {
            m_watcher->cellsChanged(row, row);
        }
    }
}

bool LogRows::isInPlace(std::span<const qint32> rows, std::size_t at) const
{
    return at < rows.size() && (at == 0 || timeOrder(rows[at - 1], rows[at]) < 0)
        && (at + 1 == rows.size() || timeOrder(rows[at], rows[at + 1]) < 0);
}

std::strong_ordering LogRows::timeOrder(qint32 left, qint32 right) const
{
    const auto order = m_log.entry(left).dateTime <=> m_log.entry(right).dateTime;
    return order != 0 ? order : left <=> right;
}

// What was typed since the sorting may be no date-time: then the row stays with the moment of its entry.
DateTime LogRows::momentToSort(qint32 entry) const
{
    const auto typed = m_typed.constFind(cell(entry, GridColumn::DateTime));
    const auto moment = typed == m_typed.cend() ? std::nullopt : parseDateTime(typed.value(), m_months);
    return moment.value_or(m_log.entry(entry).dateTime);
}

std::weak_ordering LogRows::cellOrder(qint32 left, qint32 right) const
{
    std::weak_ordering order = std::weak_ordering::equivalent;
    if (m_sortedBy->column == GridColumn::DateTime) {
        order = momentToSort(left) <=> momentToSort(right);
    } else {
        order = genericOrder(text(left, m_sortedBy->column), text(right, m_sortedBy->column));
    }
    return m_sortedBy->descending ? 0 <=> order : order;
}

// m_all as a refill would have it, when of its rows only those of `changed` may stand in a wrong place.
std::vector<qint32> LogRows::inOrderOfTime(std::span<const qint32> changed) const
{
    std::vector<qint32> rows;
    const auto before = [this](qint32 left, qint32 right) { return timeOrder(left, right) < 0; };
    if (m_inOrder && changed.size() <= fewRows) {
        rows = m_all;
        const auto known = static_cast<qint32>(m_all.size());
        if (m_log.count() < known) {
            std::erase_if(rows, [this](qint32 entry) { return entry >= m_log.count(); });
        }
        for (const qint32 entry : changed) {
            const auto row = entry < known ? std::ranges::find(rows, entry) : rows.end();
            if (row != rows.end()) {
                rows.erase(row);
            }
        }
        for (const qint32 entry : changed) {
            rows.insert(std::ranges::upper_bound(rows, entry, before), entry);
        }
        return rows;
    }
    std::vector<std::pair<DateTime, qint32>> keys;
    keys.reserve(static_cast<std::size_t>(m_log.count()));
    for (const LogEntry &entry : m_log) {
        keys.emplace_back(entry.dateTime, static_cast<qint32>(keys.size()));
    }
    // Most logs are in the order of time already.
    if (!std::ranges::is_sorted(keys)) {
        std::ranges::sort(keys);
    }
    rows.reserve(keys.size());
    for (const auto &[moment, entry] : keys) {
        rows.push_back(entry);
    }
    return rows;
}

// m_sorted as the last sorting would have it, when of its rows only those of `changed` and those that stayed
// where they were may stand in a wrong place.
std::vector<qint32> LogRows::sortedAgain(std::vector<qint32> changed) const
{
    std::ranges::copy_if(
        m_stayed, std::back_inserter(changed), [this](qint32 entry) { return entry < m_log.count(); });
    std::ranges::sort(changed);
    changed.erase(std::unique(changed.begin(), changed.end()), changed.end());
    std::vector<qint32> base = m_base;
    std::erase_if(base, [this](qint32 entry) { return entry >= m_log.count(); });
    for (auto next = static_cast<qint32>(base.size()); next < m_log.count(); ++next) {
        base.push_back(next);
    }
    if (changed.size() > fewRows) {
        return sortedBy(std::move(base), *m_sortedBy, [this](qint32 entry) { return momentToSort(entry); });
    }
    std::vector<std::size_t> ranks(base.size());
    for (std::size_t rank = 0; rank < base.size(); ++rank) {
        ranks[static_cast<std::size_t>(base[rank])] = rank;
    }
    const auto before = [&](qint32 left, qint32 right) {
        const auto order = cellOrder(left, right);
        return order != 0 ? order < 0
                          : ranks[static_cast<std::size_t>(left)] < ranks[static_cast<std::size_t>(right)];
    };
    std::vector<qint32> rows = m_sorted;
    std::erase_if(rows, [&](qint32 entry) {
        return entry >= m_log.count() || std::ranges::find(changed, entry) != changed.end();
    });
    for (const qint32 entry : changed) {
        rows.insert(std::ranges::upper_bound(rows, entry, before), entry);
    }
    return rows;
}

void LogRows::sortBy(std::optional<Sorting> sorting)
{
    std::vector<qint32> rows = m_all;
    if (sorting) {
        rows = sortedBy(m_sorted, *sorting,
            [this](qint32 entry) { return moment(entry, u"Sorting the grid by date"_s); });
        m_base = m_sorted;
    }
    m_sortedBy = sorting;
    m_stayed.clear();
    show(m_all, std::move(rows));
}

std::vector<qint32> LogRows::sortedBy(
    std::vector<qint32> rows, Sorting sorting, const std::function<DateTime(qint32)> &momentOf) const
{
    if (sorting.column == GridColumn::DateTime) {
        std::vector<DateTime> moments(static_cast<std::size_t>(m_log.count()));
        for (const qint32 entry : rows) {
            moments[static_cast<std::size_t>(entry)] = momentOf(entry);
        }
        std::ranges::stable_sort(rows, [&](qint32 left, qint32 right) {
            const DateTime first = moments[static_cast<std::size_t>(sorting.descending ? right : left)];
            return first < moments[static_cast<std::size_t>(sorting.descending ? left : right)];
        });
        return rows;
    }
    std::vector<QString> texts;
    texts.reserve(rows.size());
    for (const qint32 entry : rows) {
        texts.push_back(text(entry, sorting.column));
    }
    std::vector<qint32> result;
    result.reserve(rows.size());
    for (const int position : genericSort(texts, sorting.descending)) {
        result.push_back(rows[static_cast<std::size_t>(position)]);
    }
    return result;
}

void LogRows::setFilter(Filter filter)
{
    m_filter = std::move(filter);
    m_passes.assign(static_cast<std::size_t>(m_filter ? m_log.count() : 0), 0);
    for (std::size_t i = 0; i < m_passes.size(); ++i) {
        const auto entry = static_cast<qint32>(i);
        fetchAllAhead(m_log, entry);
        m_passes[i] = m_filter(m_log.entry(entry), entry) ? 1 : 0;
    }
    show(m_all, m_sorted);
}

void LogRows::askFilter(std::span<const qint32> entries)
{
    if (!m_filter) {
        return;
    }
    m_passes.resize(static_cast<std::size_t>(m_log.count()));
    for (const qint32 entry : entries) {
        m_passes[static_cast<std::size_t>(entry)] = m_filter(m_log.entry(entry), entry) ? 1 : 0;
    }
}

void LogRows::show(std::vector<qint32> all, std::vector<qint32> sorted)
{
    std::vector<qint32> next = sorted;
    if (m_filter) {
        std::erase_if(next, [this](qint32 entry) { return m_passes[static_cast<std::size_t>(entry)] == 0; });
    }
    if (m_watcher) {
        m_watcher->rowsChanging(m_shown, next);
    }
    m_all = std::move(all);
    m_sorted = std::move(sorted);
    m_shown = std::move(next);
    if (m_watcher) {
        m_watcher->rowsChanged();
    }
}

} // namespace quillon
