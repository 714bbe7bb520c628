#pragma once

#include "core/config.h"
#include "core/logbook.h"
#include "txdb/transmitters.h"

#include <QString>

namespace quillon {

/// False when the home latitude or longitude is exactly "0": then no distance can be measured.
[[nodiscard]] bool homeIsSet(const Settings &settings);

/// What a measuring of every transmitter's distance from home changes: in km, or in miles when the settings
/// say so, rounded to one decimal place, as plain text with "."; a coordinate that is missing or no number
/// counts as -1. `decimalComma` is that of the locale. To be called only when homeIsSet.
[[nodiscard]] SiteChanges measuredTransmitters(
    const TransmitterList &list, const Settings &settings, bool decimalComma);

/// What changes when every entry, deleted ones included, gets the distance of the transmitter of its
/// Transmitter and Country; an entry without one keeps its Dist.
[[nodiscard]] LogChange givenDistances(const TransmitterList &list, const Logbook &log);

} // namespace quillon
