#include "fmlist/resultlegs.h"

#include "core/propagation.h"
#include "geo/azimuthal.h"
#include "platform/numbers.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quillon {

namespace {

// In the order of propagationModes.
constexpr std::array<ModeReach, propagationModes.size()> reaches {{
    {500, 4700}, // Es: one hop or two
    {0, 2000}, // Tropo, a duct over the sea included
    {500, 2400}, // MS
    {2500, 9000}, // TEP
    {0, 2200}, // Aur
    {2500, antipodeDistance}, // F2
    {300, 2400}, // FAI
}};

std::optional<GeoPosition> placeOf(const SearchResult &result)
{
    const auto unknown = QStringView(u"-1");
    if (result.latitude == unknown && result.longitude == unknown) {
        return std::nullopt;
    }
    return positionFrom(result.latitude, result.longitude);
}

bool isOn(const SearchResult &result, double frequency)
{
    constexpr double half = 0.05;
    constexpr double slack = 1e-6;
    const auto its = numeric(result.frequency);
    return its && std::abs(*its - frequency) <= half + slack;
}

} // namespace

ModeReach reachOf(QStringView mode)
{
    const auto found = std::ranges::find(propagationModes, mode);
    return found == propagationModes.end()
        ? ModeReach {0, antipodeDistance}
        : reaches[static_cast<std::size_t>(found - propagationModes.begin())];
}

QList<std::optional<Leg>> legsOf(const QList<SearchResult> &results, const std::optional<GeoPosition> &home)
{
    QList<std::optional<Leg>> legs;
    legs.reserve(results.size());
    for (const SearchResult &result : results) {
        const auto place = placeOf(result);
        legs.append(home && place ? std::optional(legBetween(*home, *place)) : std::nullopt);
    }
    return legs;
}

std::optional<qsizetype> nearestPlausible(const QList<SearchResult> &results,
    const QList<std::optional<Leg>> &legs, QStringView frequency, QStringView mode)
{
    const auto heard = numeric(frequency);
    const ModeReach reach = reachOf(mode);
    std::optional<qsizetype> nearest;
    for (qsizetype i = 0; heard && i < std::min(results.size(), legs.size()); ++i) {
        const std::optional<Leg> &leg = legs[i];
        if (leg && leg->kilometres >= reach.least && leg->kilometres <= reach.most && isOn(results[i], *heard)
            && (!nearest || leg->kilometres < legs[*nearest]->kilometres)) {
            nearest = i;
        }
    }
    return nearest;
}

} // namespace quillon
