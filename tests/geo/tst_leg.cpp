#include "geo/leg.h"
#include "geo/maidenhead.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestLeg : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sixteenPoints()
    {
        const QStringList points = u"N NNE NE ENE E ESE SE SSE S SSW SW WSW W WNW NW NNW"_s.split(u' ');
        for (int i = 0; i < points.size(); ++i) {
            QCOMPARE(compassPoint(i * 22.5), points[i]);
            QCOMPARE(compassPoint(i * 22.5 + 11.2), points[i]);
            QCOMPARE(compassPoint(i * 22.5 - 11.2), points[i]);
        }
        QCOMPARE(compassPoint(359.9), u"N"_s);
        QCOMPARE(compassPoint(720), u"N"_s);
    }

    void degreesAreRoundedToWholeOnes()
    {
        QCOMPARE(azimuthText(231.4), u"231° SW"_s);
        QCOMPARE(azimuthText(359.6), u"0° N"_s);
        QCOMPARE(azimuthText(0), u"0° N"_s);
    }

    void distancesAreWrittenAsInTheLog()
    {
        QCOMPARE(distanceText(1234.54, DistanceUnit::Kilometres), u"1234.5 km"_s);
        QCOMPARE(distanceText(812.04, DistanceUnit::Kilometres), u"812 km"_s);
        QCOMPARE(distanceText(1609.3, DistanceUnit::Miles), u"1000 mi"_s);
    }

    void tellsDistanceDirectionAndLocator()
    {
        QCOMPARE(
            legText({51.5, -0.1}, {40.4, -3.7}, DistanceUnit::Kilometres), u"1264.5 km, 194° SSW, IN80DJ"_s);
        QCOMPARE(legText({51.5, -0.1}, {40.4, -3.7}, DistanceUnit::Miles), u"785.8 mi, 194° SSW, IN80DJ"_s);
        QCOMPARE(legText({51.5, -0.1}, {51.5, -0.1}, DistanceUnit::Kilometres), u"0 km, IO91WM"_s);
    }

    void locators_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");
        QTest::addColumn<QString>("locator");
        QTest::newRow("eastern degree") << 50.02 << 11.79 << u"JO50VA"_s;
        QTest::newRow("western degree") << 48.147 << 10.608 << u"JN58HD"_s;
        QTest::newRow("Munich") << 48.14666 << 11.60833 << u"JN58TD"_s;
        QTest::newRow("Montevideo") << -34.91 << -56.21166 << u"GF15VC"_s;
        QTest::newRow("Washington") << 38.92 << -77.065 << u"FM18LW"_s;
        QTest::newRow("Wellington") << -41.28333 << 174.745 << u"RE78IR"_s;
        QTest::newRow("first") << -90.0 << -180.0 << u"AA00AA"_s;
        QTest::newRow("last") << 90.0 << 180.0 << u"RR99XX"_s;
        QTest::newRow("origin") << 0.0 << 0.0 << u"JJ00AA"_s;
    }

    void locators()
    {
        QFETCH(double, latitude);
        QFETCH(double, longitude);
        QTEST(locatorOf({latitude, longitude}), "locator");
    }

    void placesAreReadFromText_data()
    {
        QTest::addColumn<QString>("latitude");
        QTest::addColumn<QString>("longitude");
        QTest::addColumn<bool>("known");
        QTest::newRow("point") << u"51.5"_s << u"-0.25"_s << true;
        QTest::newRow("comma") << u"51,5"_s << u"-0,25"_s << true;
        QTest::newRow("nothing") << QString() << u"-0.25"_s << false;
        QTest::newRow("words") << u"north"_s << u"-0.25"_s << false;
        QTest::newRow("too far north") << u"90.01"_s << u"-0.25"_s << false;
        QTest::newRow("too far west") << u"51.5"_s << u"-180.5"_s << false;
    }

    void placesAreReadFromText()
    {
        QFETCH(QString, latitude);
        QFETCH(QString, longitude);
        QFETCH(bool, known);
        const auto place = positionFrom(latitude, longitude);
        QCOMPARE(place.has_value(), known);
        if (known) {
            QCOMPARE(*place, (GeoPosition {51.5, -0.25}));
        }
    }
};

QTEST_GUILESS_MAIN(TestLeg)
#include "tst_leg.moc"
