#pragma once

#include "core/propagation.h"
#include "geo/leg.h"
#include "geo/position.h"
#include "platform/datetime.h"

#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace quillon {

/// The modes that the map tells apart: those of propagationModes, and last every other text.
inline constexpr std::size_t mapModeCount = propagationModes.size() + 1;
inline constexpr std::size_t esMode = 0;
inline constexpr std::size_t otherMode = propagationModes.size();

/// Number of the mode that an entry names.
[[nodiscard]] std::size_t mapModeOf(QStringView prop);
/// "Es" ... "FAI", "Other".
[[nodiscard]] QString mapModeName(std::size_t mode);

/// The receptions of a site in one mode.
struct ModeReceptions
{
    qint32 count = 0;
    qint32 lastEntry = -1; ///< number of the latest one in the log
    DateTime last; ///< of that one, where count is above 0
    bool today = false; ///< at least one is of the present day

    bool operator==(const ModeReceptions &) const = default;
};

/// A site that was received.
struct MapSite
{
    QString name;
    QString country;
    GeoPosition place;
    std::array<ModeReceptions, mapModeCount> modes;
};

/// What the map shows.
struct MapData
{
    std::optional<GeoPosition> home;
    DistanceUnit unit = DistanceUnit::Kilometres;
    std::vector<MapSite> sites;
    std::array<double, 24> highestMuf {}; ///< of the Es receptions of each hour of the day, MHz; 0 for none
    std::vector<qint32> unplaced; ///< the shown entries that have no place on the map
    qint32 sitesWithoutPlace = 0; ///< the sites that those name
};

} // namespace quillon
