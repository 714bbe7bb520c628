#include "txdb/distances.h"

#include "platform/numbers.h"
#include "support/numericlocale.h"

#include <QRandomGenerator>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

LogEntry entryOf(const QString &transmitter, const QString &country, const QString &dist)
{
    LogEntry entry;
    entry.piCode = u"D3C2"_s;
    entry.transmitter = transmitter;
    entry.country = country;
    entry.dist = dist;
    return entry;
}

Settings home(const QString &latitude, const QString &longitude, const QString &asMiles = u"FALSE"_s)
{
    Settings settings;
    settings.homeLatitude = latitude;
    settings.homeLongitude = longitude;
    settings.asMiles = asMiles;
    return settings;
}

// Measures the sites and gives the entries their distances.
void recalculate(TransmitterList &list, Logbook &log, const Settings &settings, bool decimalComma = false)
{
    list.apply(measuredTransmitters(list, settings, decimalComma));
    log.apply(givenDistances(list, log));
}

// The distance text of one transmitter.
QString measured(
    const Settings &settings, const QString &latitude, const QString &longitude, bool decimalComma = false)
{
    TransmitterList list;
    list.add({u"Site"_s, u"D"_s, latitude, longitude, u"1"_s});
    Logbook log;
    recalculate(list, log, settings, decimalComma);
    return list.row(0).distance;
}

} // namespace

