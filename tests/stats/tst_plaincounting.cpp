#include "stats/collection.h"
#include "stats/randomlog.h"
#include "support/testfiles.h"
#include "txdb/derivedcells.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

#include <numeric>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

QString modeName(std::size_t mode)
{
    return mode == allModes ? u"All"_s : mapModeName(mode);
}

QJsonObject json(const Tally &tally)
{
    return {{u"count"_s, tally.count}, {u"farthest"_s, tally.farthest}, {u"first"_s, tally.first.seconds},
        {u"last"_s, tally.last.seconds}};
}

/// A log, and what the program makes of those of its entries that are shown.
struct Dump
{
    explicit Dump(quint32 seed)
    {
        RandomEntries random(seed);
        settings.homeLatitude = u"52.1"_s;
        settings.homeLongitude = u"-1.2"_s;
        settings.asMiles = seed % 2 == 0 ? u"FALSE"_s : u"TRUE"_s;
        sites.add({u"Brocken"_s, u"D"_s, u"51.8"_s, u"10.6"_s, {}});
        sites.add({u"Málaga"_s, u"E"_s, u"36.7"_s, u"-4.4"_s, {}});
        sites.add({u"Málaga"_s, u"EST"_s, u"58.6"_s, u"25.0"_s, {}});
        sites.add({u"Málaga"_s, u"D"_s, u"52.1"_s, u"-1.2"_s, {}});
        for (int i = random.below(400); i >= 0; --i) {
            log.AddEntry(random.next());
        }
        for (qint32 i = 0; i < log.count(); ++i) {
            if (random.below(5) > 0) {
                shown.push_back(i);
            }
        }
        novelty.count(log);
    }

    [[nodiscard]] QJsonArray receptions() const
    {
        const auto home = homePosition(settings);
        QJsonArray result;
        for (qint32 i = 0; i < log.count(); ++i) {
            const LogEntry &entry = log.entry(i);
            const bool isShown = std::ranges::find(shown, i) != shown.end();
            result.append(QJsonObject {{u"number"_s, i}, {u"shown"_s, isShown}, {u"pi"_s, entry.piCode},
                {u"seconds"_s, entry.dateTime.seconds}, {u"prop"_s, entry.prop}, {u"name"_s, entry.rdsName},
                {u"site"_s, entry.transmitter}, {u"country"_s, entry.country}, {u"power"_s, entry.power},
                {u"dist"_s, entry.dist}, {u"azimuth"_s, azimuthCell(entry, sites, home)},
                {u"muf"_s, mufCell(entry, sites, home)}});
        }
        return result;
    }

    [[nodiscard]] QJsonObject counted() const
    {
        const std::vector<qint32> entries = countedEntries(log, shown);
        QJsonArray marks;
        for (qint32 i = 0; i < log.count(); ++i) {
            QJsonArray one;
            for (std::size_t mark = 0; mark < noveltyMarkCount; ++mark) {
                one.append(novelty.marks(i).test(mark));
            }
            marks.append(one);
        }
        return {{u"countries"_s, countriesOf(entries)}, {u"stations"_s, stationsOf(entries)},
            {u"records"_s, recordsOf(entries)}, {u"years"_s, yearsOf(entries)},
            {u"directions"_s, directionsOf(entries)}, {u"openings"_s, openingsOf(entries)},
            {u"marks"_s, marks}};
    }

    [[nodiscard]] QJsonArray countriesOf(const std::vector<qint32> &entries) const
    {
        QJsonArray result;
        for (const CountryFigures &figures : countryFigures(log, entries, settings.inMiles())) {
            QJsonObject row {{u"country"_s, figures.country}};
            for (std::size_t mode = 0; mode <= allModes; ++mode) {
                row.insert(modeName(mode), json(figures.modes[mode]));
            }
            result.append(row);
        }
        return result;
    }

    [[nodiscard]] QJsonArray stationsOf(const std::vector<qint32> &entries) const
    {
        QJsonArray result;
        for (const StationFigures &station : stationFigures(log, entries, settings.inMiles())) {
            QJsonObject row = json(station.tally);
            row.insert(u"pi"_s, station.piCode);
            row.insert(u"name"_s, station.name);
            row.insert(u"site"_s, station.site);
            row.insert(u"country"_s, station.country);
            result.append(row);
        }
        return result;
    }

