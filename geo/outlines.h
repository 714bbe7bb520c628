#pragma once

#include "geo/position.h"

#include <QByteArrayView>

#include <vector>

namespace quillon {

/// How much of the outlines is left: fine to about 1 km, medium to 4 km, coarse to 16 km.
enum class OutlineDetail { Fine, Medium, Coarse };

using GeoLine = std::vector<GeoPosition>;

/// The outlines of the world.
struct Outlines
{
    /// Rings without their first point again at the end, each with the smaller part of the globe on its left.
    /// A place is land when an odd number of rings has it in that part.
    std::vector<GeoLine> land;
    /// Borders between countries, open lines.
    std::vector<GeoLine> borders;
};

/// The outlines that the program carries, made by tools/mapview/resource.js from Natural Earth.
[[nodiscard]] Outlines outlines(OutlineDetail detail);

/// Reads the outlines of one detail. For fine, medium, coarse `bytes` holds the land rings, then the borders:
/// a number of lines, for each a number of points, and for each point the steps east and north from the one
/// before it (the first from 0, 0) in 1/1000 degree. Numbers have 7 bits a byte, lowest first, the high bit
/// set where another follows; steps are doubled, and negative ones -2 n - 1. Throws "Input past end of file".
[[nodiscard]] Outlines readOutlines(QByteArrayView bytes, OutlineDetail detail);

} // namespace quillon
