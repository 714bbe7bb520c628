#include "geo/way.h"

#include "geo/azimuthal.h"

#include <algorithm>
#include <cmath>

namespace quillon {

namespace {

constexpr double step = 100; // km

// Where a short line from one place to another across 180 degrees meets it, seen from `from`.
GeoPosition crossing(const GeoPosition &from, const GeoPosition &to)
{
    const double edge = std::copysign(180, from.longitude);
    const double unrolled = to.longitude + 2 * edge;
    const double part =
        unrolled == from.longitude ? 0 : (edge - from.longitude) / (unrolled - from.longitude);
    return {from.latitude + part * (to.latitude - from.latitude), edge};
}

} // namespace

std::vector<std::vector<GeoPosition>> wayBetween(const GeoPosition &from, const GeoPosition &to)
{
    const AzimuthalEquidistant projection(from);
    // Seen from its beginning the way is straight.
    const QPointF end = projection.project(to);
    const int steps = std::max(1, static_cast<int>(std::ceil(std::hypot(end.x(), end.y()) / step)));
    std::vector<std::vector<GeoPosition>> lines {{from}};
    for (int i = 1; i <= steps; ++i) {
        const GeoPosition last = lines.back().back();
        const GeoPosition next = i == steps ? to : projection.place(end * i / steps);
        if (std::abs(next.longitude - last.longitude) > 180) {
            const GeoPosition edge = crossing(last, next);
            lines.back().push_back(edge);
            lines.push_back({{edge.latitude, -edge.longitude}});
        }
        lines.back().push_back(next);
    }
    return lines;
}

} // namespace quillon
