#pragma once

#include "core/logentry.h"

#include <QString>
#include <QStringView>

#include <optional>

namespace quillon {

// The rules by which the log is counted as a collection. Deleted receptions count nowhere. Receptions follow
// each other by Date/Time, those of one second in the order of the log. Texts are compared exactly.
//
// - A PI code, a site (name and country), a country (any but "TBD"), a mode is one that is written down.
// - A station is PI code, site and country; name, site and country where there is no PI code.
// - A distance is the log's Dist turned into kilometres, where that is above 0.
// - A reception is new by what came before it: the first of its PI code, site, country, country in this mode;
//   farther than all before it in its mode; the first of its station in this year.
// - In tables and charts every mode but the seven known ones, and none, counts as "Other".
// - A record is one station once, with its farthest reception: the ten farthest of each mode, and the ten
//   with the least power per 1,000 km, in any mode, of those receptions whose power is known.
// - The Es season of a year lasts from the day of its first Es reception to that of its last, both included.
// - A direction is the Azimuth of the log in steps of ten degrees: 0 to 9, 10 to 19 ... 350 to 359.
// - An opening is a run of Es receptions, each less than 60 minutes after the one before it, of three or
//   more. Its MUF is the highest of the log's column MUF. What was new in it is new to the whole log.

inline constexpr int recordsOfMode = 10;
inline constexpr int directionStep = 10; ///< degrees
inline constexpr qint64 openingGap = 3600; ///< seconds after which the next reception is of another opening
inline constexpr std::size_t leastOfOpening = 3;

/// What stands for a country that is not known yet.
inline constexpr QStringView unknownCountry = u"TBD";

[[nodiscard]] inline bool isCounted(const LogEntry &entry)
{
    return !isDeleted(entry);
}

[[nodiscard]] inline bool hasCountry(const LogEntry &entry)
{
    return !entry.country.isEmpty() && entry.country != unknownCountry;
}

/// True when the reception says which station it is of.
[[nodiscard]] inline bool hasStation(const LogEntry &entry)
{
    return !entry.piCode.isEmpty() || !entry.rdsName.isEmpty();
}

/// The number in a Dist or Power above 0; nothing where there is none.
[[nodiscard]] std::optional<double> positiveNumber(QStringView text);

/// The distance of a reception in km, as the filter of the log compares it: miles to one decimal place.
[[nodiscard]] std::optional<double> kilometresOf(const LogEntry &entry, bool inMiles);

} // namespace quillon
