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

QString azimuthCell(
    const LogEntry &entry, const TransmitterList &sites, const std::optional<GeoPosition> &home)
{
    const auto site = placeOf(entry, sites);
    // From home to home there is no direction.
    if (!home || !site || *home == *site) {
        return {};
    }
    return QString::number(std::lround(legBetween(*home, *site).azimuth) % 360);
}

QString locatorCell(const LogEntry &entry, const TransmitterList &sites)
{
    const auto site = placeOf(entry, sites);
    return site ? locatorOf(*site) : QString();
}

QString mufCell(const LogEntry &entry, const TransmitterList &sites, const std::optional<GeoPosition> &home)
{
    constexpr double longest = 2350;
    if (!home || entry.prop != propagationModes.front()) {
        return {};
    }
    const auto site = placeOf(entry, sites);
    const double kilometres = site ? legBetween(*home, *site).kilometres : 0;
    const auto muf = esMuf(kilometres, numeric(entry.freq).value_or(0));
    return muf && kilometres <= longest ? QString::number(*muf, 'f', 1) : QString();
}

} // namespace quillon
