#include "geo/coordinates.h"

#include "platform/runtimeerror.h"
#include "support/numericlocale.h"

#include <QTest>

#include <cmath>
#include <functional>
#include <limits>
#include <optional>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

std::optional<ErrorName> errorOf(const std::function<void()> &work)
{
    try {
        work();
    } catch (const RuntimeError &error) {
        return error.name();
    }
    return std::nullopt;
}

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

class TestCoordinates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsTheDottedNotation_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("degrees");
        QTest::newRow("latitude") << u"51.30.25N"_s << 51 + 30.25 / 60;
        QTest::newRow("south") << u"51.30.25S"_s << -(51 + 30.25 / 60);
        QTest::newRow("commas") << u"51,30,25N"_s << 51 + 30.25 / 60;
        QTest::newRow("longitude of whole minutes") << u"001.30W"_s << -1.5;
        QTest::newRow("east") << u"001.30.00E"_s << 1.5;
        QTest::newRow("second point ends nothing") << u"51.30.2500N"_s << 51 + 30.25 / 60;
        QTest::newRow("third point ends the number") << u"51.30.25.1N"_s << 51 + 30.25 / 60;
        QTest::newRow("letter ends the number") << u"51.30x25N"_s << 51.5;
        QTest::newRow("no minutes") << u"51.N"_s << 51.0;
        QTest::newRow("hundredths only") << u"51..30N"_s << 51 + 0.30 / 60;
        QTest::newRow("zero") << u"0.00.00N"_s << 0.0;
        QTest::newRow("pole") << u"90.00.00S"_s << -90.0;
        QTest::newRow("date line") << u"180.00.00W"_s << -180.0;
        QTest::newRow("the last letter decides the sign") << u"10.30.00SN"_s << 10.5;
        QTest::newRow("what follows the letter hides the sign") << u"10.30.00S "_s << 10.5;
        QTest::newRow("W after N is a latitude without a sign") << u"N10.30W"_s << 0.0;
        QTest::newRow("latitude ending in W") << u"10.30NW"_s << 10.5;
        QTest::newRow("longitude ending in W") << u"10.30EW"_s << -10.5;
        QTest::newRow("minutes with exponent") << u"1.3e1N"_s << 1.5;
        QTest::newRow("negative degrees are taken as they are") << u"-1.30N"_s << -0.5;
        QTest::newRow("NaN as minutes is no number") << u"5.NaNN"_s << 5.0;
        QTest::newRow("infinity as minutes is no number") << u"5.infN"_s << 5.0;
        QTest::newRow("two signs are no number") << u"5.--3N"_s << 5.0;
        QTest::newRow("Arabic minutes are no number") << u"5.\u0663\u0660N"_s << 5.0;
    }

    void readsTheDottedNotation()
    {
        QFETCH(QString, text);
        QFETCH(double, degrees);
        QCOMPARE(convertLatORLontoDecimal(text), static_cast<float>(degrees));
    }

    void tellsWhatItCannotRead_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<float>("degrees");
        QTest::newRow("empty") << u""_s << -1.0F;
        QTest::newRow("no hemisphere") << u"001.30.00"_s << -1.0F;
        QTest::newRow("lower case hemisphere") << u"51.30.25n"_s << -1.0F;
        QTest::newRow("Arabic digits alone") << u"\u0665\u0661.\u0663\u0660"_s << -1.0F;
        QTest::newRow("1e-7") << u"1e-7"_s << -1.0F;
        QTest::newRow("no point") << u"5130N"_s << 0.0F;
        QTest::newRow("hemisphere alone") << u"W"_s << 0.0F;
        QTest::newRow("hemisphere before the point") << u"N."_s << 0.0F;
        QTest::newRow("NaN") << u"NaN"_s << 0.0F;
        QTest::newRow("NaN degrees") << u"NaN.30.00N"_s << 0.0F;
        QTest::newRow("no degrees") << u".30N"_s << 0.0F;
        QTest::newRow("letters as degrees") << u"x.30N"_s << 0.0F;
        QTest::newRow("Arabic degrees") << u"\u0665\u0661.30N"_s << 0.0F;
        QTest::newRow("beyond a single") << u"1e39.30N"_s << 0.0F;
        QTest::newRow("beyond a double") << u"1.1e999N"_s << 0.0F;
    }

    void tellsWhatItCannotRead()
    {
        QFETCH(QString, text);
        QFETCH(float, degrees);
        QCOMPARE(convertLatORLontoDecimal(text), degrees);
    }

    void readsTheCompactNotation_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("latitude");
        QTest::addColumn<double>("degrees");
        QTest::newRow("latitude") << u"5130.25N"_s << true << 51 + 30.25 / 60;
        QTest::newRow("longitude") << u"00130.25W"_s << false << -(1 + 30.25 / 60);
        QTest::newRow("comma") << u"5130,25N"_s << true << 51 + 30.25 / 60;
        QTest::newRow("one digit of degrees") << u"530.00N"_s << true << 5.5;
        QTest::newRow("south pole") << u"9000.00S"_s << true << -90.0;
        QTest::newRow("date line") << u"18000.00E"_s << false << 180.0;
        QTest::newRow("no hundredths") << u"5130.N"_s << true << 51.5;
        QTest::newRow("third decimal of a longitude") << u"00130.255E"_s << false << 1 + 30.255 / 60;
        QTest::newRow("third decimal of a latitude pushes the letter out") << u"5130.255N"_s << true << -1.0;
        QTest::newRow("no degrees") << u"30.25N"_s << true << 0.0;
        QTest::newRow("no point") << u"5130N"_s << true << 0.0;
        QTest::newRow("nothing before the point") << u".25N"_s << true << 0.0;
        QTest::newRow("no hemisphere") << u"5130.25"_s << true << -1.0;
        QTest::newRow("empty") << u""_s << true << -1.0;
    }

    void readsTheCompactNotation()
    {
        QFETCH(QString, text);
        QFETCH(bool, latitude);
        QFETCH(double, degrees);
        QCOMPARE(
            convertRXLatORLonToDecimal(text, latitude), static_cast<double>(static_cast<float>(degrees)));
    }

    void writesBothNotations_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<bool>("latitude");
        QTest::addColumn<bool>("dotted");
        QTest::addColumn<QString>("text");
        QTest::newRow("half a degree") << 51.5 << true << true << u"51.30.00N"_s;
        QTest::newRow("longitude compact") << -1.25 << false << false << u"00115.00W"_s;
        QTest::newRow("longitude dotted") << -1.25 << false << true << u"001.15.00W"_s;
        QTest::newRow("latitude is not padded") << 5.5 << true << true << u"5.30.00N"_s;
        QTest::newRow("compact latitude is not padded") << 5.5 << true << false << u"530.00N"_s;
        QTest::newRow("hundredths are cut off") << 51.123456 << true << true << u"51.07.40N"_s;
        QTest::newRow("cut off just below") << 51.0001666 << true << false << u"5100.00N"_s;
        QTest::newRow("a hundredth") << 51.0001667 << true << false << u"5100.01N"_s;
        QTest::newRow("zero latitude") << 0.0 << true << true << u"0.00.00N"_s;
        QTest::newRow("zero longitude") << 0.0 << false << true << u"000.00.00E"_s;
        QTest::newRow("negative zero") << -0.0 << false << false << u"00000.00E"_s;
        QTest::newRow("whole degrees") << -7.0 << true << false << u"700.00S"_s;
        QTest::newRow("two digits of longitude") << 12.0 << false << false << u"01200.00E"_s;
        QTest::newRow("three digits of longitude") << -179.9999999 << false << true << u"179.59.99W"_s;
        QTest::newRow("rounds to the next degree") << 9.99999999 << true << false << u"1000.00N"_s;
        QTest::newRow("pole") << -90.0 << true << true << u"90.00.00S"_s;
        QTest::newRow("date line") << 180.0 << false << false << u"18000.00E"_s;
        QTest::newRow("tiny") << 1e-7 << true << true << u"0.00.00N"_s;
        QTest::newRow("tiny and south") << -1e-300 << true << true << u"0.00.00S"_s;
        QTest::newRow("exponent range") << 0.00001 << false << false << u"00000.00E"_s;
        QTest::newRow("0.01 minute") << 0.00017 << false << true << u"000.00.01E"_s;
        QTest::newRow("huge") << 1e15 << false << false << u"100000000000000000.00E"_s;
        QTest::newRow("NaN, dotted latitude") << notANumber << true << true << u"00.00.00N"_s;
        QTest::newRow("NaN, dotted longitude") << notANumber << false << true << u"000.00.00W"_s;
        QTest::newRow("infinite, compact latitude") << -infinity << true << false << u"0000.00N"_s;
        QTest::newRow("infinite, compact longitude") << infinity << false << false << u"00000.00W"_s;
    }

    void writesBothNotations()
    {
        QFETCH(double, value);
        QFETCH(bool, latitude);
        QFETCH(bool, dotted);
        QFETCH(QString, text);
        for (const char *locale : {"en_GB.UTF-8", "de_DE.UTF-8"}) {
            const test::NumericLocale numbers(locale);
            QCOMPARE(convertDecimaltoLatORLon(value, latitude, dotted), text);
        }
    }

    void writesMinutesOfArc_data()
    {
        QTest::addColumn<float>("minutes");
        QTest::addColumn<bool>("longitude");
        QTest::addColumn<QString>("text");
        QTest::addColumn<float>("remainder");
        QTest::newRow("latitude") << 3090.25F << false << u"5130.25N"_s << 30.25F;
        QTest::newRow("south") << -3090.25F << false << u"5130.25S"_s << 30.25F;
        QTest::newRow("longitude") << 90.5F << true << u"00130.50E"_s << 30.5F;
        QTest::newRow("west") << -697.5F << true << u"01137.50W"_s << 37.5F;
        QTest::newRow("zero") << 0.0F << true << u"00000.00E"_s << 0.0F;
        QTest::newRow("date line") << -10800.0F << true << u"18000.00W"_s << 0.0F;
        QTest::newRow("rounds up to the next degree") << 179.6F << false << u"03-00.40N"_s << 179.6F - 180;
        QTest::newRow("half to the even degree") << 59.5F << false << u"01-00.50N"_s << -0.5F;
        QTest::newRow("below half") << 59.25F << false << u"0059.25N"_s << 59.25F;
        QTest::newRow("half a hundredth to even") << 30.125F << false << u"0030.12N"_s << 30.125F;
        QTest::newRow("no minus before zero") << 179.998F << false << u"0300.00N"_s << 179.998F - 180;
        QTest::newRow("beyond the globe") << 60000.0F << false << u"100000.00N"_s << 0.0F;
    }

    void writesMinutesOfArc()
    {
        QFETCH(float, minutes);
        QFETCH(bool, longitude);
        QFETCH(QString, text);
        QFETCH(float, remainder);
        for (const char *locale : {"en_GB.UTF-8", "de_DE.UTF-8"}) {
            const test::NumericLocale numbers(locale);
            float left = minutes;
            QString result;
            convertMinutestoLatORLon(left, result, longitude);
            QCOMPARE(result, text);
            QCOMPARE(left, remainder);
        }
    }

    void minutesBeyond32BitsOverflow()
    {
        for (const float minutes : {2.2e9F, -2.2e9F, std::numeric_limits<float>::infinity(),
                 std::numeric_limits<float>::quiet_NaN()}) {
            float left = minutes;
            QString result = u"before"_s;
            QCOMPARE(errorOf([&] { convertMinutestoLatORLon(left, result, true); }), ErrorName::Overflow);
            QCOMPARE(result, u"before"_s);
            QVERIFY(left == minutes || std::isnan(minutes));
        }
    }

    void mapsPositionsOntoPixels_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<float>("scale");
        QTest::addColumn<float>("first");
        QTest::addColumn<float>("second");
        QTest::addColumn<bool>("latitude");
        QTest::addColumn<qint32>("pixel");
        QTest::newRow("row") << u"5130.00N"_s << 0.1F << 60.0F << 40.0F << true << 85;
        QTest::newRow("comma") << u"5130,00N"_s << 0.1F << 60.0F << 40.0F << true << 85;
        QTest::newRow("top edge") << u"6000.00N"_s << 0.1F << 60.0F << 40.0F << true << 0;
        QTest::newRow("bottom edge") << u"4000.00N"_s << 0.1F << 60.0F << 40.0F << true << 200;
        QTest::newRow("above") << u"6000.01N"_s << 0.1F << 60.0F << 40.0F << true << -1;
        QTest::newRow("below") << u"3959.99N"_s << 0.1F << 60.0F << 40.0F << true << -1;
        QTest::newRow("column") << u"00130.00E"_s << -0.5F << -10.0F << 20.0F << false << 23;
        QTest::newRow("column by a positive scale")
            << u"00130.00E"_s << 0.5F << -10.0F << 20.0F << false << -23;
        QTest::newRow("left of the map") << u"01030.00W"_s << -0.5F << -10.0F << 20.0F << false << -1;
        QTest::newRow("right of the map") << u"02030.00E"_s << -0.5F << -10.0F << 20.0F << false << -1;
        QTest::newRow("half to even, down") << u"5730.00N"_s << 1.0F << 60.0F << 40.0F << true << 2;
        QTest::newRow("half to even, up") << u"5630.00N"_s << 1.0F << 60.0F << 40.0F << true << 4;
        QTest::newRow("position -1 is a position") << u"0100.00S"_s << 1.0F << 10.0F << -10.0F << true << 11;
        QTest::newRow("no hemisphere") << u"5130.00"_s << 1.0F << 10.0F << -10.0F << true << -1;
        QTest::newRow("empty") << u""_s << 1.0F << 10.0F << -10.0F << true << -1;
        QTest::newRow("scale 0") << u"5130.00N"_s << 0.0F << 60.0F << 40.0F << true << -1;
        QTest::newRow("beyond 32 bits") << u"5130.00N"_s << 1e-30F << 60.0F << 40.0F << true << -1;
    }

    void mapsPositionsOntoPixels()
    {
        QFETCH(QString, text);
        QFETCH(float, scale);
        QFETCH(float, first);
        QFETCH(float, second);
        QFETCH(bool, latitude);
        QFETCH(qint32, pixel);
        QCOMPARE(convertLatORLontoXY(text, scale, first, second, latitude), pixel);
    }

    void remaindersAddATenth()
    {
        QCOMPARE(ddfMod(-0.3, 1), -0.3 + 0.1);
        QCOMPARE(ddfMod(0.3, 1), 0.3);
        QCOMPARE(ddfMod(7, 4), (7.0 / 4 - 2 + 0.1) * 4);
        QCOMPARE(ddfMod(5, 4), 1.0);
        QCOMPARE(ddfMod(2.5, 1), 0.5); // 2 is even
        QCOMPARE(ddfMod(3.5, 1), 3.5 - 4 + 0.1);
        QCOMPARE(ddfMod(8, -4), 0.0);
        QCOMPARE(ddfMod(0, 3), 0.0);
        QCOMPARE(errorOf([] { (void)ddfMod(1, 0); }), ErrorName::DivisionByZero);
        QCOMPARE(errorOf([] { (void)ddfMod(0, 0); }), ErrorName::DivisionByZero);
        QCOMPARE(errorOf([] { (void)ddfMod(1e300, 1e-300); }), ErrorName::Overflow);
        QCOMPARE(errorOf([] { (void)ddfMod(notANumber, 1); }), ErrorName::Overflow);
    }

    void remaindersOfWholeNumbers()
    {
        QCOMPARE(fMod(190.9, 20), 10.0);
        QCOMPARE(fMod(-0.5, 360), -1.0); // the floor is -1, the sign that of the dividend
        QCOMPARE(fMod(-361.0, 360), -1.0);
        QCOMPARE(fMod(7, -4), 3.0);
        QCOMPARE(fMod(7, 2.5), 1.0); // 2.5 rounds to 2
        QCOMPARE(fMod(7, 3.5), 3.0); // 3.5 rounds to 4
        QCOMPARE(fMod(2147483647.5, 10), 7.0);
        QCOMPARE(fMod(-2147483648.0, 10), -8.0);
        QCOMPARE(fMod(-2147483648.0, -1), 0.0);
    }

    void remaindersOfWholeNumbersFail()
    {
        QCOMPARE(errorOf([] { (void)fMod(1, 0); }), ErrorName::DivisionByZero);
        QCOMPARE(errorOf([] { (void)fMod(1, 0.5); }), ErrorName::DivisionByZero);
        QCOMPARE(errorOf([] { (void)fMod(1, -0.4); }), ErrorName::DivisionByZero);
        QCOMPARE(errorOf([] { (void)fMod(2147483648.0, 10); }), ErrorName::Overflow);
        QCOMPARE(errorOf([] { (void)fMod(-2147483648.5, 10); }), ErrorName::Overflow);
        QCOMPARE(errorOf([] { (void)fMod(1, 3e9); }), ErrorName::Overflow);
        QCOMPARE(errorOf([] { (void)fMod(infinity, 360); }), ErrorName::Overflow);
        QCOMPARE(errorOf([] { (void)fMod(notANumber, 360); }), ErrorName::Overflow);
        QCOMPARE(errorOf([] { (void)fMod(1, notANumber); }), ErrorName::Overflow);
    }
};

QTEST_GUILESS_MAIN(TestCoordinates)
#include "tst_coordinates.moc"
