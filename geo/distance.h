#pragma once

namespace quillon {

/// Radius of the sphere that distances are measured on, in km.
inline constexpr double earthRadius = 12734.0 / 2;

/// Kilometres to a mile.
inline constexpr double kilometresPerMile = 1.6093;

/// The great-circle distance in km from point 1 (home) to point 2 (the transmitter), on geocentric latitudes.
/// Arguments in decimal degrees, north and east positive. `bearing` becomes the initial bearing from point 1
/// to point 2 in degrees, 0 to 360, clockwise from north. Equal points give 0, and so do points at which a
/// step of the calculation is invalid or overflows; `bearing` then keeps its value.
[[nodiscard]] float DoDistance(double lat1, double lon1, double lat2, double lon2, float &bearing);

} // namespace quillon
