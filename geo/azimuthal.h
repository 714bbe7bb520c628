#pragma once

#include "geo/position.h"

#include <QPointF>

namespace quillon {

/// How far the antipode of any place is, in km on the WGS84 ellipsoid: the rim of the map.
inline constexpr double antipodeDistance = 20003.931458625;

/// The azimuthal equidistant projection of the WGS84 ellipsoid: every distance and every direction from home
/// is true. Points of the plane are km, x to the east and y to the north of home.
class AzimuthalEquidistant
{
public:
    explicit AzimuthalEquidistant(const GeoPosition &home)
        : m_home(home)
    {
    }

    [[nodiscard]] const GeoPosition &home() const { return m_home; }

    /// The point of a place; the antipode lies on the rim, in some direction.
    [[nodiscard]] QPointF project(const GeoPosition &place) const;
    /// The place of a point; points beyond the rim go on past the antipode.
    [[nodiscard]] GeoPosition place(QPointF point) const;

private:
    GeoPosition m_home;
};

/// The direction of a point from home, degrees clockwise from north, 0 to below 360.
[[nodiscard]] double azimuthOf(QPointF point);

} // namespace quillon
