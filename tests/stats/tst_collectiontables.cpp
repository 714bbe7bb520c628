#include "core/filterreader.h"
#include "core/logfilter.h"
#include "stats/collectiontables.h"
#include "stats/randomlog.h"

#include <QLocale>
#include <QTest>

#include <numeric>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

LogEntry entryOf(const QString &pi, const QString &name, const QString &site, const QString &country,
    const QString &dist, const CivilTime &time)
{
    LogEntry entry;
    entry.piCode = pi;
    entry.rdsName = name;
    entry.transmitter = site;
    entry.country = country;
    entry.prop = u"Es"_s;
    entry.freq = u"95.3"_s;
    entry.dist = dist;
    entry.dateTime = *fromCivil(time);
    return entry;
}

/// A log with its home, and all of it as a collection.
struct Collected
{
    void add(const LogEntry &entry) { log.AddEntry(entry); }

    const CollectionSource &all()
    {
        settings.homeLatitude = u"52.1"_s;
        settings.homeLongitude = u"-1.2"_s;
        std::vector<qint32> entries(static_cast<std::size_t>(log.count()));
        std::iota(entries.begin(), entries.end(), 0);
        novelty.count(log);
        source = std::make_unique<CollectionSource>(
            CollectionSource {log, sites, settings, novelty, countedEntries(log, entries)});
        return *source;
    }

    /// How many of the counted entries the filter of a cell shows.
    [[nodiscard]] qsizetype shownBy(const CellReceptions &receptions) const
    {
        if (!receptions.entries.empty()) {
            return static_cast<qsizetype>(receptions.entries.size());
        }
        const FilterReading reading = readFilter(receptions.filter, MonthNames::of(QLocale::c()));
        if (!reading.problem.isEmpty()) {
            qWarning("%s", qPrintable(reading.problem));
            return -1;
        }
        LogFilter filter;
        filter.terms = reading.terms;
        LogFilterMatcher shows(filter, settings.inMiles());
        return std::ranges::count_if(
            source->entries, [&](qint32 number) { return shows(log.entry(number)); });
    }

    Logbook log;
    TransmitterList sites;
    Settings settings;
    Novelty novelty;
    std::unique_ptr<CollectionSource> source;
};

int columnOf(const FigureTable &table, const QString &caption)
{
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (table.columns[i].caption == caption) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

QStringList rowTexts(const FigureTable &table, int row)
{
    QStringList texts;
    for (std::size_t column = 0; column < table.columns.size(); ++column) {
        texts += figureText(table.columns[column], table.figure(row, static_cast<int>(column)));
    }
    return texts;
}

} // namespace

