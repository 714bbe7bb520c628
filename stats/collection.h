#pragma once

#include "core/logbook.h"
#include "stats/mapdata.h"
#include "stats/novelty.h"
#include "stats/sitelegs.h"

#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <span>
#include <vector>

namespace quillon {

// What a log adds up to, by the rules of stats/collectionrules.h. All of these take entries as countedEntries
// gives them.

/// Those of the entries that are counted, in the order of time. Throws "Subscript out of range" for a number
/// beyond the log.
[[nodiscard]] std::vector<qint32> countedEntries(const Logbook &log, std::span<const qint32> entries);

/// A number of receptions.
struct Tally
{
    qint32 count = 0;
    double farthest = 0; ///< km; 0 when no distance is known
    DateTime first; ///< where count is above 0
    DateTime last;

    void add(DateTime moment, double kilometres);
    bool operator==(const Tally &) const = default;
};

/// A country in each mode, and in all of them together at the end.
struct CountryFigures
{
    QString country;
    std::array<Tally, mapModeCount + 1> modes;
};
inline constexpr std::size_t allModes = mapModeCount;
/// By their letters.
[[nodiscard]] std::vector<CountryFigures> countryFigures(
    const Logbook &log, std::span<const qint32> entries, bool inMiles);

struct StationFigures
{
    QString piCode;
    QString name; ///< the last one that was received
    QString site;
    QString country;
    Tally tally;
};
/// In the order of their first receptions.
[[nodiscard]] std::vector<StationFigures> stationFigures(
    const Logbook &log, std::span<const qint32> entries, bool inMiles);

/// A place in one of the lists of records.
struct Record
{
    std::size_t list = 0; ///< a mode, or `leastPower`
    int rank = 0; ///< from 1
    qint32 entry = -1;
    double kilometres = 0;
    double powerPer1000 = 0; ///< kW per 1,000 km; 0 where the power is not known

    bool operator==(const Record &) const = default;
};
inline constexpr std::size_t leastPower = mapModeCount;
/// List by list, and in each by rank. Of what is equal the earlier comes first.
[[nodiscard]] std::vector<Record> records(const Logbook &log, std::span<const qint32> entries, bool inMiles);

/// A year as days.
struct YearFigures
{
    int year = 0;
    std::array<qint32, 366> days {}; ///< receptions by day, from 1 January on
    qint32 count = 0;
    int daysWithReceptions = 0;
    int daysWithEs = 0;
    int firstEs = -1; ///< days of the year, from 0; -1 without Es
    int lastEs = -1;

    bool operator==(const YearFigures &) const = default;
};
/// From the first year with a reception to the last one; those between that have none stand there too, unless
/// the years are farther apart than 200.
[[nodiscard]] std::vector<YearFigures> yearFigures(const Logbook &log, std::span<const qint32> entries);

/// The receptions by direction and mode.
inline constexpr std::size_t directionCount = 36;
struct DirectionFigures
{
    std::array<std::array<qint32, mapModeCount>, directionCount> counts {};
    qint32 unknown = 0; ///< receptions without a direction
};
/// The step of a reception's direction, 0 to directionCount - 1; nothing where it is not known.
[[nodiscard]] std::optional<std::size_t> directionOf(const LogEntry &entry, SiteLegs &legs);
[[nodiscard]] DirectionFigures directionFigures(
    const Logbook &log, std::span<const qint32> entries, SiteLegs &legs);

struct Opening
{
    std::vector<qint32> entries; ///< in the order of time
    double muf = 0; ///< MHz; 0 when it is not known
    qint32 farthest = -1; ///< entry; -1 when no distance is known
    double kilometres = 0; ///< of that one
    QStringList countries; ///< by their letters
    std::array<int, noveltyMarkCount> news {}; ///< how many of the receptions have that mark
};
/// In the order of time.
[[nodiscard]] std::vector<Opening> openings(const Logbook &log, std::span<const qint32> entries, bool inMiles,
    SiteLegs &legs, const Novelty &novelty);

} // namespace quillon
