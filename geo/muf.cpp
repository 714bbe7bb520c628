#include "geo/muf.h"

#include <cmath>
#include <numbers>

namespace quillon {

EsHop esHop(double kilometres, double megahertz)
{
    constexpr double radius = 6371;
    constexpr double height = 110;
    constexpr double k = radius / (radius + height);
    const double halfAngle = kilometres / (2 * radius);
    const double elevation = std::atan((std::cos(halfAngle) - k) / std::sin(halfAngle));
    const double atCloud = k * std::cos(elevation);
    const double critical = megahertz * std::sqrt(1 - atCloud * atCloud);
    return {elevation * 180 / std::numbers::pi, critical, critical / std::sqrt(1 - k * k)};
}

std::optional<double> esMuf(double kilometres, double megahertz)
{
    if (!(kilometres >= shortestHop && kilometres <= longestHop && megahertz > 0)) {
        return std::nullopt;
    }
    return esHop(kilometres, megahertz).muf;
}

} // namespace quillon
