#include "geo/coordinates.h"
#include "geo/distance.h"
#include "geo/maidenhead.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <cmath>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

constexpr int positions = 100000;
// The hundredth that may be cut off, and what a single cannot hold of 180 degrees.
constexpr double hundredthOfAMinute = 0.01 / 60 + 0.00001;

double randomDegrees(QRandomGenerator &random, double limit)
{
    switch (random.bounded(20)) {
    case 0:
        return 0;
    case 1:
        return limit;
    case 2:
        return -limit;
    case 3: // a hair from a whole degree
        return std::round((random.generateDouble() * 2 - 1) * (limit - 1))
            + (random.generateDouble() - 0.5) * 1e-6;
    case 4: // whole minutes
        return std::round((random.generateDouble() * 2 - 1) * limit * 60) / 60;
    default:
        return (random.generateDouble() * 2 - 1) * limit;
    }
}

QRegularExpression format(const QString &pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern));
}

// Characters that a position could hold, and some that it could not.
QString hostileText(QRandomGenerator &random, qsizetype length)
{
    static const QString alphabet =
        u"0123456789012345678901234567890123456789....,,--+eENSEWnsew \u0663\u221e|\r\n\0xNaN"_s;
    QString text;
    text.reserve(length);
    while (text.size() < length) {
        text += alphabet[random.bounded(static_cast<int>(alphabet.size()))];
    }
    return text;
}

} // namespace

class TestPositions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textsNeverLeaveTheirFormat()
    {
        const QRegularExpression dottedLatitude = format(u"(\\d|[1-8]\\d|90)\\.[0-5]\\d\\.\\d\\d[NS]"_s);
        const QRegularExpression compactLatitude = format(u"(\\d|[1-8]\\d|90)[0-5]\\d\\.\\d\\d[NS]"_s);
        const QRegularExpression dottedLongitude = format(u"(0\\d\\d|1[0-8]\\d)\\.[0-5]\\d\\.\\d\\d[EW]"_s);
        const QRegularExpression compactLongitude = format(u"(0\\d\\d|1[0-8]\\d)[0-5]\\d\\.\\d\\d[EW]"_s);
        const QRegularExpression locators = format(u"[A-S][A-S]\\d\\d[M-X][A-X]"_s);
        QRandomGenerator random(20260701);
        for (int i = 0; i < positions; ++i) {
            const double latitude = randomDegrees(random, 90);
            const double longitude = randomDegrees(random, 180);
            QVERIFY(dottedLatitude.match(convertDecimaltoLatORLon(latitude, true, true)).hasMatch());
            QVERIFY(compactLatitude.match(convertDecimaltoLatORLon(latitude, true, false)).hasMatch());
            QVERIFY(dottedLongitude.match(convertDecimaltoLatORLon(longitude, false, true)).hasMatch());
            QVERIFY(compactLongitude.match(convertDecimaltoLatORLon(longitude, false, false)).hasMatch());
            QVERIFY(locators.match(convertDecimalLatLonToMaidenhead(latitude, longitude)).hasMatch());
        }
    }

    void readingBackLosesAtMostAHundredthOfAMinute()
    {
        QRandomGenerator random(20260702);
        for (int i = 0; i < positions; ++i) {
            for (const bool latitude : {true, false}) {
                const double degrees = randomDegrees(random, latitude ? 90 : 180);
                const double dotted = static_cast<double>(
                    convertLatORLontoDecimal(convertDecimaltoLatORLon(degrees, latitude, true)));
                const double compact =
                    convertRXLatORLonToDecimal(convertDecimaltoLatORLon(degrees, latitude, false), latitude);
                QVERIFY(std::abs(dotted - degrees) <= hundredthOfAMinute);
                QCOMPARE(compact, dotted);
            }
        }
    }

    void minutesOfArcReadBack()
    {
        const QRegularExpression compact = format(u"\\d{2,3}(-00|[0-5]\\d)\\.\\d\\d[NSEW]"_s);
        QRandomGenerator random(20260703);
        for (int i = 0; i < positions; ++i) {
            const bool longitude = random.bounded(2) == 1;
            const double degrees = randomDegrees(random, longitude ? 180 : 90);
            auto minutes = static_cast<float>(degrees * 60);
            QString text;
            convertMinutestoLatORLon(minutes, text, longitude);
            QVERIFY(compact.match(text).hasMatch());
            QVERIFY(minutes >= -0.5F && minutes < 59.5F);
            // The half minute below a whole degree is written as negative minutes, which have no reader.
            if (!text.contains(u'-')) {
                const double read = convertRXLatORLonToDecimal(text, !longitude);
                QVERIFY(std::abs(read - degrees) <= hundredthOfAMinute);
            }
        }
    }

    void distancesStayOnTheGlobe()
    {
        QRandomGenerator random(20260704);
        for (int i = 0; i < positions; ++i) {
            const double latitude = randomDegrees(random, 90);
            const double longitude = randomDegrees(random, 180);
            float bearing = 0;
            const float distance = DoDistance(
                latitude, longitude, randomDegrees(random, 90), randomDegrees(random, 180), bearing);
            QVERIFY(distance >= 0 && distance <= 20003);
            QVERIFY(bearing >= 0 && bearing <= 360);
            // Next to each other, rounding may carry the cosine beyond 1.
            const float near =
                DoDistance(latitude, longitude, latitude * (1 - random.generateDouble() * 1e-10),
                    longitude + random.generateDouble() * 1e-8, bearing);
            QVERIFY(near >= 0 && near < 1);
            QVERIFY(bearing >= 0 && bearing <= 360);
        }
    }

    void readersSurviveAnyText()
    {
        QRandomGenerator random(20260705);
        for (int i = 0; i < 2000; ++i) {
            const qsizetype length = i < 1000 ? random.bounded(30) : 10000;
            const QString text = hostileText(random, length);
            QVERIFY(std::isfinite(convertLatORLontoDecimal(text)));
            QVERIFY(std::isfinite(convertRXLatORLonToDecimal(text, i % 2 == 0)));
            (void)convertLatORLontoXY(text, 0.1F, 90, -90, true);
            QString latitude = u"-"_s;
            QString longitude = u"-"_s;
            maidenheadToLatLon(text, latitude, longitude);
            QCOMPARE(latitude == u"-"_s, !isLocator(text));
        }
    }

    void longTextsReadAsShortOnes()
    {
        const QString zeros(10000, u'0');
        const QString longLatitude = zeros + u"51.30.25"_s + zeros + u"N"_s;
        QCOMPARE(convertLatORLontoDecimal(longLatitude), convertLatORLontoDecimal(u"51.30.25N"_s));
        const QString nines = QString(10000, u'9') + u".00N"_s;
        QCOMPARE(convertLatORLontoDecimal(nines), 0.0F);
        const QString letters = u"51.30"_s + QString(10000, u'N');
        QCOMPARE(convertLatORLontoDecimal(letters), 51.5F);
    }
};

QTEST_GUILESS_MAIN(TestPositions)
#include "tst_positions.moc"
