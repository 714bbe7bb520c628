#include "geo/distance.h"

#include <GeographicLib/Geodesic.hpp>

#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <numbers>

using namespace quillon;

namespace {

struct Pair
{
    double lat1;
    double lon1;
    double lat2;
    double lon2;
};

// Evenly over the sphere.
Pair randomPair(QRandomGenerator &random)
{
    const auto latitude = [&] { return std::asin(random.generateDouble() * 2 - 1) * 180 / std::numbers::pi; };
    const auto longitude = [&] { return random.generateDouble() * 360 - 180; };
    return {latitude(), longitude(), latitude(), longitude()};
}

double angleBetween(float bearing, double azimuth)
{
    return std::abs(std::remainder(static_cast<double>(bearing) - azimuth, 360));
}

} // namespace

class TestGeodesic : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void distancesAgreeWithTheEllipsoid()
    {
        const auto &ellipsoid = GeographicLib::Geodesic::WGS84();
        QRandomGenerator random(20260710);
        for (int i = 0; i < 10000; ++i) {
            const Pair pair = randomPair(random);
            double metres = 0;
            ellipsoid.Inverse(pair.lat1, pair.lon1, pair.lat2, pair.lon2, metres);
            float bearing = 0;
            const double distance =
                static_cast<double>(DoDistance(pair.lat1, pair.lon1, pair.lat2, pair.lon2, bearing));
            QVERIFY(std::abs(distance * 1000 / metres - 1) <= 0.006);
        }
    }

    // On the sphere and on the ellipsoid a bearing differs by an angle that grows as the sine of the distance
    // falls: beyond 145 degrees of arc (16,100 km) it passes half a degree, and at the antipode every bearing
    // leads there. Those pairs are held to the half degree times that sine.
    void bearingsAgreeWithTheEllipsoid()
    {
        const auto &ellipsoid = GeographicLib::Geodesic::WGS84();
        QRandomGenerator random(20260711);
        int plain = 0;
        for (int i = 0; i < 10000; ++i) {
            const Pair pair = randomPair(random);
            double azimuth = 0;
            double azimuthThere = 0;
            const double arc =
                ellipsoid.Inverse(pair.lat1, pair.lon1, pair.lat2, pair.lon2, azimuth, azimuthThere);
            float bearing = 0;
            (void)DoDistance(pair.lat1, pair.lon1, pair.lat2, pair.lon2, bearing);
            const double off = angleBetween(bearing, azimuth);
            if (arc <= 145) {
                ++plain;
                QVERIFY(off <= 0.5);
            } else {
                QVERIFY(off * std::sin(arc * std::numbers::pi / 180) <= 0.5);
            }
        }
        QVERIFY(plain > 9000);
    }

    void receptionsAgreeWithTheEllipsoid()
    {
        const auto &ellipsoid = GeographicLib::Geodesic::WGS84();
        QRandomGenerator random(20260712);
        for (int i = 0; i < 10000; ++i) {
            const double latitude = random.generateDouble() * 140 - 70;
            const double longitude = random.generateDouble() * 360 - 180;
            const double azimuth = random.generateDouble() * 360;
            const double kilometres = 1 + random.generateDouble() * 5000;
            double latitudeThere = 0;
            double longitudeThere = 0;
            ellipsoid.Direct(latitude, longitude, azimuth, kilometres * 1000, latitudeThere, longitudeThere);
            float bearing = 0;
            const auto distance =
                static_cast<double>(DoDistance(latitude, longitude, latitudeThere, longitudeThere, bearing));
            QVERIFY(std::abs(distance / kilometres - 1) <= 0.006);
            QVERIFY(angleBetween(bearing, azimuth) <= 0.5);
        }
    }
};

QTEST_GUILESS_MAIN(TestGeodesic)
#include "tst_geodesic.moc"
