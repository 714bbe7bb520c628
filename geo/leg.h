#pragma once

#include "geo/position.h"

#include <QString>

namespace quillon {

/// What distances are shown in.
enum class DistanceUnit { Kilometres, Miles };

/// The way from home to a site.
struct Leg
{
    double kilometres = 0; ///< as the log measures it
    double azimuth = 0; ///< initial direction of the geodesic, degrees clockwise from north, 0 to below 360

    bool operator==(const Leg &) const = default;
};

/// The distance is that of DoDistance, the azimuth that of the geodesic on the WGS84 ellipsoid.
[[nodiscard]] Leg legBetween(const GeoPosition &home, const GeoPosition &site);

/// Kilometres to the unit: 1, or 1.6093.
[[nodiscard]] double kilometresPer(DistanceUnit unit);
/// "km" or "mi".
[[nodiscard]] QString unitName(DistanceUnit unit);

/// The number that stands in the log for a distance: one decimal place, none for a whole number: 1234.5, 812.
[[nodiscard]] QString distanceFigure(double kilometres, DistanceUnit unit);
/// The same with its unit: "1234.5 km".
[[nodiscard]] QString distanceText(double kilometres, DistanceUnit unit);

/// The nearest of the 16 points, N, NNE, NE ..., of a direction in degrees clockwise from north.
[[nodiscard]] QString compassPoint(double azimuth);
/// Whole degrees 0 to 359 and the point: "231° SW".
[[nodiscard]] QString azimuthText(double azimuth);

/// Distance, azimuth and the locator of the site: "1234.5 km, 231° SW, IM67XX"; from home to home there is no
/// azimuth.
[[nodiscard]] QString legText(const GeoPosition &home, const GeoPosition &site, DistanceUnit unit);

} // namespace quillon
