#include "core/filterreader.h"
#include "core/manyentries.h"
#include "stats/collectionfilters.h"
#include "stats/collectionrules.h"
#include "stats/collectiontables.h"

#include <algorithm>
#include <numeric>

namespace quillon {

using namespace Qt::StringLiterals;
using Kind = FigureColumn::Kind;

namespace {

Figure dayOrNothing(const YearFigures &year, int day)
{
    return day < 0 ? Figure() : Figure(dayOfYear(year.year, day));
}

QString newsText(const Opening &opening)
{
    const auto count = [&](NoveltyMark mark) { return opening.news[static_cast<std::size_t>(mark)]; };
    return newThingsText({count(NoveltyMark::Pi), count(NoveltyMark::Site), count(NoveltyMark::Country), 0});
}

QString clock(DateTime moment)
{
    return formatted(moment, u"hh:nn", MonthNames());
}

// What a person calls the station: its name, or its PI code.
QString stationName(const LogEntry &entry)
{
    return (entry.rdsName.isEmpty() ? entry.piCode : entry.rdsName).simplified();
}

QString siteName(const LogEntry &entry)
{
    const QString site = entry.transmitter.simplified();
    const QString country = hasCountry(entry) ? entry.country.simplified() : QString();
    return site.isEmpty() || country.isEmpty() ? QString(site + country)
                                               : QString(site + " ("_L1 + country + u')');
}

QString wholeKilometres(double kilometres)
{
    return QString::number(qRound(kilometres)) + " km"_L1;
}

QString receptionLine(const LogEntry &entry, bool inMiles)
{
    const auto kilometres = kilometresOf(entry, inMiles);
    QStringList parts {clock(entry.dateTime), entry.freq.simplified(), entry.piCode.simplified(),
        entry.rdsName.simplified(), siteName(entry), kilometres ? wholeKilometres(*kilometres) : QString()};
    parts.removeAll({});
    return parts.join("  "_L1);
}

} // namespace

DateTime dayOfYear(int year, int day)
{
    const DateTime first = fromCivil({year, 1, 1}).value_or(DateTime());
    return {first.seconds + day * secondsPerDay};
}

QString dayFilter(DateTime day)
{
    return u"date:"_s + formatted(day, u"yyyy-mm-dd", MonthNames());
}

CollectionView calendarView(
    const CollectionSource & /*source*/, const std::shared_ptr<const std::vector<YearFigures>> &years)
{
    FigureTable table;
    table.columns = {{u"Year"_s, Kind::Number}, {u"Receptions"_s, Kind::Number}, {u"Days"_s, Kind::Number},
        {u"First Es"_s, Kind::Day}, {u"Last Es"_s, Kind::Day}, {u"Es season, days"_s, Kind::Number},
        {u"Days with Es"_s, Kind::Number}};
    table.rows = static_cast<int>(years->size());
    table.figure = [years](int row, int column) -> Figure {
        const YearFigures &year = (*years)[static_cast<std::size_t>(row)];
        switch (column) {
        case 0:
            return static_cast<double>(year.year);
        case 1:
            return static_cast<double>(year.count);
        case 2:
            return static_cast<double>(year.daysWithReceptions);
        case 3:
            return dayOrNothing(year, year.firstEs);
        case 4:
            return dayOrNothing(year, year.lastEs);
        case 5:
            return year.firstEs < 0 ? Figure() : Figure(year.lastEs - year.firstEs + 1.0);
        default:
            return static_cast<double>(year.daysWithEs);
        }
    };
    table.receptions = [years](int row, int column) -> CellReceptions {
        const YearFigures &year = (*years)[static_cast<std::size_t>(row)];
        constexpr int firstOfEs = 3;
        const int day = column == 3 ? year.firstEs : column == 4 ? year.lastEs : -1;
        const QString time = day < 0 ? u"date:"_s + QString::number(year.year).rightJustified(4, u'0')
                                     : dayFilter(dayOfYear(year.year, day));
        return {bothFilters(time, column >= firstOfEs ? modeFilter(esMode) : QString()), {}, {}};
    };
    return {std::move(table), {}};
}

CellReceptions directionReceptions(const CollectionSource &source, std::size_t direction, std::size_t mode)
{
    CellReceptions receptions;
    SiteLegs legs(source.sites, source.settings);
    for (const qint32 number : source.entries) {
        const LogEntry &entry = source.log.entry(number);
        if ((mode == allModes || mapModeOf(entry.prop) == mode) && directionOf(entry, legs) == direction) {
            receptions.entries.push_back(number);
        }
    }
    const auto from = static_cast<int>(direction) * directionStep;
    receptions.words = u"%1from %2° to %3°"_s.arg(mode == allModes ? QString() : mapModeName(mode) + u' ')
                           .arg(from)
                           .arg(from + directionStep - 1);
    return receptions;
}

CollectionView directionsView(
    const CollectionSource &source, const std::shared_ptr<const DirectionFigures> &figures)
{
    FigureTable table;
    table.columns = {{u"From °"_s, Kind::Number}, {u"To °"_s, Kind::Number}, {u"All"_s, Kind::Number}};
    std::vector<std::size_t> modes;
    for (std::size_t mode = 0; mode < mapModeCount; ++mode) {
        if (std::ranges::any_of(figures->counts, [mode](const auto &counts) { return counts[mode] > 0; })) {
            modes.push_back(mode);
            table.columns.push_back({mapModeName(mode), Kind::Number});
        }
    }
    constexpr int firstMode = 3;
    table.rows = static_cast<int>(directionCount);
    table.figure = [figures, modes](int row, int column) -> Figure {
        const auto &counts = figures->counts[static_cast<std::size_t>(row)];
        const int from = row * directionStep;
        if (column == 0) {
            return from + 0.0;
        }
        if (column == 1) {
            return from + directionStep - 1.0;
        }
        const qint32 count = column < firstMode ? std::accumulate(counts.begin(), counts.end(), 0)
                                                : counts[modes[static_cast<std::size_t>(column - firstMode)]];
        return count > 0 ? Figure(static_cast<double>(count)) : Figure();
    };
    const auto kept = std::make_shared<const CollectionSource>(source);
    table.receptions = [kept, modes](int row, int column) {
        return directionReceptions(*kept, static_cast<std::size_t>(row),
            column < firstMode ? allModes : modes[static_cast<std::size_t>(column - firstMode)]);
    };
    return {std::move(table), {}};
}

CollectionView openingsView(
    const CollectionSource &source, const std::shared_ptr<const std::vector<Opening>> &openings)
{
    FigureTable table;
    table.columns = {{u"Begin"_s, Kind::Moment}, {u"End"_s, Kind::Moment}, {u"Receptions"_s, Kind::Number},
        {u"Highest MUF"_s, Kind::Number}, {u"Farthest km"_s, Kind::Number}, {u"Farthest"_s}, {u"Countries"_s},
        {u"New"_s}};
    table.rows = static_cast<int>(openings->size());
    const Logbook &log = source.log;
    table.figure = [openings, &log](int row, int column) -> Figure {
        const Opening &opening = (*openings)[static_cast<std::size_t>(row)];
        const auto positive = [](double number) { return number > 0 ? Figure(number) : Figure(); };
        switch (column) {
        case 0:
            return log.entry(opening.entries.front()).dateTime;
        case 1:
            return log.entry(opening.entries.back()).dateTime;
        case 2:
            return static_cast<double>(opening.entries.size());
        case 3:
            return positive(opening.muf);
        case 4:
            return positive(opening.kilometres);
        case 5:
            return opening.farthest < 0 ? QString() : siteName(log.entry(opening.farthest));
        case 6:
            return opening.countries.join(u' ');
        default:
            return newsText(opening);
        }
    };
    table.receptions = [openings, &log](int row, int column) -> CellReceptions {
        const Opening &opening = (*openings)[static_cast<std::size_t>(row)];
        if ((column == 4 || column == 5) && opening.farthest >= 0) {
            const LogEntry &entry = log.entry(opening.farthest);
            return {bothFilters(stationFilter(entry), momentFilter(entry.dateTime)), {}, {}};
        }
        const QString span = spanFilter(
            log.entry(opening.entries.front()).dateTime, log.entry(opening.entries.back()).dateTime);
        return {bothFilters(modeFilter(esMode), span), {}, {}};
    };
    MonthCounts months {};
    for (const Opening &opening : *openings) {
        ++months[static_cast<std::size_t>(civil(log.entry(opening.entries.front()).dateTime).month)];
    }
    return {std::move(table), openings->empty() ? ChartTable() : monthTable(months, u"Openings by month"_s)};
}

QString openingReport(const CollectionSource &source, const Opening &opening)
{
    const LogEntry &first = source.log.entry(opening.entries.front());
    const LogEntry &last = source.log.entry(opening.entries.back());
    QStringList lines {u"Es opening %1 %2-%3 UTC"_s.arg(
        dateText(first.dateTime), clock(first.dateTime), clock(last.dateTime))};
    lines += receptionCount(static_cast<qsizetype>(opening.entries.size()))
        + (opening.countries.isEmpty() ? QString() : ": "_L1 + opening.countries.join(", "_L1));
    if (opening.farthest >= 0) {
        const LogEntry &farthest = source.log.entry(opening.farthest);
        QStringList parts {wholeKilometres(opening.kilometres), stationName(farthest), siteName(farthest)};
        parts.removeAll({});
        lines += u"Farthest: "_s + parts.join(", "_L1);
    }
    if (opening.muf > 0) {
        lines += u"Highest MUF: %1 MHz"_s.arg(opening.muf, 0, 'f', 1);
    }
    if (const QString news = newsText(opening); !news.isEmpty()) {
        lines += u"New here: "_s + news;
    }
    lines += QString();
    for (const qint32 number : opening.entries) {
        lines += receptionLine(source.log.entry(number), source.settings.inMiles());
    }
    return lines.join(u'\n') + u'\n';
}

} // namespace quillon
