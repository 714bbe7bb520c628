#include "core/gridrows.h"

#include "platform/numbers.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<GridColumnFormat, gridColumnCount> formats {{
    {u"Date/Time", 1700, true},
    {u"PI Code", 600, true},
    {u"Freq", 600, true},
    {u"RDS Name", 1800, true},
    {u"Country", 1000, true},
    {u"Transmitter", 1600, false},
    {u"Dist", 600, false},
    {u"Power", 500, true},
    {u"Notes", 1600, false},
    {u"Prop", 600, true},
    {u"FMList", 600, true},
    {u"UID", 800, true},
}};

GridRow rowOf(const LogEntry &entry, qint32 number)
{
    GridRow row {{generalText(entry.dateTime), entry.piCode, entry.freq, entry.rdsName, entry.country,
                     entry.transmitter, entry.dist, entry.power, entry.notes, entry.prop,
                     fmlistDisplay(entry.fmlist), entry.uid},
        number};
    if (entry.notes.contains("\r\n"_L1)) {
        row.text(GridColumn::Notes).replace("\r\n"_L1, " "_L1);
    }
    return row;
}

struct SortKey
{
    std::optional<double> number;
    const QString *text;
};

std::weak_ordering order(const SortKey &left, const SortKey &right)
{
    if (left.number && right.number) {
        return *left.number < *right.number ? std::weak_ordering::less
            : *left.number > *right.number  ? std::weak_ordering::greater
                                            : std::weak_ordering::equivalent;
    }
    if (left.number || right.number) {
        return left.number ? std::weak_ordering::less : std::weak_ordering::greater;
    }
    return left.text->compare(*right.text, Qt::CaseInsensitive) <=> 0;
}

} // namespace

std::span<const GridColumnFormat, gridColumnCount> gridColumnFormats()
{
    return formats;
}

std::vector<GridRow> gridRows(const Logbook &log)
{
    std::vector<std::pair<DateTime, qint32>> numbers;
    numbers.reserve(static_cast<std::size_t>(log.count()));
    qint32 next = 0;
    for (const LogEntry &entry : log) {
        numbers.emplace_back(entry.dateTime, next++);
    }
    // Most logs are in the order of time already. The number is part of what is compared, so entries of one
    // Date/Time stay in log order.
    if (!std::ranges::is_sorted(numbers)) {
        std::ranges::sort(numbers);
    }
    std::vector<GridRow> rows;
    rows.reserve(numbers.size());
    for (const auto &[dateTime, number] : numbers) {
        rows.push_back(rowOf(log.entry(number), number));
    }
    return rows;
}

std::weak_ordering genericOrder(const QString &left, const QString &right)
{
    return order({numeric(left), &left}, {numeric(right), &right});
}

std::vector<int> genericSort(const std::vector<QString> &texts)
{
    std::vector<SortKey> keys;
    keys.reserve(texts.size());
    for (const QString &text : texts) {
        keys.push_back({numeric(text), &text});
    }
    std::vector<int> positions(texts.size());
    std::iota(positions.begin(), positions.end(), 0);
    std::ranges::stable_sort(positions, [&](int left, int right) {
        return order(keys[static_cast<std::size_t>(left)], keys[static_cast<std::size_t>(right)]) < 0;
    });
    return positions;
}

} // namespace quillon
