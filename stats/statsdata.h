#pragma once

#include "core/logentry.h"
#include "platform/datetime.h"

#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <span>
#include <variant>

namespace quillon {

/// What stands for "no restriction" in each of the three choices.
inline constexpr QStringView everything = u"All";

/// What the statistics window has chosen: the three texts of its boxes and the check box.
struct StatsSelection
{
    QString year = everything.toString(); ///< "All" or four digits
    QString month = everything.toString(); ///< "All" or an English month name
    QString mode = everything.toString(); ///< "All" or a propagation mode
    bool timeDistribution = false; ///< split by the hour of the day
};

/// Receptions a month: indices 1 to 12, index 0 is unused.
using MonthCounts = std::array<qint16, 13>;
/// Receptions a day of the month: indices 1 to 31, index 0 is unused.
using DayCounts = std::array<qint16, 32>;
/// A row of counters for each hour 0 to 23.
using MonthHourCounts = std::array<MonthCounts, 24>;
using DayHourCounts = std::array<DayCounts, 24>;

/// The buckets of one count; which of the four follows from the selection.
using StatsBuckets = std::variant<MonthCounts, DayCounts, MonthHourCounts, DayHourCounts>;

/// Most years that yearChoices collects.
inline constexpr int mostYears = 101;

/// 1 to 12 for "January" to "December", exactly so spelled; 0 for any other text.
[[nodiscard]] int convertMonthToNumber(QStringView month);

/// "All" and the propagation modes, in the order of the mode box.
[[nodiscard]] QStringList modeChoices();

/// The same, then the other modes of the entries in the order in which they first occur: at most mostModes of
/// them, none longer than longestMode characters.
[[nodiscard]] QStringList modeChoices(std::span<const LogEntry> entries);
inline constexpr int mostModes = 100;
inline constexpr int longestMode = 40;

/// "All", then "January" to "December".
[[nodiscard]] QStringList monthChoices();

/// "All", then the distinct years of the entries as four digits, in the order in which they first occur; at
/// most mostYears of them. Throws "Type mismatch" as countReceptions does.
[[nodiscard]] QStringList yearChoices(std::span<const LogEntry> entries);

/// Decides which entries count, for one selection. Deleted entries are not left out.
class EntryFilter
{
public:
    explicit EntryFilter(const StatsSelection &selection);

    /// True when the entry counts; `time` is the entry's Date/Time in parts.
    [[nodiscard]] bool operator()(const LogEntry &entry, const CivilTime &time) const;

private:
    std::optional<QString> m_mode;
    std::optional<int> m_year;
    std::optional<int> m_month;
};

/// Counts the entries that pass the filter: by month when the month is "All", otherwise by day; each by hour
/// too with the time distribution. One pass. Throws "Overflow" when a counter would pass 32767, and
/// "Type mismatch" for a Date/Time outside the years 100 to 9999; both name the entry.
[[nodiscard]] StatsBuckets countReceptions(
    std::span<const LogEntry> entries, const StatsSelection &selection);

} // namespace quillon