/// The tables of the collection, and what each of their cells shows of the log.
class TestCollectionTables : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theChartOfYearsHasTheLastThirty()
    {
        Collected collected;
        for (const int year : {1950, 1980, 1981, 2009, 2010}) {
            collected.add(entryOf(QString::number(0xD000 + year, 16).toUpper(), {}, u"Brocken"_s, u"D"_s,
                u"200"_s, {year, 6, 1}));
        }
        const ChartTable chart = stationsView(collected.all()).chart;
        QCOMPARE(chart.categories().size(), 30);
        QCOMPARE(chart.categories().first(), u"1981"_s);
        QCOMPARE(chart.categories().last(), u"2010"_s);
        int all = 0;
        for (int year = 0; year < 30; ++year) {
            all += chart.count(year, 0);
        }
        QCOMPARE(all, 3);
        QCOMPARE(chart.count(0, 0), 1);
        QCOMPARE(chart.count(28, 0), 1);
        QCOMPARE(chart.count(29, 0), 1);
    }

    void eachCellFiltersToWhatItCounts_data()
    {
        QTest::addColumn<QString>("miles");
        QTest::newRow("km") << u"FALSE"_s;
        QTest::newRow("miles") << u"TRUE"_s;
    }

    void eachCellFiltersToWhatItCounts()
    {
        QFETCH(QString, miles);
        Collected collected;
        collected.settings.asMiles = miles;
        collected.sites.add({u"Brocken"_s, u"D"_s, u"51.8"_s, u"10.6"_s, {}});
        RandomEntries random(5);
        for (int i = 0; i < 600; ++i) {
            LogEntry entry = random.next();
            // What differs only in its case is one thing to a filter, and no filter can ask for a quote.
            entry.prop = entry.prop == u"es" ? u"Tropo"_s : entry.prop;
            entry.rdsName.remove(u'"');
            collected.add(entry);
        }
        const CollectionSource &source = collected.all();
        const auto years =
            std::make_shared<const std::vector<YearFigures>>(yearFigures(source.log, source.entries));
        SiteLegs legs(source.sites, source.settings);
        const auto directions =
            std::make_shared<const DirectionFigures>(directionFigures(source.log, source.entries, legs));
        const auto found = std::make_shared<const std::vector<Opening>>(
            openings(source.log, source.entries, source.settings.inMiles(), legs, source.novelty));
        QVERIFY(!found->empty());
        const QStringList counts {
            u"All"_s, u"Es"_s, u"Tropo"_s, u"MS"_s, u"Other"_s, u"Times"_s, u"Receptions"_s};
        int compared = 0;
        for (const FigureTable &table : {countriesView(source).table, stationsView(source).table,
                 recordsView(source).table, calendarView(source, years).table,
                 directionsView(source, directions).table, openingsView(source, found).table}) {
            for (int row = 0; row < table.rows; ++row) {
                for (std::size_t at = 0; at < table.columns.size(); ++at) {
                    const auto column = static_cast<int>(at);
                    const Figure figure = table.figure(row, column);
                    const bool isCount = counts.contains(table.columns[at].caption);
                    const double *number = std::get_if<double>(&figure);
                    if (std::holds_alternative<std::monostate>(figure) || (number && *number == 0)) {
                        continue;
                    }
                    const CellReceptions receptions = table.receptions(row, column);
                    const qsizetype shown = collected.shownBy(receptions);
                    const QString cell = table.columns[at].caption + u" "_s + receptions.filter + u" "_s
                        + rowTexts(table, row).join(u'|');
                    if (isCount) {
                        QVERIFY2(shown == static_cast<qsizetype>(*number),
                            qPrintable(cell + u" shows "_s + QString::number(shown)));
                        ++compared;
                    } else {
                        QVERIFY2(shown > 0, qPrintable(cell));
                    }
                }
            }
        }
        QVERIFY(compared > 100);
    }

    void aCountryHasItsNameAndItsFiguresInEachMode()
    {
        Collected collected;
        collected.add(entryOf(u"E211"_s, u"RNE_1"_s, u"Granada"_s, u"E"_s, u"1700"_s, {2024, 6, 1}));
        collected.add(entryOf(u"E211"_s, u"RNE_1"_s, u"Granada"_s, u"E"_s, u"1800.5"_s, {2025, 6, 2}));
        const FigureTable table = countriesView(collected.all()).table;
        QCOMPARE(table.rows, 1);
        QCOMPARE(rowTexts(table, 0),
            QStringList({u"E"_s, u"Spain"_s, u"2"_s, u"1800.5"_s, u"01/06/2024"_s, u"02/06/2025"_s, u"2"_s,
                u"1800.5"_s, u"01/06/2024"_s, u"02/06/2025"_s}));
        QCOMPARE(table.receptions(0, 0).filter, u"itu==E"_s);
        QCOMPARE(table.receptions(0, columnOf(table, u"Es km"_s)).filter, u"itu==E prop==Es km:1800.5"_s);
        QCOMPARE(
            table.receptions(0, columnOf(table, u"Es first"_s)).filter, u"itu==E prop==Es date:2024-06-01"_s);
    }

    void aStationIsAskedForByAllThatItIs()
    {
        Collected collected;
        collected.add(entryOf(u"E211"_s, u"RNE_1"_s, u"Bad Marienberg"_s, u"D"_s, {}, {2024, 6, 1}));
        collected.add(entryOf({}, u"KISS"_s, {}, u"TBD"_s, {}, {2024, 6, 1}));
        const FigureTable table = stationsView(collected.all()).table;
        QCOMPARE(table.receptions(0, 0).filter, u"pi==E211 site==\"Bad Marienberg\" itu==D"_s);
        QCOMPARE(table.receptions(1, 0).filter, u"pi== ps==KISS site== itu==TBD"_s);
    }

    void anOpeningIsReported()
    {
        Collected collected;
        collected.sites.add({u"Granada"_s, u"E"_s, u"37.2"_s, u"-3.6"_s, {}});
        const auto time = [](int hour, int minute) { return CivilTime {2025, 7, 12, hour, minute, 30}; };
        collected.add(entryOf(u"E211"_s, u"RNE_1"_s, u"Granada"_s, u"E"_s, u"1663.4"_s, time(16, 0)));
        collected.add(entryOf(u"E4B3"_s, u"GAZTEA"_s, {}, u"TBD"_s, {}, time(16, 59)));
        collected.add(entryOf({}, u"ONDA\nCERO"_s, u"Jaén"_s, u"E"_s, u"1600"_s, time(17, 30)));
        // An hour later it is another one, of one reception: none.
        collected.add(entryOf(u"E211"_s, u"RNE_1"_s, u"Granada"_s, u"E"_s, u"1663.4"_s, time(18, 30)));
        const CollectionSource &source = collected.all();
        SiteLegs legs(source.sites, source.settings);
        const std::vector<Opening> found = openings(source.log, source.entries, false, legs, source.novelty);
        QCOMPARE(found.size(), std::size_t(1));
        const QString muf = QString::number(found[0].muf, 'f', 1);
        QCOMPARE(openingReport(source, found[0]),
            u"Es opening 12/07/2025 16:00-17:30 UTC\n"
            "3 receptions: E\n"
            "Farthest: 1663 km, RNE_1, Granada (E)\n"
            "Highest MUF: "_s
                + muf
                + u" MHz\n"
                  "New here: 2 new PI codes, 2 new sites, 1 new country\n"
                  "\n"
                  "16:00  95.3  E211  RNE_1  Granada (E)  1663 km\n"
                  "16:59  95.3  E4B3  GAZTEA\n"
                  "17:30  95.3  ONDA CERO  Jaén (E)  1600 km\n"_s);
    }

    void aTableIsSavedForSpreadsheets()
    {
        Collected collected;
        collected.add(entryOf(u"E211"_s, u"=1+1"_s, u"two, \"three\""_s, u"E"_s, u"1700.25"_s, {2024, 6, 1}));
        collected.add(entryOf(u"E212"_s, u"Málaga"_s, {}, {}, {}, {2024, 6, 2}));
        const FigureTable table = stationsView(collected.all()).table;
        QCOMPARE(figureCsv(table, {1, 0}),
            QByteArray("\xef\xbb\xbf\"PI Code\",\"Name\",\"Site\",\"Country\",\"Times\",\"First\",\"Last\","
                       "\"Best km\"\r\n"
                       "\"E212\",\"Málaga\",\"\",\"\",1,2024-06-02,2024-06-02,\r\n"
                       "\"E211\",\"'=1+1\",\"two, \"\"three\"\"\",\"E\",1,2024-06-01,2024-06-01,1700.2\r\n"));
    }

    void anEmptyLogAddsUpToNothing()
    {
        Collected collected;
        const CollectionSource &source = collected.all();
        QCOMPARE(countriesView(source).table.rows, 0);
        QVERIFY(countriesView(source).chart.isEmpty());
        QCOMPARE(stationsView(source).table.rows, 0);
        QVERIFY(stationsView(source).chart.isEmpty());
        QCOMPARE(recordsView(source).table.rows, 0);
        QVERIFY(yearFigures(source.log, source.entries).empty());
    }
};

QTEST_GUILESS_MAIN(TestCollectionTables)
#include "tst_collectiontables.moc"
