#include "geo/maidenhead.h"

#include "geo/coordinates.h"
#include "platform/runtimeerror.h"

#include <QRandomGenerator>
#include <QTest>

#include <cmath>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

constexpr int microdegrees = 1000000;
constexpr qint64 degree = microdegrees;

// A field is 10 degrees from the south pole, a square one degree, a subsquare the 24th part of a square.
QString latitudeByDefinition(qint64 micro)
{
    const qint64 fromPole = micro + 90 * degree;
    QString letters;
    letters += QChar(static_cast<char16_t>(u'A' + fromPole / (10 * degree)));
    letters += QChar(static_cast<char16_t>(u'0' + fromPole / degree % 10));
    letters += QChar(static_cast<char16_t>(u'A' + fromPole % degree * 24 / degree));
    return letters;
}

// A field is 20 degrees from the date line, a square two degrees, a subsquare the 24th part of a square.
QString longitudeByDefinition(qint64 micro)
{
    const qint64 fromDateLine = micro + 180 * degree;
    QString letters;
    letters += QChar(static_cast<char16_t>(u'A' + fromDateLine / (20 * degree)));
    letters += QChar(static_cast<char16_t>(u'0' + fromDateLine / (2 * degree) % 10));
    letters += QChar(static_cast<char16_t>(u'A' + fromDateLine % (2 * degree) * 12 / degree));
    return letters;
}

QString latitudePart(const QString &locator)
{
    return QString(locator[1]) + locator[3] + locator[5];
}

QString longitudePart(const QString &locator)
{
    return QString(locator[0]) + locator[2] + locator[4];
}

} // namespace

