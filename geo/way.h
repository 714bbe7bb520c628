#pragma once

#include "geo/position.h"

#include <vector>

namespace quillon {

/// The shortest way between two places as lines of places, both ends included, at most about 100 km apart.
/// One line; two where the way crosses the meridian of 180 degrees, on which the first then ends and the
/// second begins.
[[nodiscard]] std::vector<std::vector<GeoPosition>> wayBetween(
    const GeoPosition &from, const GeoPosition &to);

} // namespace quillon
