#include "geo/leg.h"

#include "geo/azimuthal.h"
#include "geo/distance.h"
#include "geo/maidenhead.h"
#include "platform/numbers.h"

#include <array>
#include <cmath>

namespace quillon {

using namespace Qt::StringLiterals;

Leg legBetween(const GeoPosition &home, const GeoPosition &site)
{
    float bearing = 0;
    const float kilometres =
        DoDistance(home.latitude, home.longitude, site.latitude, site.longitude, bearing);
    return {static_cast<double>(kilometres), azimuthOf(AzimuthalEquidistant(home).project(site))};
}

double kilometresPer(DistanceUnit unit)
{
    return unit == DistanceUnit::Miles ? kilometresPerMile : 1;
}

QString unitName(DistanceUnit unit)
{
    return unit == DistanceUnit::Miles ? u"mi"_s : u"km"_s;
}

QString distanceFigure(double kilometres, DistanceUnit unit)
{
    return plainText(rounded(kilometres / kilometresPer(unit), 1));
}

QString distanceText(double kilometres, DistanceUnit unit)
{
    return distanceFigure(kilometres, unit) + u' ' + unitName(unit);
}

QString compassPoint(double azimuth)
{
    static constexpr std::array<QStringView, 16> points {u"N", u"NNE", u"NE", u"ENE", u"E", u"ESE", u"SE",
        u"SSE", u"S", u"SSW", u"SW", u"WSW", u"W", u"WNW", u"NW", u"NNW"};
    constexpr double sector = 360.0 / points.size();
    const double turned = std::fmod(std::fmod(azimuth, 360) + 360 + sector / 2, 360);
    return points[static_cast<std::size_t>(turned / sector) % points.size()].toString();
}

QString azimuthText(double azimuth)
{
    const int degrees = (static_cast<int>(std::lround(std::fmod(azimuth, 360))) + 360) % 360;
    return QString::number(degrees) + u"° "_s + compassPoint(azimuth);
}

QString legText(const GeoPosition &home, const GeoPosition &site, DistanceUnit unit)
{
    const Leg leg = legBetween(home, site);
    const QString direction = home == site ? QString() : azimuthText(leg.azimuth) + u", "_s;
    return distanceText(leg.kilometres, unit) + u", "_s + direction + locatorOf(site);
}

} // namespace quillon
