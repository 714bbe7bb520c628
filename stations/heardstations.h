#pragma once

#include "core/logbook.h"
#include "stations/station.h"
#include "txdb/transmitters.h"

#include <vector>

namespace quillon {

/// A station that the log has, and how often.
struct HeardStation
{
    ListedStation station; ///< name and power as last logged; at 0, 0 when its place is not known
    bool hasPlace = false;
    int times = 0;
};

/// The stations of a log by frequency. One is told apart by PI code, site and country, or by name, site and
/// country where there is no PI code. Deleted receptions and those without a site are left out.
class HeardStations
{
public:
    HeardStations() = default;
    /// One pass over the log. Log and sites must outlive this, and the log stay as it is.
    HeardStations(const Logbook &log, const TransmitterList &sites);

    /// Those of this frequency, in the order in which they were first logged.
    [[nodiscard]] std::vector<HeardStation> on(int kilohertz) const;

private:
    struct Reception
    {
        int kilohertz = 0;
        qint32 entry = -1;
    };

    const Logbook *m_log = nullptr;
    const TransmitterList *m_sites = nullptr;
    std::vector<Reception> m_receptions; ///< by frequency, in the order of the log
};

/// True when, within an hour of `moment`, the log has receptions by Es and not more by other modes. The entry
/// `except` does not count, nor do deleted ones.
[[nodiscard]] bool isEsHour(const Logbook &log, DateTime moment, qint32 except);

} // namespace quillon
