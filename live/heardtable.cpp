#include "live/heardtable.h"

#include "core/picode.h"
#include "live/frequency.h"

#include <algorithm>

namespace quillon {

quint64 HeardTable::key(qint64 hertz, quint16 pi)
{
    return (static_cast<quint64>(logStep(hertz)) << 16U) | pi;
}

quint64 HeardTable::key(const Station &station)
{
    return key(station.hertz, station.pi);
}

void HeardTable::note(const Station &station)
{
    const auto place = m_places.constFind(key(station));
    const bool goesOn = place != m_places.cend() && station.first - m_rows[*place].station.last <= goesOnFor;
    if (!goesOn) {
        // A wrong code of one moment is no station.
        if (!station.certain && station.groups < 2) {
            return;
        }
        makeRoom();
        m_places.insert(key(station), m_rows.size());
        m_rows.push_back({station, false, station.first, 0, ++m_revision});
        return;
    }
    HeardRow &row = m_rows[*place];
    row.revision = ++m_revision;
    if (row.tuning != station.first) {
        row.groupsBefore = row.station.groups;
        row.tuning = station.first;
    }
    Station &kept = row.station;
    kept.certain = kept.certain || station.certain;
    kept.last = std::max(kept.last, station.last);
    kept.groups = row.groupsBefore + station.groups;
    kept.ps = station.ps.isEmpty() ? kept.ps : station.ps;
    kept.text = station.text.isEmpty() ? kept.text : station.text;
    kept.ecc = station.ecc ? station.ecc : kept.ecc;
    kept.guess = station.guess ? station.guess : kept.guess;
    if (station.best && (!kept.best || *station.best > *kept.best)) {
        kept.best = station.best;
        kept.unit = station.unit;
    }
    // What was new stays new in the table when it has been logged.
    if (!row.logged) {
        kept.marks = station.marks;
    }
}

void HeardTable::setLogged(const Station &station)
{
    const auto place = m_places.constFind(key(station));
    if (place != m_places.cend()) {
        m_rows[*place].logged = true;
        m_rows[*place].revision = ++m_revision;
    }
}

bool HeardTable::findLogged(const Logbook &log)
{
    if (m_rows.empty()) {
        return false;
    }
    const auto firstHeard = [](const HeardRow &row) { return row.station.first / 1000; };
    const qint64 since = firstHeard(*std::ranges::min_element(m_rows, {}, firstHeard));
    QHash<quint64, QList<qint64>> logged;
    for (const LogEntry &entry : log) {
        // Few are of this evening: only those are read.
        if (entry.dateTime.seconds < since || isDeleted(entry)) {
            continue;
        }
        const auto hertz = hertzOf(entry.freq);
        const auto pi = piCodeOf(entry.piCode);
        if (hertz && pi) {
            logged[key(*hertz, *pi)].append(entry.dateTime.seconds);
        }
    }
    bool changed = false;
    for (HeardRow &row : m_rows) {
        const auto moments = logged.constFind(key(row.station));
        const bool found = moments != logged.cend() && std::ranges::any_of(*moments, [&](qint64 moment) {
            return moment >= row.station.first / 1000 && moment <= row.station.last / 1000;
        });
        if (found != row.logged) {
            row.logged = found;
            row.revision = ++m_revision;
            changed = true;
        }
    }
    return changed;
}

void HeardTable::clear()
{
    m_rows.clear();
    m_places.clear();
    ++m_generation;
}

void HeardTable::nameFrequency(const Station &station)
{
    const auto unnamed = m_places.constFind(key(0, station.pi));
    if (unnamed == m_places.cend() || station.hertz <= 0) {
        return;
    }
    const std::size_t place = *unnamed;
    HeardRow &row = m_rows[place];
    // Of earlier tunings nobody knows where they were.
    if (row.tuning != station.first || row.groupsBefore > 0) {
        return;
    }
    if (m_places.contains(key(station))) {
        erase(place, 1);
        return;
    }
    row.station.hertz = station.hertz;
    row.revision = ++m_revision;
    m_places.erase(unnamed);
    m_places.insert(key(station), place);
}

void HeardTable::makeRoom()
{
    if (m_rows.size() >= mostRows) {
        erase(0, mostRows / 4);
    }
}

void HeardTable::erase(std::size_t first, std::size_t count)
{
    const auto begin = m_rows.begin() + static_cast<std::ptrdiff_t>(first);
    m_rows.erase(begin, begin + static_cast<std::ptrdiff_t>(count));
    m_places.clear();
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        m_places.insert(key(m_rows[i].station), i);
    }
    ++m_generation;
}

} // namespace quillon
