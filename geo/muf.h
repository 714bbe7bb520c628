#pragma once

#include <optional>

namespace quillon {

/// A signal mirrored once by an Es cloud 110 km up, over the middle of its path.
struct EsHop
{
    double elevation = 0; ///< of the ray at its ends, degrees
    double critical = 0; ///< fEs: the least critical frequency of the cloud that bears the signal, MHz
    double muf = 0; ///< the highest frequency that this cloud mirrors for rays along the horizon, MHz
};

/// The shortest and longest path, in km, for which esMuf tells a frequency.
inline constexpr double shortestHop = 500;
inline constexpr double longestHop = 2400;

/// The hop of a path of that length in km, above 0, at a frequency in MHz. On a sphere of 6371 km: with
/// k = R / (R + h) and half the central angle t, elevation = atan((cos t - k) / sin t),
/// fEs = f sqrt(1 - (k cos elevation)^2), MUF = fEs / sqrt(1 - k^2).
[[nodiscard]] EsHop esHop(double kilometres, double megahertz);

/// The MUF of a hop; nothing for paths that one hop does not explain.
[[nodiscard]] std::optional<double> esMuf(double kilometres, double megahertz);

} // namespace quillon
