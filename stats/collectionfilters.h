#pragma once

#include "core/logentry.h"
#include "stats/mapdata.h"

#include <QString>

namespace quillon {

// The filter's text for what a cell of the collection counts.

/// prop==Es; for the other modes all that they are not. Empty for all modes.
[[nodiscard]] QString modeFilter(std::size_t mode);
/// The station of the reception.
[[nodiscard]] QString stationFilter(const LogEntry &entry);
/// Exactly this second.
[[nodiscard]] QString momentFilter(DateTime moment);
/// From the one to the other, both included.
[[nodiscard]] QString spanFilter(DateTime first, DateTime last);
/// Exactly this distance.
[[nodiscard]] QString kilometresFilter(double kilometres);
/// Both of them.
[[nodiscard]] QString bothFilters(const QString &first, const QString &second);

} // namespace quillon
