#include "geo/distance.h"

#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <limits>
#include <numbers>

using namespace quillon;

class TestDistance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void measuresTheGreatCircle_data()
    {
        QTest::addColumn<double>("lat1");
        QTest::addColumn<double>("lon1");
        QTest::addColumn<double>("lat2");
        QTest::addColumn<double>("lon2");
        QTest::addColumn<double>("distance");
        QTest::addColumn<double>("bearing");
        QTest::newRow("to the south")
            << 51.5 << -0.1 << 40.4 << -3.7 << 1264.5139603990892 << 194.06714881870238;
        QTest::newRow("to the east") << 51.5 << -0.1 << 51.5 << 10.0 << 701.0894057450421
                                     << 86.05445352290421;
        QTest::newRow("near, east") << 50.0 << 10.0 << 50.0 << 11.0 << 71.71874356234032 << 89.61807025332715;
        QTest::newRow("near, west") << 50.0 << 11.0 << 50.0 << 10.0 << 71.71874356234032 << 270.3819297466728;
        QTest::newRow("due south") << 50.0 << 10.0 << 40.0 << 10.0 << 1111.2251358592823 << 180.0;
        QTest::newRow("due north") << 50.0 << 10.0 << 60.0 << 10.0 << 1113.8443463307876 << 0.0;
        QTest::newRow("due east on the equator") << 0.0 << 0.0 << 0.0 << 90.0 << 10001.260212703106 << 90.0;
        QTest::newRow("due west on the equator")
            << 0.0 << 0.0 << 0.0 << -60.0 << 6367 * std::numbers::pi / 3 << 270.0;
        QTest::newRow("across the date line, east")
            << 10.0 << 179.5 << 10.0 << -179.5 << 109.45948672676482 << 89.9137538786453;
        QTest::newRow("across the date line, west")
            << 10.0 << -179.5 << 10.0 << 179.5 << 109.45948672676482 << 270.0862461213547;
        QTest::newRow("other hemisphere")
            << -33.9 << 151.2 << 51.5 << -0.1 << 16979.137524311485 << 318.957467840628;
        QTest::newRow("antipode") << 0.0 << 0.0 << 0.0 << 180.0 << 6367 * std::numbers::pi << 90.0;
        QTest::newRow("pole to pole") << 90.0 << 0.0 << -90.0 << 0.0 << 6367 * std::numbers::pi << 180.0;
        QTest::newRow("across the pole") << 89.9 << 0.0 << 89.9 << 180.0 << 22.379143429899035 << 0.0;
    }

    void measuresTheGreatCircle()
    {
        QFETCH(double, lat1);
        QFETCH(double, lon1);
        QFETCH(double, lat2);
        QFETCH(double, lon2);
        QFETCH(double, distance);
        QFETCH(double, bearing);
        float measured = -1;
        QCOMPARE(DoDistance(lat1, lon1, lat2, lon2, measured), static_cast<float>(distance));
        // At the antipode and at a pole every bearing leads there.
        if (distance < 20000) {
            QVERIFY(std::abs(static_cast<double>(measured) - bearing) < 1e-4);
        }
    }

    void equalPointsHaveNoDistanceAndLeaveTheBearing()
    {
        float bearing = 123;
        QCOMPARE(DoDistance(51.5, -0.1, 51.5, -0.1, bearing), 0.0F);
        QCOMPARE(bearing, 123.0F);
    }

    void invalidStepsGiveZeroAndLeaveTheBearing()
    {
        const double inf = std::numeric_limits<double>::infinity();
        const double nan = std::numeric_limits<double>::quiet_NaN();
        for (const double bad : {inf, -inf, nan}) {
            float bearing = 123;
            QCOMPARE(DoDistance(bad, 0, 1, 1, bearing), 0.0F);
            QCOMPARE(DoDistance(0, bad, 1, 1, bearing), 0.0F);
            QCOMPARE(DoDistance(0, 0, bad, 1, bearing), 0.0F);
            QCOMPARE(DoDistance(0, 0, 1, bad, bearing), 0.0F);
            QCOMPARE(bearing, 123.0F);
        }
    }

    // Where the cosine of the central angle comes out as exactly 0 the result is 0; a hair beside, it is a
    // quarter of the globe. Both are met among the doubles next to such points.
    void aQuarterOfTheGlobe()
    {
        QRandomGenerator random(20260706);
        const double k = 40398736.0 / 40678884.0;
        const double radians = std::numbers::pi / 180;
        int zeros = 0;
        int quarters = 0;
        for (int i = 0; i < 300; ++i) {
            const double north = 1 + random.generateDouble() * 39;
            const double south = -1 - random.generateDouble() * 39;
            double longitude =
                std::acos(-k * std::tan(north * radians) * k * std::tan(south * radians)) / radians;
            longitude *= 1 - 5e-15;
            for (int step = 0; step < 100; ++step) {
                float bearing = -1;
                const float distance = DoDistance(north, 0, south, longitude, bearing);
                if (distance == 0) {
                    QCOMPARE(bearing, -1.0F);
                    ++zeros;
                } else {
                    QVERIFY(std::abs(distance - 10001.26F) < 0.01F);
                    ++quarters;
                }
                longitude = std::nextafter(longitude, 180.0);
            }
        }
        QVERIFY(zeros > 0);
        QVERIFY(quarters > zeros);
    }

    void hugeAnglesAreStillAngles()
    {
        float bearing = 0;
        QCOMPARE(DoDistance(50, 10, 40, 370, bearing), DoDistance(50, 10, 40, 10, bearing));
        const float distance = DoDistance(1e300, -1e300, 1e15, 1e308, bearing);
        QVERIFY(distance >= 0 && distance <= 20003);
    }
};

QTEST_GUILESS_MAIN(TestDistance)
#include "tst_distance.moc"
