#pragma once

#include "core/logbook.h"
#include "txdb/transmitters.h"

#include <vector>

namespace quillon {

/// An entry of the log and the transmitter it belongs to, both by number.
struct Reception
{
    int transmitter;
    qint32 entry;

    bool operator==(const Reception &) const = default;
};

/// Every entry whose Transmitter and Country are exactly the name and country of a transmitter, in the order
/// of the transmitters and, for each, of the log. Deleted entries count.
[[nodiscard]] std::vector<Reception> findReceptions(const Logbook &log, const TransmitterList &transmitters);

} // namespace quillon
