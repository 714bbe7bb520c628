#include "txdb/derivedcells.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

// Sites due east of 0, 0, about 111.2 km to a degree.
TransmitterList sitesAt(const QStringList &longitudes)
{
    TransmitterList sites;
    for (const QString &longitude : longitudes) {
        sites.add({longitude, u"X"_s, u"0"_s, longitude, {}});
    }
    return sites;
}

LogEntry heard(const QString &site, const QString &prop = u"Es"_s, const QString &freq = u"100"_s)
{
    LogEntry entry;
    entry.transmitter = site;
    entry.country = u"X"_s;
    entry.prop = prop;
    entry.freq = freq;
    return entry;
}

const std::optional<GeoPosition> origin = GeoPosition {0, 0};

} // namespace

/// The cells that follow from a reception and the places.
class TestDerivedCells : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theHomeIsThatOfTheSettings()
    {
        Settings settings;
        setDefaults(settings);
        settings.homeLatitude = u"51.5"_s;
        settings.homeLongitude = u"-0,25"_s;
        QCOMPARE(homePosition(settings), std::optional(GeoPosition {51.5, -0.25}));
        settings.homeLongitude = u"0"_s;
        QVERIFY(!homePosition(settings));
        settings.homeLongitude = u"west"_s;
        QVERIFY(!homePosition(settings));
    }

    void theAzimuthIsThatFromHome()
    {
        TransmitterList sites = sitesAt({u"10"_s, u"-10"_s, u"0"_s});
        sites.add({u"north"_s, u"X"_s, u"10"_s, u"-0.001"_s, {}});
        sites.add({u"nowhere"_s, u"X"_s, u"here"_s, u"10"_s, {}});
        QCOMPARE(azimuthCell(heard(u"10"_s), sites, origin), u"90"_s);
        QCOMPARE(azimuthCell(heard(u"-10"_s), sites, origin), u"270"_s);
        QCOMPARE(azimuthCell(heard(u"north"_s), sites, origin), u"0"_s);
        QCOMPARE(azimuthCell(heard(u"0"_s), sites, origin), QString());
        QCOMPARE(azimuthCell(heard(u"nowhere"_s), sites, origin), QString());
        QCOMPARE(azimuthCell(heard(u"unknown"_s), sites, origin), QString());
        QCOMPARE(azimuthCell(heard(u"10"_s), sites, std::nullopt), QString());
    }

    void theLocatorIsTheTrueOneOfTheSite()
    {
        TransmitterList sites;
        sites.add({u"West"_s, u"X"_s, u"50.02"_s, u"10.79"_s, {}});
        sites.add({u"East"_s, u"X"_s, u"50,02"_s, u"11,79"_s, {}});
        QCOMPARE(locatorCell(heard(u"West"_s), sites), u"JO50JA"_s);
        QCOMPARE(locatorCell(heard(u"East"_s), sites), u"JO50VA"_s);
        QCOMPARE(locatorCell(heard(u"unknown"_s), sites), QString());
    }

    void theMufIsThatOfOneHop_data()
    {
        QTest::addColumn<QString>("longitude");
        QTest::addColumn<QString>("prop");
        QTest::addColumn<QString>("freq");
        QTest::addColumn<bool>("told");
        QTest::newRow("1000 km") << u"9"_s << u"Es"_s << u"100"_s << true;
        QTest::newRow("2300 km") << u"20.7"_s << u"Es"_s << u"87,6"_s << true;
        QTest::newRow("too near") << u"4.4"_s << u"Es"_s << u"100"_s << false;
        QTest::newRow("too far") << u"21.3"_s << u"Es"_s << u"100"_s << false;
        QTest::newRow("another mode") << u"9"_s << u"Tropo"_s << u"100"_s << false;
        QTest::newRow("no mode") << u"9"_s << QString() << u"100"_s << false;
        QTest::newRow("no frequency") << u"9"_s << u"Es"_s << u"FM"_s << false;
    }

    void theMufIsThatOfOneHop()
    {
        QFETCH(QString, longitude);
        QFETCH(QString, prop);
        QFETCH(QString, freq);
        QFETCH(bool, told);
        const TransmitterList sites = sitesAt({longitude});
        const LogEntry entry = heard(longitude, prop, freq);
        QCOMPARE(!mufCell(entry, sites, origin).isEmpty(), told);
        QCOMPARE(mufCell(entry, sites, std::nullopt), QString());
        QCOMPARE(mufCell(entry, {}, origin), QString());
    }

    void theMufHasOneDecimalPlace()
    {
        // 1000.2 km, where 100 MHz make 136.9.
        const TransmitterList sites = sitesAt({u"9"_s});
        const QString muf = mufCell(heard(u"9"_s), sites, origin);
        QVERIFY2(qAbs(muf.toDouble() - 136.91) < 0.2, qPrintable(muf));
        QCOMPARE(muf.section(u'.', 1).size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestDerivedCells)
#include "tst_derivedcells.moc"
