#pragma once

#include "export/shownlog.h"

#include <QByteArray>

namespace quillon {

/// The receptions as GeoJSON (RFC 7946): a point for each at the place of its site, or without a place, with
/// the shown columns and the fields behind them as properties, numbers as numbers. With a home, a line more
/// for each site: the shortest way from home, and how many receptions it stands for.
[[nodiscard]] QByteArray shownGeoJson(const ShownLog &shown);

} // namespace quillon
