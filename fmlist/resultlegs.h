#pragma once

#include "fmlist/search.h"
#include "geo/leg.h"
#include "geo/position.h"

#include <QList>
#include <QStringView>

#include <optional>

namespace quillon {

/// From how far a mode brings a signal, km.
struct ModeReach
{
    double least = 0;
    double most = 0;
};

/// Es and meteor scatter leave out what is below their shortest hop; Es may come by two hops, TEP and F2 from
/// far alone. Any distance for a text that is no mode.
[[nodiscard]] ModeReach reachOf(QStringView mode);

/// The way from home to each result; nothing where a result has no place (-1 in both numbers, or none), and
/// without a home.
[[nodiscard]] QList<std::optional<Leg>> legsOf(
    const QList<SearchResult> &results, const std::optional<GeoPosition> &home);

/// The number of the nearest result that is plausible: on the frequency that was heard, to one decimal place
/// as results have it, and as far away as the mode brings a signal. Nothing when none is.
[[nodiscard]] std::optional<qsizetype> nearestPlausible(const QList<SearchResult> &results,
    const QList<std::optional<Leg>> &legs, QStringView frequency, QStringView mode);

} // namespace quillon
