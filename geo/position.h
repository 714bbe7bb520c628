#pragma once

#include <QStringView>

#include <optional>

namespace quillon {

/// A place on the globe in decimal degrees, north and east positive.
struct GeoPosition
{
    double latitude = 0; ///< -90 to 90
    double longitude = 0; ///< -180 to 180

    bool operator==(const GeoPosition &) const = default;
};

/// The place that two texts name, each decimal degrees with comma or point. Nothing when one of them is no
/// number or lies outside its range.
[[nodiscard]] std::optional<GeoPosition> positionFrom(QStringView latitude, QStringView longitude);

} // namespace quillon
