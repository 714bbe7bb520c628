#include "geo/azimuthal.h"

#include <GeographicLib/Geodesic.hpp>

#include <cmath>
#include <numbers>

namespace quillon {

namespace {

constexpr double metresPerKilometre = 1000;
constexpr double radians = std::numbers::pi / 180;

} // namespace

QPointF AzimuthalEquidistant::project(const GeoPosition &place) const
{
    double metres = 0;
    double azimuth = 0;
    double azimuthThere = 0;
    GeographicLib::Geodesic::WGS84().Inverse(
        m_home.latitude, m_home.longitude, place.latitude, place.longitude, metres, azimuth, azimuthThere);
    const double kilometres = metres / metresPerKilometre;
    return {kilometres * std::sin(azimuth * radians), kilometres * std::cos(azimuth * radians)};
}

GeoPosition AzimuthalEquidistant::place(QPointF point) const
{
    const double metres = std::hypot(point.x(), point.y()) * metresPerKilometre;
    GeoPosition place;
    GeographicLib::Geodesic::WGS84().Direct(
        m_home.latitude, m_home.longitude, azimuthOf(point), metres, place.latitude, place.longitude);
    return place;
}

double azimuthOf(QPointF point)
{
    const double azimuth = std::atan2(point.x(), point.y()) / radians;
    // A hair to the west of north comes out as 360.
    return std::fmod(azimuth + 360, 360);
}

} // namespace quillon
