#include "stats/maplog.h"

#include "geo/distance.h"
#include "geo/muf.h"
#include "platform/numbers.h"
#include "txdb/derivedcells.h"

#include <QSet>

#include <algorithm>
#include <cmath>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int unknown = -1;
constexpr int notMet = -2;

qint64 dayOf(DateTime moment)
{
    return moment.seconds / secondsPerDay - (moment.seconds % secondsPerDay < 0 ? 1 : 0);
}

// Gathers receptions by site.
class Gathering
{
public:
    Gathering(const TransmitterList &transmitters, const Settings &settings, DateTime now)
        : m_transmitters(transmitters)
        , m_today(dayOf(now))
        , m_siteOfRow(static_cast<std::size_t>(transmitters.count()), notMet)
    {
        m_data.home = homePosition(settings);
        m_data.unit = settings.inMiles() ? DistanceUnit::Miles : DistanceUnit::Kilometres;
    }

    void add(const LogEntry &entry, qint32 number)
    {
        const int site = siteOf(entry);
        if (site == unknown) {
            m_data.unplaced.push_back(number);
            return;
        }
        const std::size_t mode = mapModeOf(entry.prop);
        const auto index = static_cast<std::size_t>(site);
        ModeReceptions &receptions = m_data.sites[index].modes[mode];
        ++receptions.count;
        if (receptions.count == 1 || entry.dateTime >= receptions.last) {
            receptions.last = entry.dateTime;
            receptions.lastEntry = number;
        }
        receptions.today = receptions.today || dayOf(entry.dateTime) == m_today;
        if (mode == esMode) {
            noteMuf(entry, m_kilometres[index]);
        }
    }

    [[nodiscard]] MapData take()
    {
        m_data.sitesWithoutPlace = static_cast<qint32>(m_unplacedSites.size());
        return std::move(m_data);
    }

private:
    [[nodiscard]] int siteOf(const LogEntry &entry)
    {
        const auto row = m_transmitters.find(entry.transmitter, entry.country);
        if (row) {
            int &site = m_siteOfRow[static_cast<std::size_t>(*row)];
            site = site == notMet ? newSite(m_transmitters.row(*row)) : site;
            if (site != unknown) {
                return site;
            }
        }
        if (!entry.transmitter.isEmpty()) {
            m_unplacedSites.insert({entry.transmitter, entry.country});
        }
        return unknown;
    }

    [[nodiscard]] int newSite(const Transmitter &transmitter)
    {
        const auto place = positionFrom(transmitter.latitude, transmitter.longitude);
        if (!place) {
            return unknown;
        }
        m_data.sites.push_back({transmitter.name, transmitter.country, *place, {}});
        m_kilometres.push_back(m_data.home ? kilometresTo(*place) : 0);
        return static_cast<int>(m_data.sites.size()) - 1;
    }

    [[nodiscard]] double kilometresTo(const GeoPosition &place) const
    {
        float bearing = 0;
        return static_cast<double>(DoDistance(
            m_data.home->latitude, m_data.home->longitude, place.latitude, place.longitude, bearing));
    }

    void noteMuf(const LogEntry &entry, double kilometres)
    {
        const auto muf = esMuf(kilometres, numeric(entry.freq).value_or(0));
        if (muf) {
            double &highest = m_data.highestMuf[static_cast<std::size_t>(civil(entry.dateTime).hour)];
            highest = std::max(highest, *muf);
        }
    }

    const TransmitterList &m_transmitters;
    qint64 m_today;
    std::vector<int> m_siteOfRow;
    std::vector<double> m_kilometres;
    QSet<std::pair<QString, QString>> m_unplacedSites;
    MapData m_data;
};

} // namespace

std::size_t mapModeOf(QStringView prop)
{
    return static_cast<std::size_t>(std::ranges::find(propagationModes, prop) - propagationModes.begin());
}

QString mapModeName(std::size_t mode)
{
    return mode < propagationModes.size() ? propagationModes[mode].toString() : u"Other"_s;
}

MapData mapData(const Logbook &log, const TransmitterList &transmitters, std::span<const qint32> shown,
    const Settings &settings, DateTime now)
{
    Gathering gathering(transmitters, settings, now);
    for (const qint32 number : shown) {
        const LogEntry &entry = log.entry(number);
        if (!isDeleted(entry)) {
            gathering.add(entry, number);
        }
    }
    return gathering.take();
}

} // namespace quillon
