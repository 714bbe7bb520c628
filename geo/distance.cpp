#include "geo/distance.h"

#include <cmath>
#include <optional>

namespace quillon {

namespace {

const double pi = 4 * std::atan(1.0);

// The square of the polar over the square of the equatorial radius: 6356 and 6378 km.
constexpr double flattening = 40398736.0 / 40678884.0;

struct Point
{
    double geocentricLatitude;
    double longitude;
};

Point inRadians(double latitude, double longitude)
{
    return {std::atan(flattening * std::tan(latitude * (pi / 180))), longitude * (pi / 180)};
}

// Nothing at c = 0, and where rounding has carried the cosine beyond 1. Through the arctangent, which keeps
// its precision for near points.
std::optional<double> centralAngle(const Point &from, const Point &to)
{
    const double c = std::cos(from.longitude - to.longitude) * std::cos(from.geocentricLatitude)
            * std::cos(to.geocentricLatitude)
        + std::sin(to.geocentricLatitude) * std::sin(from.geocentricLatitude);
    const double tangent = std::sqrt(1 - c * c) / c;
    if (!std::isfinite(tangent)) {
        return std::nullopt;
    }
    const double d = std::abs(std::atan(tangent));
    return c < 0 ? pi - d : d;
}

std::optional<double> initialBearing(const Point &from, const Point &to, double d)
{
    const double y = std::sin(to.longitude - from.longitude) * std::cos(to.geocentricLatitude)
        * std::cos(from.geocentricLatitude);
    const double x = std::sin(to.geocentricLatitude) - std::cos(d) * std::sin(from.geocentricLatitude);
    double b = pi / 2;
    if (x != 0) {
        if (!std::isfinite(y / x)) {
            return std::nullopt;
        }
        b = std::abs(std::atan(y / x));
    }
    if (x < 0) {
        b = pi - b;
    }
    if (y < 0) {
        b = -b;
    }
    return b < 0 ? b + 2 * pi : b;
}

} // namespace

float DoDistance(double lat1, double lon1, double lat2, double lon2, float &bearing)
{
    if (lat1 == lat2 && lon1 == lon2) {
        return 0;
    }
    const Point from = inRadians(lat1, lon1);
    const Point to = inRadians(lat2, lon2);
    const auto d = centralAngle(from, to);
    const auto b = d ? initialBearing(from, to, *d) : std::nullopt;
    if (!b) {
        return 0;
    }
    bearing = static_cast<float>(*b * 180 / pi);
    return static_cast<float>(earthRadius * *d);
}

} // namespace quillon
