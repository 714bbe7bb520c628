#include "geo/leg.h"
#include "geo/muf.h"
#include "platform/runtimeerror.h"
#include "stats/maplog.h"
#include "support/changedlog.h"

#include <QTest>

#include <cmath>
#include <numeric>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

DateTime at(int day, int hour)
{
    return *fromCivil({2026, 6, day, hour, 15, 0});
}

Settings london()
{
    Settings settings;
    setDefaults(settings);
    settings.homeLatitude = u"51.5"_s;
    settings.homeLongitude = u"-0.1"_s;
    return settings;
}

TransmitterList sites()
{
    TransmitterList list;
    list.add({u"Torrespana"_s, u"Spain"_s, u"40.42"_s, u"-3.66"_s, {}});
    list.add({u"Brocken"_s, u"Germany"_s, u"51,8"_s, u"10,62"_s, {}});
    list.add({u"Nowhere"_s, u"Spain"_s, u"north"_s, u"-3"_s, {}});
    list.add({u"Torrespana"_s, u"Chile"_s, u"-33.4"_s, u"-70.6"_s, {}});
    return list;
}

LogEntry entry(DateTime time, const QString &prop, const QString &site, const QString &country)
{
    LogEntry result;
    result.piCode = u"E201"_s;
    result.dateTime = time;
    result.prop = prop;
    result.freq = u"98.5"_s;
    result.transmitter = site;
    result.country = country;
    return result;
}

Logbook log()
{
    Logbook log;
    log.AddEntry(entry(at(4, 17), u"Es"_s, u"Torrespana"_s, u"Spain"_s));
    log.AddEntry(entry(at(3, 18), u"Es"_s, u"Torrespana"_s, u"Spain"_s));
    log.AddEntry(entry(at(5, 6), u"Tropo"_s, u"Brocken"_s, u"Germany"_s));
    log.AddEntry(entry(at(5, 7), u"odd"_s, u"Brocken"_s, u"Germany"_s));
    log.AddEntry(entry(at(5, 8), u"Es"_s, u"Nowhere"_s, u"Spain"_s));
    log.AddEntry(entry(at(5, 8), u"Es"_s, u"Unheard Of"_s, u"Spain"_s));
    log.AddEntry(entry(at(5, 9), u"Es"_s, u"Unheard Of"_s, u"Spain"_s));
    log.AddEntry(entry(at(5, 9), u"Es"_s, {}, u"Spain"_s));
    log.AddEntry(entry(at(5, 9), u"Es"_s, u"Torrespana"_s, u"Spain"_s));
    test::changeEntry(log, 8, [](LogEntry &deleted) { deleted.piCode = deletedPiCode.toString(); });
    return log;
}

std::vector<qint32> all(const Logbook &log)
{
    std::vector<qint32> shown(static_cast<std::size_t>(log.count()));
    std::iota(shown.begin(), shown.end(), 0);
    return shown;
}

} // namespace

class TestMapLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void gathersReceptionsBySiteAndMode()
    {
        const Logbook book = log();
        const MapData data = mapData(book, sites(), all(book), london(), at(5, 12));
        QCOMPARE(data.home, (GeoPosition {51.5, -0.1}));
        QCOMPARE(data.sites.size(), std::size_t(2));
        const MapSite &spain = data.sites[0];
        QCOMPARE(spain.name, u"Torrespana"_s);
        QCOMPARE(spain.country, u"Spain"_s);
        QCOMPARE(spain.place, (GeoPosition {40.42, -3.66}));
        // The latest is the first in the log.
        QCOMPARE(spain.modes[esMode], (ModeReceptions {2, 0, at(4, 17), false}));
        const MapSite &germany = data.sites[1];
        QCOMPARE(germany.place, (GeoPosition {51.8, 10.62}));
        QCOMPARE(germany.modes[mapModeOf(u"Tropo")], (ModeReceptions {1, 2, at(5, 6), true}));
        QCOMPARE(germany.modes[otherMode], (ModeReceptions {1, 3, at(5, 7), true}));
        QCOMPARE(germany.modes[esMode], ModeReceptions {});
    }

    void whatHasNoPlaceIsTold()
    {
        const Logbook book = log();
        const MapData data = mapData(book, sites(), all(book), london(), at(5, 12));
        QCOMPARE(data.unplaced, (std::vector<qint32> {4, 5, 6, 7}));
        // The entry without a transmitter names no site.
        QCOMPARE(data.sitesWithoutPlace, 2);
    }

    void onlyWhatIsShownCounts()
    {
        const Logbook book = log();
        const MapData data = mapData(book, sites(), std::vector<qint32> {3}, london(), at(5, 12));
        QCOMPARE(data.sites.size(), std::size_t(1));
        QCOMPARE(data.sites[0].modes[otherMode].count, 1);
        QVERIFY(data.unplaced.empty());
        QVERIFY(mapData(book, sites(), {}, london(), at(5, 12)).sites.empty());
    }

    void theHighestMufOfEachHour()
    {
        Logbook book = log();
        LogEntry higher = entry(at(9, 17), u"Es"_s, u"Torrespana"_s, u"Spain"_s);
        higher.freq = u"104,3"_s;
        book.AddEntry(higher);
        higher.freq = u"junk"_s;
        book.AddEntry(higher);
        const MapData data = mapData(book, sites(), all(book), london(), at(5, 12));
        const double kilometres = legBetween(*data.home, data.sites[0].place).kilometres;
        QCOMPARE(data.highestMuf[17], *esMuf(kilometres, 104.3));
        QCOMPARE(data.highestMuf[18], *esMuf(kilometres, 98.5));
        // Tropo, and Es without a place, have none.
        QCOMPARE(data.highestMuf[6], 0.0);
        QCOMPARE(data.highestMuf[8], 0.0);
    }

    void aPathOfSeveralHopsHasNoMuf()
    {
        Logbook book;
        book.AddEntry(entry(at(4, 17), u"Es"_s, u"Torrespana"_s, u"Chile"_s));
        const MapData data = mapData(book, sites(), all(book), london(), at(5, 12));
        QCOMPARE(data.sites.size(), std::size_t(1));
        QCOMPARE(data.highestMuf[17], 0.0);
    }

    void homeThatIsNotSetIsNone_data()
    {
        QTest::addColumn<QString>("latitude");
        QTest::addColumn<QString>("longitude");
        QTest::addColumn<bool>("set");
        QTest::newRow("set") << u"51.5"_s << u"-0.1"_s << true;
        QTest::newRow("with a comma") << u"51,5"_s << u"-0,1"_s << true;
        QTest::newRow("not set") << u"0"_s << u"0"_s << false;
        QTest::newRow("half set") << u"51.5"_s << u"0"_s << false;
        QTest::newRow("on Greenwich") << u"51.5"_s << u"0.0"_s << true;
        QTest::newRow("words") << u"here"_s << u"there"_s << false;
        QTest::newRow("off the globe") << u"91"_s << u"10"_s << false;
    }

    void homeThatIsNotSetIsNone()
    {
        QFETCH(QString, latitude);
        QFETCH(QString, longitude);
        QFETCH(bool, set);
        Settings settings = london();
        settings.homeLatitude = latitude;
        settings.homeLongitude = longitude;
        const Logbook book = log();
        const MapData data = mapData(book, sites(), all(book), settings, at(5, 12));
        QCOMPARE(data.home.has_value(), set);
        QCOMPARE(data.sites.size(), std::size_t(2));
    }

    void unitFollowsTheSettings()
    {
        Settings settings = london();
        settings.asMiles = u"FALSE"_s;
        const Logbook book;
        QCOMPARE(mapData(book, {}, {}, settings, at(5, 12)).unit, DistanceUnit::Kilometres);
        settings.asMiles = u"TRUE"_s;
        QCOMPARE(mapData(book, {}, {}, settings, at(5, 12)).unit, DistanceUnit::Miles);
    }

    void numbersBeyondTheLogAreRefused()
    {
        const Logbook book = log();
        const std::vector<qint32> beyond {40000};
        QVERIFY_THROWS_EXCEPTION(RuntimeError, (void)mapData(book, sites(), beyond, london(), at(5, 12)));
    }

    void modesHaveNumbersAndNames()
    {
        QCOMPARE(mapModeName(esMode), u"Es"_s);
        QCOMPARE(mapModeName(otherMode), u"Other"_s);
        for (std::size_t mode = 0; mode < otherMode; ++mode) {
            QCOMPARE(mapModeOf(mapModeName(mode)), mode);
        }
        QCOMPARE(mapModeOf(u""), otherMode);
        QCOMPARE(mapModeOf(u"ES"), otherMode);
    }
};

QTEST_GUILESS_MAIN(TestMapLog)
#include "tst_maplog.moc"
