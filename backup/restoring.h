#pragma once

#include "core/logbook.h"
#include "core/logchange.h"
#include "txdb/transmitters.h"

#include <QString>

#include <optional>

namespace quillon {

/// What makes one log the other: where both begin alike nothing, from there on all entries taken away and
/// those of the other added. Deleted entries are entries.
[[nodiscard]] LogChange logDifference(const Logbook &from, const Logbook &to);

/// What makes one transmitter list the other, in its order.
[[nodiscard]] SiteChanges siteDifference(const TransmitterList &from, const TransmitterList &to);

/// How many receptions a backup has, beside those that are there now: "12 fewer", "3 more", "as many"; empty
/// when it is not known.
[[nodiscard]] QString comparedToNow(std::optional<qint32> backedUp, qint32 now);

} // namespace quillon
