#include "geo/azimuthal.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <numbers>
#include <vector>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

// Evenly over the globe.
GeoPosition randomPlace(QRandomGenerator &random)
{
    const double latitude = std::asin(random.generateDouble() * 2 - 1) * 180 / std::numbers::pi;
    return {latitude, random.generateDouble() * 360 - 180};
}

QByteArray number(double value)
{
    return QByteArray::number(value, 'f', 12);
}

// The points of the places in metres as GDAL projects them; empty when it cannot be run.
std::vector<QPointF> byGdal(const GeoPosition &home, const std::vector<GeoPosition> &places)
{
    const QString target = u"+proj=aeqd +ellps=WGS84 +lat_0=%1 +lon_0=%2 +units=m"_s.arg(
        QString::number(home.latitude, 'f', 12), QString::number(home.longitude, 'f', 12));
    QByteArray input;
    for (const GeoPosition &place : places) {
        input += number(place.longitude) + ' ' + number(place.latitude) + '\n';
    }
    QProcess gdal;
    gdal.start(u"gdaltransform"_s,
        {u"-s_srs"_s, u"+proj=longlat +ellps=WGS84"_s, u"-t_srs"_s, target, u"-output_xy"_s});
    gdal.write(input);
    gdal.closeWriteChannel();
    if (!gdal.waitForFinished(60000)) {
        return {};
    }
    std::vector<QPointF> points;
    while (gdal.canReadLine()) {
        const QByteArrayList parts = gdal.readLine().trimmed().split(' ');
        points.emplace_back(parts.value(0).toDouble(), parts.value(1).toDouble());
    }
    return points;
}

double apart(QPointF one, QPointF other)
{
    return std::hypot(one.x() - other.x(), one.y() - other.y());
}

} // namespace

class TestAzimuthal : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void agreesWithGdal_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");
        QTest::newRow("Europe") << 51.5 << 10.25;
        QTest::newRow("southern half") << -33.9 << 151.2;
        QTest::newRow("north pole") << 90.0 << 0.0;
        QTest::newRow("south pole") << -90.0 << 0.0;
        QTest::newRow("date line") << 10.0 << 180.0;
        QTest::newRow("date line from the west") << -17.5 << -179.99;
        QTest::newRow("equator") << 0.0 << 25.0;
    }

    void agreesWithGdal()
    {
        QFETCH(double, latitude);
        QFETCH(double, longitude);
        const AzimuthalEquidistant projection({latitude, longitude});
        QRandomGenerator random(20261101);
        std::vector<GeoPosition> places;
        places.reserve(10000);
        for (int i = 0; i < 10000; ++i) {
            places.push_back(randomPlace(random));
        }
        const auto points = byGdal(projection.home(), places);
        QCOMPARE(points.size(), places.size());
        double worst = 0;
        for (std::size_t i = 0; i < places.size(); ++i) {
            worst = std::max(worst, apart(projection.project(places[i]) * 1000, points[i]));
        }
        // A centimetre.
        QVERIFY2(worst < 0.01, qPrintable(QString::number(worst)));
    }

    void homeIsTheMiddleAndTheAntipodeTheRim_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");
        for (const double latitude : {-90.0, -45.25, 0.0, 51.5, 90.0}) {
            for (const double longitude : {-180.0, -0.25, 0.0, 77.0, 180.0}) {
                QTest::addRow("%g, %g", latitude, longitude) << latitude << longitude;
            }
        }
    }

    void homeIsTheMiddleAndTheAntipodeTheRim()
    {
        QFETCH(double, latitude);
        QFETCH(double, longitude);
        const AzimuthalEquidistant projection({latitude, longitude});
        QVERIFY(apart(projection.project({latitude, longitude}), {0, 0}) < 1e-9);
        const GeoPosition antipode {-latitude, longitude > 0 ? longitude - 180 : longitude + 180};
        const QPointF rim = projection.project(antipode);
        QVERIFY(std::abs(apart(rim, {0, 0}) - antipodeDistance) < 1e-6);
        const auto points = byGdal(projection.home(), {antipode});
        QCOMPARE(points.size(), std::size_t(1));
        QVERIFY(std::abs(apart(points.front(), {0, 0}) / 1000 - antipodeDistance) < 1e-5);
    }

    void placesComeBack()
    {
        QRandomGenerator random(20261102);
        for (int i = 0; i < 10000; ++i) {
            const AzimuthalEquidistant projection(randomPlace(random));
            const GeoPosition there = randomPlace(random);
            const GeoPosition back = projection.place(projection.project(there));
            QVERIFY(apart(AzimuthalEquidistant(there).project(back), {0, 0}) < 1e-5);
        }
    }

    void directionsGoClockwiseFromNorth()
    {
        QCOMPARE(azimuthOf({0, 1}), 0.0);
        QCOMPARE(azimuthOf({1, 0}), 90.0);
        QCOMPARE(azimuthOf({0, -1}), 180.0);
        QCOMPARE(azimuthOf({-1, 0}), 270.0);
        QCOMPARE(azimuthOf({-1e-300, 1}), 0.0);
    }
};

QTEST_GUILESS_MAIN(TestAzimuthal)
#include "tst_azimuthal.moc"
