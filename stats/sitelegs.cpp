#include "stats/sitelegs.h"

#include "txdb/derivedcells.h"

namespace quillon {

SiteLegs::SiteLegs(const TransmitterList &sites, const Settings &settings)
    : m_sites(sites)
    , m_home(homePosition(settings))
    , m_legs(static_cast<std::size_t>(sites.count()))
{
}

std::optional<Leg> SiteLegs::of(const LogEntry &entry)
{
    const auto row = m_home ? m_sites.find(entry.transmitter, entry.country) : std::nullopt;
    if (!row) {
        return std::nullopt;
    }
    Measured &measured = m_legs[static_cast<std::size_t>(*row)];
    if (!measured.isKnown) {
        measured = {true, legOf(entry, m_sites, m_home)};
    }
    return measured.leg;
}

} // namespace quillon
