#include "txdb/derivedcells.h"

#include "core/propagation.h"
#include "geo/leg.h"
#include "geo/maidenhead.h"
#include "geo/muf.h"
#include "platform/numbers.h"
#include "txdb/distances.h"

#include <cmath>

namespace quillon {

std::optional<GeoPosition> homePosition(const Settings &settings)
{
    return homeIsSet(settings) ? positionFrom(settings.homeLatitude, settings.homeLongitude) : std::nullopt;
}

std::optional<GeoPosition> placeOf(const LogEntry &entry, const TransmitterList &sites)
{
    const auto row = sites.find(entry.transmitter, entry.country);
    if (!row) {
        return std::nullopt;
    }
    const Transmitter &site = sites.row(*row);
    return positionFrom(site.latitude, site.longitude);
}

std::optional<Leg> legOf(
    const LogEntry &entry, const TransmitterList &sites, const std::optional<GeoPosition> &home)
{
    const auto site = placeOf(entry, sites);
    // From home to home there is no direction.
    return home && site && *home != *site ? std::optional(legBetween(*home, *site)) : std::nullopt;
}

int azimuthOf(const Leg &leg)
{
    return static_cast<int>(std::lround(leg.azimuth) % 360);
}

std::optional<double> mufOf(const LogEntry &entry, double kilometres)
{
    constexpr double longest = 2350;
    if (entry.prop != propagationModes.front() || kilometres > longest) {
        return std::nullopt;
    }
    return esMuf(kilometres, numeric(entry.freq).value_or(0));
}

QString azimuthCell(
    const LogEntry &entry, const TransmitterList &sites, const std::optional<GeoPosition> &home)
{
    const auto leg = legOf(entry, sites, home);
    return leg ? QString::number(azimuthOf(*leg)) : QString();
}

QString locatorCell(const LogEntry &entry, const TransmitterList &sites)
{
    const auto site = placeOf(entry, sites);
    return site ? locatorOf(*site) : QString();
}

QString mufCell(const LogEntry &entry, const TransmitterList &sites, const std::optional<GeoPosition> &home)
{
    if (entry.prop != propagationModes.front()) {
        return {};
    }
    const auto leg = legOf(entry, sites, home);
    const auto muf = leg ? mufOf(entry, leg->kilometres) : std::nullopt;
    return muf ? QString::number(*muf, 'f', 1) : QString();
}

} // namespace quillon
