#include "geo/position.h"

#include "platform/numbers.h"

#include <cmath>

namespace quillon {

std::optional<GeoPosition> positionFrom(QStringView latitude, QStringView longitude)
{
    const auto north = numeric(latitude);
    const auto east = numeric(longitude);
    if (!north || !east || std::abs(*north) > 90 || std::abs(*east) > 180) {
        return std::nullopt;
    }
    return GeoPosition {*north, *east};
}

} // namespace quillon
