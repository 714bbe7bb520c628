#include "live/autolog.h"

#include "live/frequency.h"

#include <algorithm>
#include <utility>

namespace quillon {

namespace {

/// Longer ago, a station is no longer heard.
constexpr qint64 stillHeard = 10'000;
constexpr qsizetype mostLocals = 500;

quint64 key(const Station &station)
{
    return (static_cast<quint64>(logStep(station.hertz)) << 16U) | station.pi;
}

} // namespace

bool isLocal(const Local &local, const Station &station)
{
    if (!local.hertz && !local.pi) {
        return false;
    }
    return (!local.hertz || logStep(*local.hertz) == logStep(station.hertz))
        && (!local.pi || *local.pi == station.pi);
}

QString textOf(const Local &local)
{
    const QString frequency = local.hertz ? megahertzText(*local.hertz) : QString();
    const QString code = local.pi ? piText(*local.pi) : QString();
    return QString(frequency + u' ' + code).trimmed();
}

std::optional<Local> readLocal(QStringView text)
{
    const auto words = text.trimmed().split(u' ', Qt::SkipEmptyParts);
    if (words.size() == 1) {
        // "8801" is a code: no one writes 8801 MHz.
        if (const auto pi = piCodeOf(words[0])) {
            return Local {{}, pi};
        }
        const auto hertz = hertzOf(words[0]);
        return hertz ? std::optional(Local {hertz, {}}) : std::nullopt;
    }
    if (words.size() != 2) {
        return {};
    }
    const auto hertz = hertzOf(words[0]);
    const auto pi = piCodeOf(words[1]);
    return hertz && pi ? std::optional(Local {hertz, pi}) : std::nullopt;
}

bool AutoLog::wants(const Listening &listening, qint64 now) const
{
    const auto &station = listening.station();
    if (!m_rules.on || !station || !station->certain || station->hertz <= 0) {
        return false;
    }
    if (now - listening.tunedAt() < qint64 {m_rules.earliest} * 1000
        || now - station->certainSince < qint64 {m_rules.hold} * 1000 || now - station->last > stillHeard) {
        return false;
    }
    if (std::ranges::any_of(m_rules.locals, [&](const Local &local) { return isLocal(local, *station); })) {
        return false;
    }
    const auto logged = m_logged.constFind(key(*station));
    return logged == m_logged.cend() || now - *logged >= qint64 {m_rules.again} * 60'000;
}

void AutoLog::logged(const Station &station, qint64 now)
{
    m_logged.removeIf(
        [&](const auto &entry) { return now - entry.value() >= qint64 {m_rules.again} * 60'000; });
    m_logged.insert(key(station), now);
}

void LocalsLearner::start(qint64 now)
{
    m_startedAt = now;
    m_locals.clear();
}

void LocalsLearner::note(const Station &station)
{
    if (!m_startedAt || !station.certain || m_locals.size() >= mostLocals) {
        return;
    }
    const auto known = [&](const Local &local) { return isLocal(local, station); };
    if (std::ranges::none_of(m_locals, known)) {
        const auto hertz = station.hertz > 0 ? std::optional(station.hertz) : std::nullopt;
        m_locals.append({hertz, station.pi});
    }
}

std::optional<QList<Local>> LocalsLearner::finished(qint64 now)
{
    if (!m_startedAt || now - *m_startedAt < lasts) {
        return {};
    }
    m_startedAt.reset();
    return std::exchange(m_locals, {});
}

} // namespace quillon
