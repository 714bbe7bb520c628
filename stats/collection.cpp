#include "stats/collection.h"

#include "core/numbering.h"
#include "stats/collectionrules.h"
#include "txdb/derivedcells.h"

#include <QHash>

#include <algorithm>
#include <map>
#include <tuple>

namespace quillon {

namespace {

struct StationKey
{
    QString label;
    bool byPi = false;
    QString site;
    QString country;

    bool operator==(const StationKey &) const = default;
    friend std::size_t qHash(const StationKey &key, std::size_t seed) noexcept
    {
        return qHashMulti(seed, key.label, key.byPi, key.site, key.country);
    }
};

StationKey stationOf(const LogEntry &entry)
{
    const bool byPi = !entry.piCode.isEmpty();
    return {byPi ? entry.piCode : entry.rdsName, byPi, entry.transmitter, entry.country};
}

} // namespace

std::vector<qint32> countedEntries(const Logbook &log, std::span<const qint32> entries)
{
    std::vector<std::pair<DateTime, qint32>> keys;
    keys.reserve(entries.size());
    for (const qint32 number : entries) {
        const LogEntry &entry = log.entry(number);
        if (isCounted(entry)) {
            keys.emplace_back(entry.dateTime, number);
        }
    }
    if (!std::ranges::is_sorted(keys)) {
        std::ranges::sort(keys);
    }
    std::vector<qint32> counted;
    counted.reserve(keys.size());
    for (const auto &[moment, number] : keys) {
        counted.push_back(number);
    }
    return counted;
}

void Tally::add(DateTime moment, double kilometres)
{
    first = count == 0 ? moment : first;
    last = moment;
    farthest = std::max(farthest, kilometres);
    ++count;
}

std::vector<CountryFigures> countryFigures(const Logbook &log, std::span<const qint32> entries, bool inMiles)
{
    std::map<QString, CountryFigures> countries;
    for (const qint32 number : entries) {
        const LogEntry &entry = log.entry(number);
        if (!hasCountry(entry)) {
            continue;
        }
        CountryFigures &figures = countries[entry.country];
        const double kilometres = kilometresOf(entry, inMiles).value_or(0);
        for (const std::size_t mode : {mapModeOf(entry.prop), allModes}) {
            figures.modes[mode].add(entry.dateTime, kilometres);
        }
    }
    std::vector<CountryFigures> result;
    result.reserve(countries.size());
    for (auto &[country, figures] : countries) {
        figures.country = country;
        result.push_back(std::move(figures));
    }
    return result;
}

std::vector<StationFigures> stationFigures(const Logbook &log, std::span<const qint32> entries, bool inMiles)
{
    Numbering<StationKey> places;
    std::vector<StationFigures> stations;
    for (const qint32 number : entries) {
        const LogEntry &entry = log.entry(number);
        if (!hasStation(entry)) {
            continue;
        }
        const auto place = static_cast<std::size_t>(places.of(stationOf(entry)));
        if (place == stations.size()) {
            stations.push_back({entry.piCode, {}, entry.transmitter, entry.country, {}});
        }
        StationFigures &station = stations[place];
        station.name = entry.rdsName.isEmpty() ? station.name : entry.rdsName;
        station.tally.add(entry.dateTime, kilometresOf(entry, inMiles).value_or(0));
    }
    return stations;
}

std::vector<Record> records(const Logbook &log, std::span<const qint32> entries, bool inMiles)
{
    // By list and station, its farthest reception; in the order of time of the stations.
    std::array<Numbering<StationKey>, leastPower + 1> places;
    std::array<std::vector<Record>, leastPower + 1> best;
    const auto offer = [&](const StationKey &station, const Record &record) {
        std::vector<Record> &list = best[record.list];
        const auto place = static_cast<std::size_t>(places[record.list].of(station));
        if (place == list.size()) {
            list.push_back(record);
        } else if (record.kilometres > list[place].kilometres) {
            list[place] = record;
        }
    };
    for (const qint32 number : entries) {
        const LogEntry &entry = log.entry(number);
        const auto kilometres = kilometresOf(entry, inMiles);
        if (!kilometres || !hasStation(entry)) {
            continue;
        }
        const auto power = positiveNumber(entry.power);
        const StationKey station = stationOf(entry);
        Record record {mapModeOf(entry.prop), 0, number, *kilometres, 0};
        record.powerPer1000 = power ? *power * 1000 / *kilometres : 0;
        offer(station, record);
        if (power) {
            record.list = leastPower;
            offer(station, record);
        }
    }
    std::vector<Record> result;
    for (std::vector<Record> &list : best) {
        const auto key = [&log](const Record &record) {
            const double figure = record.list == leastPower ? record.powerPer1000 : -record.kilometres;
            return std::tuple(figure, log.entry(record.entry).dateTime, record.entry);
        };
        const std::size_t ranked = std::min<std::size_t>(list.size(), recordsOfMode);
        std::ranges::partial_sort(list, list.begin() + static_cast<std::ptrdiff_t>(ranked), {}, key);
        list.resize(ranked);
        for (int rank = 1; Record record : list) {
            record.rank = rank++;
            result.push_back(record);
        }
    }
    return result;
}

std::vector<YearFigures> yearFigures(const Logbook &log, std::span<const qint32> entries)
{
    constexpr int mostBetween = 200;
    std::vector<YearFigures> years;
    qint64 firstDay = 0; // of the last of `years`, in days since 1970
    for (const qint32 number : entries) {
        const LogEntry &entry = log.entry(number);
        const int year = civil(entry.dateTime).year;
        if (years.empty() || years.back().year != year) {
            int next = years.empty() ? year : years.back().year + 1;
            next = year - next > mostBetween ? year : next;
            for (; next <= year; ++next) {
                years.push_back({});
                years.back().year = next;
            }
            firstDay = fromCivil({year, 1, 1}).value_or(DateTime()).seconds / secondsPerDay;
        }
        YearFigures &figures = years.back();
        const qint64 seconds = entry.dateTime.seconds - firstDay * secondsPerDay;
        const auto day = static_cast<int>(seconds / secondsPerDay);
        if (day < 0 || day >= static_cast<int>(figures.days.size())) {
            continue; // a moment beyond the calendar
        }
        qint32 &count = figures.days[static_cast<std::size_t>(day)];
        figures.daysWithReceptions += count == 0 ? 1 : 0;
        ++count;
        ++figures.count;
        if (mapModeOf(entry.prop) == esMode && figures.lastEs != day) {
            figures.firstEs = figures.firstEs < 0 ? day : figures.firstEs;
            figures.lastEs = day;
            ++figures.daysWithEs;
        }
    }
    return years;
}

std::optional<std::size_t> directionOf(const LogEntry &entry, SiteLegs &legs)
{
    const auto leg = legs.of(entry);
    return leg ? std::optional(static_cast<std::size_t>(azimuthOf(*leg) / directionStep)) : std::nullopt;
}

DirectionFigures directionFigures(const Logbook &log, std::span<const qint32> entries, SiteLegs &legs)
{
    DirectionFigures figures;
    for (const qint32 number : entries) {
        const LogEntry &entry = log.entry(number);
        if (const auto direction = directionOf(entry, legs)) {
            ++figures.counts[*direction][mapModeOf(entry.prop)];
        } else {
            ++figures.unknown;
        }
    }
    return figures;
}

} // namespace quillon
