#pragma once

#include "core/logrows.h"
#include "geo/position.h"
#include "txdb/transmitters.h"

#include <QString>

#include <optional>
#include <vector>

namespace quillon {

/// What an export of the grid is made of.
struct ShownLog
{
    const LogRows &rows;
    const TransmitterList &sites;
    std::optional<GeoPosition> home;
    QString callsign; ///< of whose receptions these are; may be empty
    DateTime now; ///< told as the time of making, UTC
    std::vector<qint32> entries; ///< in the order of the grid
    std::vector<GridColumn> columns; ///< from left to right
};

/// Those of the entries that are not deleted, in their order.
[[nodiscard]] std::vector<qint32> withoutDeleted(const Logbook &log, std::span<const qint32> entries);

/// A cell for other programs: the field as the log holds it, line breaks and tags included, Date/Time as
/// 2010-07-05T21:34:10Z, numbers with "."; a derived column as the grid shows it.
[[nodiscard]] QString dataText(const LogRows &rows, qint32 entry, GridColumn column);

/// True for Freq, Power, Dist, Azimuth and MUF.
[[nodiscard]] bool isNumberColumn(GridColumn column);

} // namespace quillon
