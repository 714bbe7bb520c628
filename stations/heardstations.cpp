#include "stations/heardstations.h"

#include "core/picode.h"
#include "platform/numbers.h"

#include <QHash>

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// What tells stations of one frequency apart, as views of the log.
struct Identity
{
    int pi = -1;
    QStringView name; ///< empty with a PI code
    QStringView site;
    QStringView country;

    bool operator==(const Identity &) const = default;
    friend std::size_t qHash(const Identity &identity, std::size_t seed) noexcept
    {
        return qHashMulti(seed, identity.pi, identity.name, identity.site, identity.country);
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
    : m_log(&log)
    , m_sites(&sites)
{
    Frequencies frequencies;
    for (qint32 number = 0; number < log.count(); ++number) {
        const LogEntry &entry = log.entry(number);
        const int kilohertz = frequencies.of(entry.freq);
        if (kilohertz > 0 && !isDeleted(entry) && !entry.transmitter.isEmpty()) {
            m_receptions.push_back({kilohertz, number});
        }
    }
    std::ranges::stable_sort(m_receptions, {}, &Reception::kilohertz);
}

std::vector<HeardStation> HeardStations::on(int kilohertz) const
{
    struct Found
    {
        const LogEntry *last = nullptr;
        int times = 0;
    };
    std::vector<Found> found;
    QHash<Identity, std::size_t> index;
    for (auto one = std::ranges::lower_bound(m_receptions, kilohertz, {}, &Reception::kilohertz);
         one != m_receptions.end() && one->kilohertz == kilohertz; ++one) {
        const LogEntry &entry = m_log->entry(one->entry);
        const auto pi = codeOf(entry);
        const Identity identity {pi ? int {*pi} : -1, pi ? QStringView() : QStringView(entry.rdsName),
            entry.transmitter, entry.country};
        const auto known = index.constFind(identity);
        if (known == index.cend()) {
            index.insert(identity, found.size());
            found.push_back({&entry, 1});
            continue;
        }
        Found &of = found[*known];
        ++of.times;
        of.last = of.last->dateTime <= entry.dateTime ? &entry : of.last;
    }
    std::vector<HeardStation> stations;
    stations.reserve(found.size());
    for (const Found &of : found) {
        stations.push_back(heardStation(*of.last, kilohertz, *m_sites));
        stations.back().times = of.times;
    }
    return stations;
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
