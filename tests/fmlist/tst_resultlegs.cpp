#include "fmlist/resultlegs.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

const GeoPosition home {51.5, -0.1};

SearchResult result(const QString &frequency, const QString &latitude, const QString &longitude)
{
    return {frequency, u"E201"_s, u"RNE"_s, u"E"_s, u"There"_s, u"10"_s, latitude, longitude, u"1"_s};
}

// 3 km, 300 km, 1264.5 km, 1265 km on another frequency, 9,400 km away.
QList<SearchResult> stations(const QString &frequency)
{
    return {result(frequency, u"51.5"_s, u"-0.15"_s), result(frequency, u"48.85"_s, u"2.35"_s),
        result(frequency, u"40,4"_s, u"-3,7"_s), result(u"99.9"_s, u"40.4"_s, u"-3.69"_s),
        result(frequency, u"-34.6"_s, u"-38.4"_s), result(frequency, u"-1"_s, u"-1"_s)};
}

} // namespace

class TestResultLegs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachWayIsThatOfTheLog()
    {
        const auto legs = legsOf(stations(u"87.6"_s), home);
        QCOMPARE(legs.size(), 6);
        QCOMPARE(legs[2], legBetween(home, {40.4, -3.7}));
        QCOMPARE(distanceFigure(legs[2]->kilometres, DistanceUnit::Kilometres), u"1264.5"_s);
        // What is no number stands as -1: two of them are no place.
        QVERIFY(!legs[5]);
        const auto without = legsOf(stations(u"87.6"_s), std::nullopt);
        QCOMPARE(without.size(), 6);
        QVERIFY(!without[2]);
        QVERIFY(legsOf({}, home).isEmpty());
    }

    void aDegreeSouthOrWestIsAPlace()
    {
        const auto legs =
            legsOf({result(u"87.6"_s, u"-1"_s, u"37.5"_s), result(u"87.6"_s, u"47.5"_s, u"-1"_s)}, home);
        QCOMPARE(legs[0], legBetween(home, {-1, 37.5}));
        QCOMPARE(legs[1], legBetween(home, {47.5, -1}));
    }

    void theNearestPlausible_data()
    {
        QTest::addColumn<QString>("heard");
        QTest::addColumn<QString>("mode");
        QTest::addColumn<int>("nearest");
        QTest::newRow("Tropo") << u"87.6"_s << u"Tropo"_s << 0;
        QTest::newRow("Es") << u"87.6"_s << u"Es"_s << 2;
        QTest::newRow("MS, comma") << u"87,60"_s << u"MS"_s << 2;
        QTest::newRow("FAI") << u"87.6"_s << u"FAI"_s << 1;
        QTest::newRow("F2") << u"87.6"_s << u"F2"_s << 4;
        QTest::newRow("no mode") << u"87.6"_s << u""_s << 0;
        QTest::newRow("between two steps") << u"87.55"_s << u"Es"_s << 2;
        QTest::newRow("beside it") << u"87.7"_s << u"Es"_s << -1;
        QTest::newRow("the other frequency") << u"99.9"_s << u"Es"_s << 3;
        QTest::newRow("too near") << u"99.9"_s << u"F2"_s << -1;
        QTest::newRow("no frequency") << u"?"_s << u"Es"_s << -1;
    }

    void theNearestPlausible()
    {
        QFETCH(QString, heard);
        QFETCH(QString, mode);
        const auto results = stations(u"87.6"_s);
        const auto nearest = nearestPlausible(results, legsOf(results, home), heard, mode);
        QTEST(static_cast<int>(nearest.value_or(-1)), "nearest");
        QVERIFY(!nearestPlausible(results, legsOf(results, std::nullopt), heard, mode));
    }

    void eachModeHasItsReach_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<double>("least");
        QTest::addColumn<double>("most");
        QTest::newRow("Es") << u"Es"_s << 500.0 << 4700.0;
        QTest::newRow("Tropo") << u"Tropo"_s << 0.0 << 2000.0;
        QTest::newRow("MS") << u"MS"_s << 500.0 << 2400.0;
        QTest::newRow("TEP") << u"TEP"_s << 2500.0 << 9000.0;
        QTest::newRow("Aur") << u"Aur"_s << 0.0 << 2200.0;
        QTest::newRow("FAI") << u"FAI"_s << 300.0 << 2400.0;
    }

    void eachModeHasItsReach()
    {
        QFETCH(QString, mode);
        QTEST(reachOf(mode).least, "least");
        QTEST(reachOf(mode).most, "most");
    }

    void everyModeReachesSomewhere()
    {
        for (const QString &mode : {u"Es"_s, u"Tropo"_s, u"MS"_s, u"TEP"_s, u"Aur"_s, u"F2"_s, u"FAI"_s}) {
            const ModeReach reach = reachOf(mode);
            QVERIFY(reach.least < reach.most);
            QVERIFY(reach.most > 1000);
        }
        QCOMPARE(reachOf(u"").least, 0.0);
    }
};

QTEST_GUILESS_MAIN(TestResultLegs)
#include "tst_resultlegs.moc"
