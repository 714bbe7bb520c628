#include "live/listening.h"

#include "live/frequency.h"
#include "platform/strangerstext.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace quillon {

namespace {

constexpr std::size_t mostCandidates = 8;
constexpr int askingsWanted = 3;
constexpr int groupsWanted = 3;
constexpr int groupsWantedOfKnown = 2;
/// So long a group without a PI code belongs to the station before it.
constexpr qint64 sameStation = 1'000;
constexpr qint64 clockTolerance = 10;

} // namespace

QString shownPi(const Station &station)
{
    return station.certain ? piText(station.pi) : piText(station.pi) + u'?';
}

void Listening::take(const ReceiverEvent &event, qint64 when)
{
    std::visit([&](const auto &told) { on(told, when); }, event);
}

void Listening::clear()
{
    *this = Listening(*m_known);
}

void Listening::on(const Tuned &tuned, qint64 when)
{
    if (tuned.hertz > 0 && logStep(tuned.hertz) == logStep(m_hertz)) {
        m_hertz = tuned.hertz;
        return;
    }
    const qint64 hertz = tuned.hertz > 0 ? tuned.hertz : m_hertz;
    std::optional<Before> before;
    if (m_station) {
        before = Before {m_station->pi, m_station->ps, m_station->text};
    }
    clear();
    m_hertz = hertz;
    m_tunedAt = when;
    m_before = std::move(before);
}

bool Listening::isLate(qint64 when) const
{
    return m_before && when >= m_tunedAt && when - m_tunedAt < lateFor;
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

void Listening::on(const GroupHeard &heard, qint64 when)
{
    const RdsGroup &group = heard.group;
    const bool clean = group.states[0] == BlockState::Clean;
    if (isLate(when) && (!clean || group.blocks[0] == m_before->pi)) {
        return;
    }
    if (clean && group.blocks[0] != 0) {
        m_votes.take(group.blocks[0], when);
        readGroup(candidate(group.blocks[0], when), group, when);
    } else if (Candidate *const same = current(when); same != nullptr && when - m_lastPiAt <= sameStation) {
        readGroup(*same, group, when);
    }
    settle(when);
}

void Listening::readGroup(Candidate &candidate, const RdsGroup &group, qint64 when)
{
    ++candidate.station.groups;
    const RdsReader::Changes changes = candidate.reader.take(group);
    if (changes.ps) {
        candidate.station.ps = candidate.reader.name().ps();
    }
    if (changes.text) {
        candidate.station.text = candidate.reader.text();
    }
    if (changes.ecc) {
        candidate.station.ecc = candidate.reader.ecc();
    }
    if (changes.clock) {
        on(ClockHeard {*candidate.reader.clock()}, when);
    }
}

void Listening::on(const PiHeard &heard, qint64 when)
{
    if (heard.pi == 0 || (isLate(when) && heard.pi == m_before->pi)) {
        return;
    }
    Candidate &one = candidate(heard.pi, when);
    switch (heard.trust) {
    case PiTrust::Doubtful:
        break;
    case PiTrust::Asked:
        for (Candidate &other : m_candidates) {
            other.askings = &other == &one ? other.askings + 1 : 0;
        }
        break;
    case PiTrust::Group:
        ++one.station.groups;
        m_votes.take(heard.pi, when);
        break;
    case PiTrust::Told:
        one.told = true;
        m_shown = heard.pi;
        break;
    }
    settle(when);
}

void Listening::on(const PiGone &, qint64)
{
    for (Candidate &one : m_candidates) {
        one.askings = 0;
    }
}

void Listening::on(const PsHeard &heard, qint64 when)
{
    const QString ps = strangersText(heard.ps, longestPs);
    if (isLate(when) && ps == m_before->ps) {
        return;
    }
    if (Candidate *const one = current(when)) {
        one->station.ps = ps;
        one->station.last = when;
        settle(when);
    } else {
        m_psWithoutPi = ps;
    }
}

void Listening::on(const RadiotextHeard &heard, qint64 when)
{
    const QString text = strangersText(heard.text, longestRadiotext).trimmed();
    if (isLate(when) && text == m_before->text) {
        return;
    }
    if (Candidate *const one = current(when); one != nullptr && !text.isEmpty()) {
        one->station.text = text;
        one->station.last = when;
        settle(when);
    }
}

void Listening::on(const EccHeard &heard, qint64 when)
{
    if (Candidate *const one = current(when); one != nullptr && heard.ecc != 0) {
        one->station.ecc = heard.ecc;
        settle(when);
    }
}

void Listening::on(const ClockHeard &heard, qint64 when)
{
    const qint64 off = heard.utc.seconds - when / 1000;
    m_clockOff = std::abs(off) > clockTolerance ? std::optional(off) : std::nullopt;
}

void Listening::on(const SignalHeard &heard, qint64)
{
    m_signal = heard;
    if (!m_station) {
        return;
    }
    for (Candidate &one : m_candidates) {
        if (one.station.pi == m_station->pi) {
            one.station.best = std::max(one.station.best.value_or(heard.value), heard.value);
            one.station.unit = heard.unit;
            m_station->best = one.station.best;
            m_station->unit = heard.unit;
        }
    }
}

void Listening::on(const StationGuess &guess, qint64 when)
{
    Candidate *const one = current(when);
    if (one == nullptr || one->station.pi != guess.pi) {
        return;
    }
    StationGuess clean = guess;
    for (QString *const text :
        {&clean.site, &clean.country, &clean.kilowatts, &clean.latitude, &clean.longitude, &clean.uid}) {
        *text = strangersText(*text, longestRadiotext).trimmed();
    }
    one->station.guess = std::move(clean);
    settle(when);
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
        || m_station->certain != station.certain;
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
            return one.reader.frequencies();
        }
    }
    return {};
}

} // namespace quillon
