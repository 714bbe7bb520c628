#include "stats/collectiontables.h"

#include "core/filterreader.h"
#include "core/manyentries.h"
#include "stats/collectionfilters.h"
#include "txdb/countrynames.h"

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;
using Kind = FigureColumn::Kind;

namespace {

// The four columns of each mode.
enum Group { Number, Farthest, First, Last };

QString modeCaption(std::size_t mode)
{
    return mode == allModes ? u"All"_s : mapModeName(mode);
}

Figure distanceOrNothing(double kilometres)
{
    return kilometres > 0 ? Figure(kilometres) : Figure();
}

Figure tallyFigure(const Tally &tally, int group)
{
    if (tally.count == 0) {
        return {};
    }
    switch (group) {
    case Number:
        return static_cast<double>(tally.count);
    case Farthest:
        return distanceOrNothing(tally.farthest);
    case First:
        return tally.first;
    default:
        return tally.last;
    }
}

// What a figure of a tally adds to the filter of its receptions.
QString tallyFilter(const Tally &tally, int group)
{
    if (tally.count == 0 || group == Number || (group == Farthest && tally.farthest <= 0)) {
        return {};
    }
    return group == Farthest ? kilometresFilter(tally.farthest)
                             : dayFilter(group == First ? tally.first : tally.last);
}

ChartTable countryChart(std::vector<CountryFigures> countries)
{
    constexpr std::size_t most = 25;
    std::ranges::stable_sort(countries, std::greater(),
        [](const CountryFigures &figures) { return figures.modes[allModes].count; });
    countries.resize(std::min(countries.size(), most));
    QStringList labels;
    for (const CountryFigures &figures : countries) {
        labels += figures.country.left(6);
    }
    ChartTable chart(u"Receptions by country"_s, labels, {u"Receptions"_s});
    for (int i = 0; i < labels.size(); ++i) {
        chart.setCount(i, 0, countries[static_cast<std::size_t>(i)].modes[allModes].count);
    }
    return chart;
}

// Bars by year; the latest ones when there are too many for a chart.
ChartTable yearChart(const QString &title, const std::vector<int> &years)
{
    constexpr int most = 30;
    if (years.empty()) {
        return {};
    }
    const auto [earliest, latest] = std::ranges::minmax(years);
    const int first = std::max(earliest, latest - most + 1);
    QStringList labels;
    for (int year = first; year <= latest; ++year) {
        labels += QString::number(year);
    }
    ChartTable chart(title, labels, {u"Stations"_s});
    for (const int year : years) {
        if (year >= first) {
            chart.setCount(year - first, 0, chart.count(year - first, 0) + 1);
        }
    }
    return chart;
}

} // namespace

QStringList countryGroups()
{
    return {u"Number of receptions"_s, u"Best distance, km"_s, u"First reception"_s, u"Last reception"_s};
}

CollectionView countriesView(const CollectionSource &source)
{
    const auto rows = std::make_shared<const std::vector<CountryFigures>>(
        countryFigures(source.log, source.entries, source.settings.inMiles()));
    // All modes together, then those that occur.
    std::vector<std::size_t> modes {allModes};
    for (std::size_t mode = 0; mode < mapModeCount; ++mode) {
        if (std::ranges::any_of(
                *rows, [mode](const CountryFigures &figures) { return figures.modes[mode].count > 0; })) {
            modes.push_back(mode);
        }
    }
    FigureTable table;
    table.columns = {{u"ITU"_s}, {u"Country"_s}};
    const std::array<Kind, 4> kinds {Kind::Number, Kind::Number, Kind::Day, Kind::Day};
    const std::array<QString, 4> suffixes {QString(), u" km"_s, u" first"_s, u" last"_s};
    for (const std::size_t mode : modes) {
        for (std::size_t group = 0; group < kinds.size(); ++group) {
            table.columns.push_back(
                {modeCaption(mode) + suffixes[group], kinds[group], static_cast<int>(group)});
        }
    }
    constexpr int texts = 2;
    constexpr int groups = 4;
    table.rows = static_cast<int>(rows->size());
    const auto tallyOf = [rows, modes](int row, int column) -> const Tally & {
        const auto mode = static_cast<std::size_t>((column - texts) / groups);
        return (*rows)[static_cast<std::size_t>(row)].modes[modes[mode]];
    };
    table.figure = [rows, tallyOf](int row, int column) -> Figure {
        const QString &country = (*rows)[static_cast<std::size_t>(row)].country;
        return column == 0 ? Figure(country)
            : column == 1  ? Figure(countryName(country))
                           : tallyFigure(tallyOf(row, column), (column - texts) % groups);
    };
    table.receptions = [rows, modes, tallyOf](int row, int column) -> CellReceptions {
        const QString country = filterTerm(LogField::Country, (*rows)[static_cast<std::size_t>(row)].country);
        if (column < texts) {
            return {country, {}, {}};
        }
        const auto mode = static_cast<std::size_t>((column - texts) / groups);
        const QString figure = tallyFilter(tallyOf(row, column), (column - texts) % groups);
        return {bothFilters(bothFilters(country, modeFilter(modes[mode])), figure), {}, {}};
    };
    return {std::move(table), countryChart(*rows)};
}