class TestDistances : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void homeIsSetUnlessItIsExactlyZero()
    {
        QVERIFY(homeIsSet(home(u"51.5"_s, u"-0.1"_s)));
        QVERIFY(!homeIsSet(home(u"0"_s, u"-0.1"_s)));
        QVERIFY(!homeIsSet(home(u"51.5"_s, u"0"_s)));
        QVERIFY(homeIsSet(home(u"0.0"_s, u"0.0"_s)));
        QVERIFY(homeIsSet(home(u""_s, u" 0"_s)));
        Settings settings;
        setDefaults(settings);
        QVERIFY(!homeIsSet(settings));
    }

    void measuresInKilometresOrMiles()
    {
        const auto distance = [](const QString &asMiles, const QString &latitude) {
            return measured(home(u"51.5"_s, u"-0.1"_s, asMiles), latitude, u"-3.7"_s);
        };
        QCOMPARE(distance(u"FALSE"_s, u"40.4"_s), u"1264.5"_s);
        QCOMPARE(distance(u""_s, u"40.4"_s), u"1264.5"_s);
        QCOMPARE(distance(u"true"_s, u"40.4"_s), u"1264.5"_s);
        QCOMPARE(distance(u"TRUE"_s, u"40.4"_s), u"785.8"_s);
        QCOMPARE(measured(home(u"51.5"_s, u"-0.1"_s), u"51.5"_s, u"-0.1"_s), u"0"_s);
        // A hundred kilometres on the equator.
        const QString hundred = plainText(100 / 6367.0 * 180 / 3.14159265358979);
        QCOMPARE(measured(home(u"0.0"_s, u"0.0"_s), u"0"_s, hundred), u"100"_s);
        QCOMPARE(measured(home(u"0.0"_s, u"0.0"_s, u"TRUE"_s), u"0"_s, hundred), u"62.1"_s);
    }

    void aMissingCoordinateCountsAsMinusOne_data()
    {
        QTest::addColumn<QString>("latitude");
        QTest::addColumn<QString>("longitude");
        QTest::addColumn<QString>("sameAs");
        QTest::newRow("empty latitude") << u""_s << u"10"_s << u"-1/10"_s;
        QTest::newRow("empty longitude") << u"10"_s << u""_s << u"10/-1"_s;
        QTest::newRow("words") << u"north"_s << u"10"_s << u"-1/10"_s;
        QTest::newRow("NaN") << u"NaN"_s << u"10"_s << u"-1/10"_s;
        QTest::newRow("Arabic digits") << u"\u0665\u0661"_s << u"10"_s << u"-1/10"_s;
        QTest::newRow("too large") << u"1e999"_s << u"10"_s << u"-1/10"_s;
        QTest::newRow("10,000 characters") << QString(10000, u'x') << u"10"_s << u"-1/10"_s;
        QTest::newRow("tiny") << u"1e-7"_s << u"10"_s << u"0/10"_s;
    }

    void aMissingCoordinateCountsAsMinusOne()
    {
        QFETCH(QString, latitude);
        QFETCH(QString, longitude);
        QFETCH(QString, sameAs);
        const Settings settings = home(u"51.5"_s, u"-0.1"_s);
        QCOMPARE(measured(settings, latitude, longitude),
            measured(settings, sameAs.section(u'/', 0, 0), sameAs.section(u'/', 1, 1)));
        const Settings nowhere = home(u""_s, u"west"_s);
        QCOMPARE(
            measured(nowhere, u"40.4"_s, u"-3.7"_s), measured(home(u"-1"_s, u"-1"_s), u"40.4"_s, u"-3.7"_s));
    }

    void commaAndPointReadAlikeInEveryLocale()
    {
        for (const char *locale : {"en_GB.UTF-8", "de_DE.UTF-8"}) {
            const test::NumericLocale numbers(locale);
            const bool comma = DecimalCommaLocale(NumberFormat::fromEnvironment());
            QCOMPARE(comma, QByteArray(locale).startsWith("de"));
            for (const Settings &settings : {home(u"51.5"_s, u"-0.1"_s), home(u"51,5"_s, u"-0,1"_s)}) {
                QCOMPARE(measured(settings, u"40.4"_s, u"-3.7"_s, comma), u"1264.5"_s);
                QCOMPARE(measured(settings, u"40,4"_s, u"-3,7"_s, comma), u"1264.5"_s);
            }
        }
    }

    void entriesGetTheDistanceOfTheirTransmitter()
    {
        TransmitterList list;
        list.add({u"Madrid"_s, u"E"_s, u"40.4"_s, u"-3.7"_s, u""_s});
        list.add({u"Home"_s, u"G"_s, u"51.5"_s, u"-0.1"_s, u"999"_s});
        Logbook log;
        log.AddEntry(entryOf(u"Madrid"_s, u"E"_s, u"1"_s));
        log.AddEntry(entryOf(u"Madrid"_s, u"POR"_s, u"2"_s));
        log.AddEntry(entryOf(u"madrid"_s, u"E"_s, u"3"_s));
        log.AddEntry(entryOf(u"Home"_s, u"G"_s, u"4"_s));
        log.AddEntry(entryOf(u""_s, u""_s, u"5"_s));
        LogEntry deleted = entryOf(u"Madrid"_s, u"E"_s, u"6"_s);
        deleted.piCode = deletedPiCode.toString();
        log.AddEntry(deleted);
        recalculate(list, log, home(u"51.5"_s, u"-0.1"_s));

        QCOMPARE(list.row(0).distance, u"1264.5"_s);
        QCOMPARE(list.row(1).distance, u"0"_s);
        QCOMPARE(log.entry(0).dist, u"1264.5"_s);
        QCOMPARE(log.entry(1).dist, u"2"_s);
        QCOMPARE(log.entry(2).dist, u"3"_s);
        QCOMPARE(log.entry(3).dist, u"0"_s);
        QCOMPARE(log.entry(4).dist, u"5"_s);
        QCOMPARE(log.entry(5).dist, u"1264.5"_s);
    }

    void theResultIsThatOfAScanFromTheStart()
    {
        QRandomGenerator random(20260713);
        TransmitterList list;
        for (int i = 0; i < 300; ++i) {
            list.add({u"Site %1"_s.arg(random.bounded(100)), u"ABC"_s [random.bounded(3)],
                QString::number(random.bounded(180) - 90), QString::number(random.bounded(360) - 180), {}});
        }
        Logbook log;
        for (int i = 0; i < 2000; ++i) {
            log.AddEntry(entryOf(
                u"Site %1"_s.arg(random.bounded(120)), u"ABC"_s[random.bounded(3)], QString::number(i)));
        }
        const Logbook before = log;
        recalculate(list, log, home(u"51.5"_s, u"-0.1"_s));
        for (qint32 index = 0; index < log.count(); ++index) {
            LogEntry expected = before.entry(index);
            for (const Transmitter &row : list) {
                if (row.name == expected.transmitter && row.country == expected.country
                    && !row.distance.isEmpty()) {
                    expected.dist = row.distance;
                    break;
                }
            }
            QVERIFY(log.entry(index) == expected);
        }
    }
};

QTEST_GUILESS_MAIN(TestDistances)
#include "tst_distances.moc"
