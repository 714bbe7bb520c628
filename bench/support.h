#pragma once

#include "core/config.h"
#include "core/logbook.h"
#include "txdb/transmitters.h"

namespace quillon::bench {

inline constexpr int fullLogSize = 32498;
inline constexpr int fullListSize = TransmitterList::capacity;

/// The largest log there is: twenty years of receptions of the sites of fullTransmitterList, in the order of
/// time, one in eight of a site that is in no list. The same on every call.
[[nodiscard]] Logbook fullLog();

/// The largest transmitter list there is: sites all over Europe and around, with their distances.
[[nodiscard]] TransmitterList fullTransmitterList();

/// A home in the south of England, in kilometres.
[[nodiscard]] Settings homeSettings();

} // namespace quillon::bench
