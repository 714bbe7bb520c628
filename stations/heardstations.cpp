#include "stations/heardstations.h"

#include "core/picode.h"
#include "platform/numbers.h"

#include <algorithm>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// What tells stations of one frequency apart, as views of the log.
struct Identity
{
    int kilohertz = 0;
    int pi = -1;
    QStringView name; ///< empty with a PI code
    QStringView site;
    QStringView country;

    bool operator==(const Identity &) const = default;
    friend std::size_t qHash(const Identity &identity, std::size_t seed) noexcept
    {
        return qHashMulti(
            seed, identity.kilohertz, identity.pi, identity.name, identity.site, identity.country);
    }
};

// The texts of frequencies repeat themselves.
class Frequencies
{
public:
    int of(const QString &text)
    {
        const auto known = m_known.constFind(text);
        if (known != m_known.cend()) {
            return *known;
        }
        return *m_known.insert(text, kilohertzOf(text).value_or(0));
    }

private:
    QHash<QStringView, int> m_known;
};

std::optional<quint16> codeOf(const LogEntry &entry)
{
    return piCodeOf(QStringView(entry.piCode).trimmed());
}

HeardStation heardStation(const LogEntry &entry, int kilohertz, const TransmitterList &sites)
{
    HeardStation heard;
    heard.station.kilohertz = kilohertz;
    heard.station.pi = codeOf(entry);
    heard.station.names = QString(entry.rdsName).replace(u' ', u'_');
    heard.station.site = entry.transmitter;
    heard.station.country = entry.country;
    heard.station.kilowatts = std::max(numeric(entry.power).value_or(0), 0.0);
    heard.station.id = entry.uid;
    if (const auto row = sites.find(entry.transmitter, entry.country)) {
        if (const auto place = positionFrom(sites.row(*row).latitude, sites.row(*row).longitude)) {
            heard.station.place = *place;
            heard.hasPlace = true;
        }
    }
    return heard;
}

} // namespace

HeardStations::HeardStations(const Logbook &log, const TransmitterList &sites)
{
    struct Found
    {
        qint32 last = -1;
        int times = 0;
    };
    Frequencies frequencies;
    QHash<Identity, Found> found;
    for (qint32 number = 0; number < log.count(); ++number) {
        const LogEntry &entry = log.entry(number);
        const int kilohertz = frequencies.of(entry.freq);
        if (kilohertz == 0 || isDeleted(entry) || entry.transmitter.isEmpty()) {
            continue;
        }
        const auto pi = codeOf(entry);
        Found &of = found[{kilohertz, pi ? int {*pi} : -1, pi ? QStringView() : QStringView(entry.rdsName),
            entry.transmitter, entry.country}];
        ++of.times;
        if (of.last < 0 || log.entry(of.last).dateTime <= entry.dateTime) {
            of.last = number;
        }
    }
    for (auto it = found.cbegin(); it != found.cend(); ++it) {
        HeardStation heard = heardStation(log.entry(it->last), it.key().kilohertz, sites);
        heard.times = it->times;
        heard.last = it->last;
        m_stations[it.key().kilohertz].push_back(std::move(heard));
    }
    // A hash has no order of its own.
    for (auto &stations : m_stations) {
        std::ranges::sort(stations, {}, &HeardStation::last);
    }
}

std::span<const HeardStation> HeardStations::on(int kilohertz) const
{
    const auto found = m_stations.constFind(kilohertz);
    return found == m_stations.cend() ? std::span<const HeardStation>() : *found;
}

bool isEsHour(const Logbook &log, DateTime moment, qint32 except)
{
    constexpr qint64 hour = 3600;
    int byEs = 0;
    int others = 0;
    for (qint32 number = 0; number < log.count(); ++number) {
        const LogEntry &entry = log.entry(number);
        const qint64 apart = entry.dateTime.seconds - moment.seconds;
        if (number == except || apart < -hour || apart > hour || entry.prop.isEmpty() || isDeleted(entry)) {
            continue;
        }
        ++(entry.prop == "Es"_L1 ? byEs : others);
    }
    return byEs > 0 && byEs >= others;
}

} // namespace quillon