    [[nodiscard]] QJsonArray recordsOf(const std::vector<qint32> &entries) const
    {
        QJsonArray result;
        for (const Record &record : records(log, entries, settings.inMiles())) {
            result.append(
                QJsonObject {{u"list"_s, record.list == leastPower ? u"power"_s : mapModeName(record.list)},
                    {u"rank"_s, record.rank}, {u"entry"_s, record.entry}, {u"km"_s, record.kilometres}});
        }
        return result;
    }

    [[nodiscard]] QJsonArray yearsOf(const std::vector<qint32> &entries) const
    {
        QJsonArray result;
        for (const YearFigures &figures : yearFigures(log, entries)) {
            QJsonArray days;
            for (const qint32 day : figures.days) {
                days.append(day);
            }
            result.append(QJsonObject {{u"year"_s, figures.year}, {u"count"_s, figures.count},
                {u"days"_s, figures.daysWithReceptions}, {u"daysWithEs"_s, figures.daysWithEs},
                {u"firstEs"_s, figures.firstEs}, {u"lastEs"_s, figures.lastEs}, {u"byDay"_s, days}});
        }
        return result;
    }

    [[nodiscard]] QJsonObject directionsOf(const std::vector<qint32> &entries) const
    {
        SiteLegs legs(sites, settings);
        const DirectionFigures figures = directionFigures(log, entries, legs);
        QJsonObject result {{u"unknown"_s, figures.unknown}};
        for (std::size_t step = 0; step < directionCount; ++step) {
            for (std::size_t mode = 0; mode < mapModeCount; ++mode) {
                result.insert(
                    QString::number(step * 10) + u' ' + mapModeName(mode), figures.counts[step][mode]);
            }
        }
        return result;
    }

    [[nodiscard]] QJsonArray openingsOf(const std::vector<qint32> &entries) const
    {
        SiteLegs legs(sites, settings);
        QJsonArray result;
        for (const Opening &opening : openings(log, entries, settings.inMiles(), legs, novelty)) {
            QJsonArray numbers;
            for (const qint32 number : opening.entries) {
                numbers.append(number);
            }
            QJsonArray news;
            for (const int count : opening.news) {
                news.append(count);
            }
            result.append(QJsonObject {{u"entries"_s, numbers},
                {u"muf"_s, opening.muf > 0 ? QString::number(opening.muf, 'f', 1) : QString()},
                {u"farthest"_s, opening.farthest},
                {u"countries"_s, QJsonArray::fromStringList(opening.countries)}, {u"news"_s, news}});
        }
        return result;
    }

    Logbook log;
    TransmitterList sites;
    Settings settings;
    Novelty novelty;
    std::vector<qint32> shown;
};

} // namespace

/// The collection, held to a second counting of the same logs in another language.
class TestPlainCounting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theProgramCountsAsThePlainCountingDoes_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 12; ++seed) {
            QTest::addRow("log %u", seed) << seed;
        }
    }

    void theProgramCountsAsThePlainCountingDoes()
    {
        QFETCH(quint32, seed);
        const Dump dump(seed);
        const TestDirectory directory;
        const QJsonObject all {{u"inMiles"_s, dump.settings.inMiles()}, {u"log"_s, dump.receptions()},
            {u"counted"_s, dump.counted()}};
        directory.write(u"dump.json"_s, QJsonDocument(all).toJson());
        QCOMPARE(plainCounting(directory), QByteArray("0\n"));
    }

    void thePlainCountingSeesWhatIsWrong()
    {
        const Dump dump(3);
        QJsonObject counted = dump.counted();
        QJsonArray stations = counted.value(u"stations"_s).toArray();
        stations.removeLast();
        counted.insert(u"stations"_s, stations);
        const TestDirectory directory;
        const QJsonObject all {
            {u"inMiles"_s, dump.settings.inMiles()}, {u"log"_s, dump.receptions()}, {u"counted"_s, counted}};
        directory.write(u"dump.json"_s, QJsonDocument(all).toJson());
        QVERIFY(plainCounting(directory).startsWith("1\nstations: "));
    }

private:
    // Its exit code and what it printed.
    static QByteArray plainCounting(const TestDirectory &directory)
    {
        QProcess python;
        python.start(QStringLiteral(QUILLON_PYTHON),
            {QStringLiteral(QUILLON_PLAIN_COUNTING), directory.file(u"dump.json"_s)});
        if (!python.waitForFinished()) {
            return "it does not end";
        }
        return QByteArray::number(python.exitCode()) + '\n' + python.readAllStandardOutput()
            + python.readAllStandardError();
    }
};

QTEST_GUILESS_MAIN(TestPlainCounting)
#include "tst_plaincounting.moc"
