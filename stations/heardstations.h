#pragma once

#include "core/logbook.h"
#include "stations/station.h"
#include "txdb/transmitters.h"

#include <QHash>

#include <span>
#include <vector>

namespace quillon {

/// A station that the log has, and how often.
struct HeardStation
{
    Station station; ///< name and power as last logged; at 0, 0 when its place is not known
    bool hasPlace = false;
    int times = 0;
    qint32 last = -1; ///< number of the entry that was logged last
};

/// The stations of the log by frequency. One is told apart by PI code, site and country, or by name, site and
/// country where there is no PI code. Deleted receptions and those without a site are left out.
class HeardStations
{
public:
    HeardStations() = default;
    /// One pass over the log.
    HeardStations(const Logbook &log, const TransmitterList &sites);

    [[nodiscard]] std::span<const HeardStation> on(int kilohertz) const;

private:
    QHash<int, std::vector<HeardStation>> m_stations;
};

/// True when, within an hour of `moment`, the log has receptions by Es and not more by other modes. The entry
/// `except` does not count, nor do deleted ones.
[[nodiscard]] bool isEsHour(const Logbook &log, DateTime moment, qint32 except);

} // namespace quillon
