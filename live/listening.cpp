#include "live/listening.h"

#include "live/frequency.h"
#include "platform/strangerstext.h"

#include <algorithm>
#include <cstdlib>

namespace quillon {

namespace {

constexpr qint64 clockTolerance = 10;

} // namespace

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
    // What was typed for a station that has been heard is not where the receiver is now; what was typed
    // ahead may well be.
    const qint64 unsaid = m_station ? 0 : m_hertz;
    end(when);
    m_hertz = tuned.hertz > 0 ? tuned.hertz : unsaid;
    m_together = tuned.together;
}

void Listening::end(qint64 when)
{
    const qint64 hertz = m_hertz;
    std::optional<Before> before;
    if (m_station) {
        before = Before {m_station->pi, m_station->ps, m_station->text};
    }
    clear();
    m_hertz = hertz;
    m_tunedAt = when;
    m_before = std::move(before);
}

void Listening::nameFrequency(qint64 hertz)
{
    m_hertz = hertz;
    if (m_station) {
        settle(m_station->last);
    }
}

bool Listening::isLate(qint64 when) const
{
    const bool together = m_together && when == m_tunedAt;
    return m_before && !together && when >= m_tunedAt && when - m_tunedAt < lateFor;
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

void Listening::on(const FrequenciesHeard &heard, qint64 when)
{
    if (Candidate *const one = current(when)) {
        for (const int kilohertz : heard.kilohertz) {
            addFrequency(one->frequencies, kilohertz);
        }
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

} // namespace quillon
