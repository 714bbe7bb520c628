#pragma once

#include "core/config.h"
#include "core/logentry.h"
#include "geo/leg.h"
#include "txdb/transmitters.h"

#include <optional>
#include <vector>

namespace quillon {

/// The legs from home to the sites of the list, each measured once.
class SiteLegs
{
public:
    /// The list must outlive the object and stay as it is.
    SiteLegs(const TransmitterList &sites, const Settings &settings);

    /// As legOf.
    [[nodiscard]] std::optional<Leg> of(const LogEntry &entry);

private:
    struct Measured
    {
        bool isKnown = false;
        std::optional<Leg> leg;
    };

    const TransmitterList &m_sites;
    std::optional<GeoPosition> m_home;
    std::vector<Measured> m_legs; ///< by row of the list
};

} // namespace quillon