CollectionView stationsView(const CollectionSource &source)
{
    const auto rows = std::make_shared<const std::vector<StationFigures>>(
        stationFigures(source.log, source.entries, source.settings.inMiles()));
    FigureTable table;
    table.columns = {{u"PI Code"_s}, {u"Name"_s}, {u"Site"_s}, {u"Country"_s}, {u"Times"_s, Kind::Number},
        {u"First"_s, Kind::Day}, {u"Last"_s, Kind::Day}, {u"Best km"_s, Kind::Number}};
    constexpr int texts = 4;
    // From the columns to the figures of a tally.
    static constexpr std::array<int, 4> groups {Number, First, Last, Farthest};
    table.rows = static_cast<int>(rows->size());
    table.figure = [rows](int row, int column) -> Figure {
        const StationFigures &station = (*rows)[static_cast<std::size_t>(row)];
        const std::array<const QString *, texts> cells {
            &station.piCode, &station.name, &station.site, &station.country};
        return column < texts ? Figure(*cells[static_cast<std::size_t>(column)])
                              : tallyFigure(station.tally, groups[static_cast<std::size_t>(column - texts)]);
    };
    table.receptions = [rows](int row, int column) -> CellReceptions {
        const StationFigures &station = (*rows)[static_cast<std::size_t>(row)];
        LogEntry entry;
        entry.piCode = station.piCode;
        entry.rdsName = station.name;
        entry.transmitter = station.site;
        entry.country = station.country;
        const QString figure = column < texts
            ? QString()
            : tallyFilter(station.tally, groups[static_cast<std::size_t>(column - texts)]);
        return {bothFilters(stationFilter(entry), figure), {}, {}};
    };
    std::vector<int> years;
    years.reserve(rows->size());
    for (const StationFigures &station : *rows) {
        years.push_back(civil(station.tally.first).year);
    }
    return {std::move(table), yearChart(u"Stations by the year of their first reception"_s, years)};
}

CollectionView recordsView(const CollectionSource &source)
{
    const auto rows = std::make_shared<const std::vector<Record>>(
        records(source.log, source.entries, source.settings.inMiles()));
    FigureTable table;
    table.columns = {{u"Record"_s}, {u"Rank"_s, Kind::Number}, {u"km"_s, Kind::Number},
        {u"Date/Time"_s, Kind::Moment}, {u"PI Code"_s}, {u"Name"_s}, {u"Site"_s}, {u"Country"_s}, {u"Prop"_s},
        {u"kW"_s}, {u"kW per 1,000 km"_s, Kind::Number, -1, 4}};
    table.rows = static_cast<int>(rows->size());
    const Logbook &log = source.log;
    table.figure = [rows, &log](int row, int column) -> Figure {
        const Record &record = (*rows)[static_cast<std::size_t>(row)];
        const LogEntry &entry = log.entry(record.entry);
        const bool isPower = record.list == leastPower;
        const std::array<Figure, 11> cells {
            isPower ? u"Least power"_s : u"Farthest "_s + mapModeName(record.list),
            static_cast<double>(record.rank), record.kilometres, entry.dateTime, entry.piCode, entry.rdsName,
            entry.transmitter, entry.country, entry.prop, entry.power,
            distanceOrNothing(record.powerPer1000)};
        return cells[static_cast<std::size_t>(column)];
    };
    table.receptions = [rows, &log](int row, int column) -> CellReceptions {
        const Record &record = (*rows)[static_cast<std::size_t>(row)];
        const LogEntry &entry = log.entry(record.entry);
        const QString list = record.list == leastPower ? u"kw>0 km>0"_s : modeFilter(record.list);
        return {column == 0 ? list : bothFilters(stationFilter(entry), momentFilter(entry.dateTime)), {}, {}};
    };
    QStringList labels;
    std::vector<int> farthest;
    for (const Record &record : *rows) {
        if (record.rank == 1 && record.list != leastPower) {
            labels += mapModeName(record.list);
            farthest.push_back(static_cast<int>(record.kilometres));
        }
    }
    ChartTable chart(u"Farthest reception of each mode"_s, labels, {u"km"_s});
    for (int i = 0; i < labels.size(); ++i) {
        chart.setCount(i, 0, farthest[static_cast<std::size_t>(i)]);
    }
    return {std::move(table), std::move(chart)};
}

} // namespace quillon
