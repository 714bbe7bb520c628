#pragma once

#include "core/config.h"
#include "core/logbook.h"
#include "stats/mapdata.h"
#include "txdb/transmitters.h"

#include <span>

namespace quillon {

/// What the map shows of the entries with these numbers, in their order; deleted ones are left out. Sites
/// stand in the order in which they first occur, their places are those of the list. `now` decides what is of
/// today. One pass. Throws "Subscript out of range" for a number beyond the log.
[[nodiscard]] MapData mapData(const Logbook &log, const TransmitterList &transmitters,
    std::span<const qint32> shown, const Settings &settings, DateTime now);

} // namespace quillon