class TestMaidenhead : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLocatorIsTheCentreOfItsSubsquare_data()
    {
        QTest::addColumn<QString>("locator");
        QTest::addColumn<QString>("latitude");
        QTest::addColumn<QString>("longitude");
        QTest::newRow("JN58TD") << u"JN58TD"_s << u"4808.75N"_s << u"01137.50E"_s;
        QTest::newRow("lower case") << u"jn58td"_s << u"4808.75N"_s << u"01137.50E"_s;
        QTest::newRow("blanks around") << u"  JN58TD "_s << u"4808.75N"_s << u"01137.50E"_s;
        QTest::newRow("eight characters") << u"JN58TD25"_s << u"4808.75N"_s << u"01137.50E"_s;
        QTest::newRow("origin") << u"JJ00AA"_s << u"0001.25N"_s << u"00002.50E"_s;
        QTest::newRow("west of the origin") << u"IJ90XA"_s << u"0001.25N"_s << u"00002.50W"_s;
        QTest::newRow("south of the origin") << u"JI09AX"_s << u"0001.25S"_s << u"00002.50E"_s;
        QTest::newRow("south-west corner") << u"AA00AA"_s << u"8958.75S"_s << u"17957.50W"_s;
        QTest::newRow("north-east corner") << u"RR99XX"_s << u"8958.75N"_s << u"17957.50E"_s;
        QTest::newRow("largest") << u"ZZ99ZZ"_s << u"17003.75N"_s << u"34007.50E"_s;
    }

    void aLocatorIsTheCentreOfItsSubsquare()
    {
        QFETCH(QString, locator);
        QString latitude;
        QString longitude;
        QVERIFY(isLocator(locator));
        maidenheadToLatLon(locator, latitude, longitude);
        QTEST(latitude, "latitude");
        QTEST(longitude, "longitude");
    }

    void whatIsNoLocatorChangesNothing_data()
    {
        QTest::addColumn<QString>("locator");
        QTest::newRow("empty") << u""_s;
        QTest::newRow("four characters") << u"JN58"_s;
        QTest::newRow("digit for a letter") << u"J558TD"_s;
        QTest::newRow("letter for a digit") << u"JNX8TD"_s;
        QTest::newRow("blank inside") << u"JN 58TD"_s;
        QTest::newRow("Arabic digits") << u"JN\u0665\u0668TD"_s;
        QTest::newRow("accented letter") << u"J\u00d158TD"_s;
        QTest::newRow("letter that grows in upper case") << u"\u00df58TD"_s;
        QTest::newRow("10,000 characters") << QString(10000, u'9');
    }

    void whatIsNoLocatorChangesNothing()
    {
        QFETCH(QString, locator);
        QString latitude = u"a"_s;
        QString longitude = u"b"_s;
        QVERIFY(!isLocator(locator));
        maidenheadToLatLon(locator, latitude, longitude);
        QCOMPARE(latitude, u"a"_s);
        QCOMPARE(longitude, u"b"_s);
    }

    void aPositionHasALocator_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");
        QTest::addColumn<QString>("locator");
        QTest::newRow("eastern degree") << 48.3 << 11.5 << u"JN58SH"_s;
        QTest::newRow("western degree, twelve letters too far") << 48.3 << 10.5 << u"JN58SH"_s;
        QTest::newRow("origin") << 0.0 << 0.0 << u"JJ00MA"_s;
        QTest::newRow("south-west") << -33.9 << -70.6 << u"FF46QC"_s;
        QTest::newRow("whole degrees") << 10.0 << 20.0 << u"KK00MA"_s;
        QTest::newRow("south pole, date line") << -90.0 << -180.0 << u"AA00MA"_s;
        QTest::newRow("north pole") << 90.0 << 0.0 << u"JS00MA"_s;
        QTest::newRow("date line in the east") << 0.0 << 180.0 << u"SJ00MA"_s;
        QTest::newRow("tiny") << 1e-7 << 1e-7 << u"JJ00MA"_s;
        QTest::newRow("a hair south-west of the origin") << -1e-20 << -1e-20 << u"II99XX"_s;
    }

    void aPositionHasALocator()
    {
        QFETCH(double, latitude);
        QFETCH(double, longitude);
        QTEST(convertDecimalLatLonToMaidenhead(latitude, longitude), "locator");
    }

    void valuesBeyond32BitsOverflow()
    {
        for (const double degrees : {1e10, -1e10, std::nan(""), HUGE_VAL}) {
            QVERIFY_THROWS_EXCEPTION(RuntimeError, (void)convertDecimalLatLonToMaidenhead(degrees, 0));
            QVERIFY_THROWS_EXCEPTION(RuntimeError, (void)convertDecimalLatLonToMaidenhead(0, degrees));
        }
    }

    void latitudesAgreeWithTheDefinition()
    {
        QRandomGenerator random(20260707);
        for (int i = 0; i < 100000; ++i) {
            const int latitude = random.bounded(-90 * microdegrees, 90 * microdegrees);
            const int longitude = random.bounded(-180 * microdegrees, 180 * microdegrees);
            const QString locator = convertDecimalLatLonToMaidenhead(
                static_cast<double>(latitude) / microdegrees, static_cast<double>(longitude) / microdegrees);
            QCOMPARE(latitudePart(locator), latitudeByDefinition(latitude));
        }
    }

    void longitudesAgreeInTheEasternDegreeAndAreTwelveLettersOffInTheWestern()
    {
        QRandomGenerator random(20260708);
        for (int i = 0; i < 100000; ++i) {
            const int longitude = random.bounded(-180 * microdegrees, 180 * microdegrees);
            const double degrees = static_cast<double>(longitude) / microdegrees;
            QString expected = longitudeByDefinition(longitude);
            if (static_cast<int>(std::floor(degrees)) % 2 == 0) {
                expected[2] = QChar(static_cast<char16_t>(expected[2].unicode() + 12));
            }
            QCOMPARE(longitudePart(convertDecimalLatLonToMaidenhead(0, degrees)), expected);
        }
    }

    void decodingAndEncodingAgree()
    {
        QRandomGenerator random(20260709);
        for (int i = 0; i < 100000; ++i) {
            QString locator(6, u'0');
            locator[0] = QChar(u'A' + random.bounded(18));
            locator[1] = QChar(u'A' + random.bounded(18));
            locator[2] = QChar(u'0' + random.bounded(10));
            locator[3] = QChar(u'0' + random.bounded(10));
            locator[4] = QChar(u'M' + random.bounded(12)); // the eastern degree
            locator[5] = QChar(u'A' + random.bounded(24));
            QString latitude;
            QString longitude;
            maidenheadToLatLon(locator, latitude, longitude);
            QCOMPARE(convertDecimalLatLonToMaidenhead(convertRXLatORLonToDecimal(latitude, true),
                         convertRXLatORLonToDecimal(longitude, false)),
                locator);
        }
    }
};

QTEST_GUILESS_MAIN(TestMaidenhead)
#include "tst_maidenhead.moc"
