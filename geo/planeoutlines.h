#pragma once

#include "geo/azimuthal.h"
#include "geo/outlines.h"

#include <QPointF>
#include <QRectF>

#include <vector>

namespace quillon {

/// A line or ring on the plane of the map, in km from home, and the rectangle around it.
struct PlaneLine
{
    std::vector<QPointF> points;
    QRectF bounds;
};

/// The outlines on the plane of the map.
struct PlaneOutlines
{
    /// Rings; a point of the map is land when an odd number of them goes round it. Where the antipode is
    /// land the rim of the map is one of them.
    std::vector<PlaneLine> land;
    std::vector<PlaneLine> borders;
};

/// The outlines as the projection shows them, cut open at the antipode, which is the whole rim. Lines are
/// followed to within `tolerance` km of the plane, above 0.
[[nodiscard]] PlaneOutlines projected(
    const Outlines &outlines, const AzimuthalEquidistant &projection, double tolerance);

} // namespace quillon
