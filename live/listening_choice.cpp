#include "live/listening.h"

#include <algorithm>
#include <limits>

// Which of the stations that may be heard is the one that is shown, and whether it is certain.

namespace quillon {

namespace {

constexpr std::size_t mostCandidates = 8;
constexpr int askingsWanted = 3;
constexpr int groupsWanted = 3;
constexpr int groupsWantedOfKnown = 2;

} // namespace

QString shownPi(const Station &station)
{
    return station.certain ? piText(station.pi) : piText(station.pi) + u'?';
}

Listening::Candidate &Listening::candidate(quint16 pi, qint64 when)
{
    m_lastPi = pi;
    m_lastPiAt = when;
    const auto known =
        std::ranges::find_if(m_candidates, [&](const Candidate &one) { return one.station.pi == pi; });
    if (known != m_candidates.end()) {
        known->station.last = std::max(known->station.last, when);
        return *known;
    }
    if (m_candidates.size() >= mostCandidates) {
        // The shown one stays; of the others the one that came least goes.
        const auto least = std::ranges::min_element(m_candidates, {}, [&](const Candidate &one) {
            return one.station.pi == m_shown ? std::numeric_limits<qint64>::max() : one.station.groups;
        });
        m_candidates.erase(least);
    }
    Candidate fresh;
    fresh.station.pi = pi;
    fresh.station.first = when;
    fresh.station.last = when;
    return m_candidates.emplace_back(std::move(fresh));
}

Listening::Candidate *Listening::current(qint64 when)
{
    const bool told = m_shown && m_shown == m_lastPi;
    if (!m_lastPi || (!told && when - m_lastPiAt > sameStation)) {
        return nullptr;
    }
    const auto found =
        std::ranges::find_if(m_candidates, [&](const Candidate &one) { return one.station.pi == *m_lastPi; });
    return found == m_candidates.end() ? nullptr : &*found;
}

int Listening::votesWanted(quint16 pi) const
{
    return m_hertz > 0 && m_known->knows(m_hertz, pi) ? groupsWantedOfKnown : groupsWanted;
}

void Listening::settle(qint64 when)
{
    choose(when);
    if (!m_shown) {
        return;
    }
    for (Candidate &one : m_candidates) {
        if (one.station.pi == *m_shown) {
            show(one, when);
        }
    }
}

void Listening::choose(qint64 when)
{
    const auto leader = m_votes.leading(when);
    if (!leader) {
        const bool certain = m_station && m_station->certain;
        if (const Candidate *const one = current(when); one != nullptr && !one->told) {
            const bool wins = !certain || one->askings >= askingsWanted;
            m_shown = wins ? std::optional(one->station.pi) : m_shown;
        }
        return;
    }
    if (!m_shown || !m_station || !m_station->certain) {
        m_shown = leader->pi;
        return;
    }
    if (leader->pi != *m_shown) {
        const bool wins = m_votes.votes(leader->pi, when) >= votesWanted(leader->pi);
        if (wins || m_votes.votes(*m_shown, when) == 0) {
            m_shown = leader->pi;
        }
    }
}

void Listening::show(Candidate &candidate, qint64 when)
{
    Station &station = candidate.station;
    station.hertz = m_hertz;
    if (!station.certain) {
        station.certain = candidate.told || candidate.askings >= askingsWanted
            || m_votes.votes(station.pi, when) >= votesWanted(station.pi);
        station.certainSince = station.certain ? when : 0;
    }
    if (station.ps.isEmpty() && m_candidates.size() == 1) {
        station.ps = m_psWithoutPi;
    }
    const bool changed = !m_station || m_station->pi != station.pi || m_station->ecc != station.ecc
        || m_station->certain != station.certain || m_station->hertz != station.hertz;
    if (changed) {
        mark(station);
    }
    m_station = station;
}

void Listening::mark(Station &station) const
{
    station.marks = m_known->marks(station.hertz, station.pi, station.ecc);
}

QString Listening::psSoFar() const
{
    if (!m_station) {
        return m_psWithoutPi;
    }
    if (!m_station->ps.isEmpty()) {
        return m_station->ps;
    }
    for (const Candidate &one : m_candidates) {
        if (one.station.pi == m_station->pi) {
            return one.reader.name().soFar();
        }
    }
    return {};
}

QList<int> Listening::frequencies() const
{
    for (const Candidate &one : m_candidates) {
        if (m_station && one.station.pi == m_station->pi) {
            return one.frequencies.isEmpty() ? one.reader.frequencies() : one.frequencies;
        }
    }
    return {};
}

} // namespace quillon
