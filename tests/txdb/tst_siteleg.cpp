#include "txdb/distances.h"
#include "txdb/siteleg.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

Settings homeAt(const QString &latitude, const QString &longitude, const QString &miles = u"FALSE"_s)
{
    Settings settings;
    setDefaults(settings);
    settings.homeLatitude = latitude;
    settings.homeLongitude = longitude;
    settings.asMiles = miles;
    return settings;
}

} // namespace

class TestSiteLeg : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsTheWay_data()
    {
        QTest::addColumn<QString>("latitude");
        QTest::addColumn<QString>("longitude");
        QTest::addColumn<QString>("home");
        QTest::addColumn<QString>("miles");
        QTest::addColumn<QString>("text");
        QTest::newRow("km") << u"40.4"_s << u"-3.7"_s << u"51.5"_s << u"FALSE"_s
                            << u"1264.5 km, 194° SSW, IN80DJ"_s;
        QTest::newRow("miles") << u"40.4"_s << u"-3.7"_s << u"51.5"_s << u"TRUE"_s
                               << u"785.8 mi, 194° SSW, IN80DJ"_s;
        QTest::newRow("commas") << u"40,4"_s << u"-3,7"_s << u"51,5"_s << u"FALSE"_s
                                << u"1264.5 km, 194° SSW, IN80DJ"_s;
        QTest::newRow("home") << u"51.5"_s << u"-0.1"_s << u"51.5"_s << u"FALSE"_s << u"0 km, IO91WM"_s;
        QTest::newRow("no home") << u"40.4"_s << u"-3.7"_s << u"0"_s << u"FALSE"_s
                                 << u"IN80DJ (home is not set)"_s;
        QTest::newRow("home is no place")
            << u"40.4"_s << u"-3.7"_s << u"north"_s << u"FALSE"_s << u"IN80DJ (home is not set)"_s;
        QTest::newRow("no longitude") << u"40.4"_s << QString() << u"51.5"_s << u"FALSE"_s << QString();
        QTest::newRow("beyond") << u"90.4"_s << u"0"_s << u"51.5"_s << u"FALSE"_s << QString();
        QTest::newRow("no number") << u"x"_s << u"0"_s << u"51.5"_s << u"FALSE"_s << QString();
    }

    void tellsTheWay()
    {
        QFETCH(QString, latitude);
        QFETCH(QString, longitude);
        QFETCH(QString, home);
        QFETCH(QString, miles);
        QTEST(siteLegText(latitude, longitude, homeAt(home, u"-0.1"_s, miles)), "text");
    }

    void theMiddleOfALocator()
    {
        const auto middle = locatorMiddle(u" jo50va "_s);
        QVERIFY(middle);
        QCOMPARE(middle->latitude, u"50.02083"_s);
        QCOMPARE(middle->longitude, u"11.79167"_s);
        const auto west = locatorMiddle(u"IO91WM"_s);
        QVERIFY(west);
        QCOMPARE(west->latitude, u"51.52083"_s);
        QCOMPARE(west->longitude, u"-0.125"_s);
        for (const QString &none : {u""_s, u"51.5"_s, u"JO50"_s, u"ZZ50VA"_s, u"JO50ZZ"_s}) {
            QVERIFY2(!locatorMiddle(none), qPrintable(none));
        }
    }

    // The site of a reception, new, moved or known, gets what the re-calculation gives it.
    void measuresAsTheRecalculationDoes_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("latitude");
        QTest::addColumn<QString>("longitude");
        QTest::addColumn<QString>("miles");
        for (const QString &miles : {u"FALSE"_s, u"TRUE"_s}) {
            const auto row = [&miles](const char *what, const QString &name, const QString &latitude,
                                 const QString &longitude) {
                QTest::addRow("%s, miles %s", what, qPrintable(miles))
                    << name << latitude << longitude << miles;
            };
            row("new", u"New"_s, u"37.4"_s, u"-6"_s);
            row("moved", u"Madrid"_s, u"-40,25"_s, u"175.75"_s);
            row("known", u"Madrid"_s, u""_s, u""_s);
            row("where home is", u"Home"_s, u"51.5"_s, u"-0.1"_s);
        }
    }

    void measuresAsTheRecalculationDoes()
    {
        QFETCH(QString, name);
        QFETCH(QString, latitude);
        QFETCH(QString, longitude);
        QFETCH(QString, miles);
        const Settings settings = homeAt(u"51.5"_s, u"-0.1"_s, miles);
        TransmitterList list;
        QVERIFY(list.add({u"Madrid"_s, u"E"_s, u"40.4"_s, u"-3.7"_s, u"9"_s}));
        SiteChanges changes;
        if (auto change = list.addition({name, u"E"_s, latitude, longitude, {}})) {
            changes.push_back(*change);
        }
        const auto distance = measuredDistance(name, u"E"_s, list, settings, changes);
        QVERIFY(distance);
        TransmitterList measured = list;
        measured.apply(changes);
        const auto row = measured.find(name, u"E");
        QVERIFY(row);
        QCOMPARE(measured.row(*row).distance, *distance);
        for (const SiteChange &change : measuredTransmitters(measured, settings, false)) {
            QVERIFY(change.row != *row);
        }
        // All of it can be taken back.
        TransmitterList back = measured;
        back.apply(changes.inverse());
        QCOMPARE(back.count(), 1);
        QCOMPARE(back.row(0), list.row(0));
    }

    void aChangeOfManyIsMeasured_data()
    {
        QTest::addColumn<Measured>("which");
        QTest::addColumn<QStringList>("distances");
        // Two that are added, without a distance and with one; one that becomes another site; one that is
        // given a distance; one that is changed and has one; one that is not changed.
        QTest::newRow("all") << Measured::All
                             << QStringList {
                                    u"1264.5"_s, u"1264.5"_s, u"905.2"_s, u"5"_s, u"1264.5"_s, u"4"_s};
        QTest::newRow("those without")
            << Measured::Missing << QStringList {u"1264.5"_s, u"9"_s, u"905.2"_s, u"5"_s, u"3"_s, u"4"_s};
    }

    void aChangeOfManyIsMeasured()
    {
        QFETCH(Measured, which);
        TransmitterList list;
        QVERIFY(list.add({u"Madrid"_s, u"E"_s, u"40.4"_s, u"-3.7"_s, {}}));
        QVERIFY(list.add({u"Munich"_s, u"D"_s, u"48.3"_s, u"11.5"_s, {}}));
        QVERIFY(list.add({u"Unheard"_s, u"D"_s, u"48.3"_s, u"11.5"_s, {}}));
        const auto heard = [](const QString &site, const QString &distance) {
            LogEntry entry;
            entry.transmitter = site;
            entry.country = site == "Munich"_L1 ? u"D"_s : u"E"_s;
            entry.dist = distance;
            return entry;
        };
        Logbook log;
        for (const LogEntry &entry : {heard(u"Nowhere"_s, {}), heard(u"Madrid"_s, {}),
                 heard(u"Madrid"_s, u"3"_s), heard(u"Madrid"_s, u"4"_s)}) {
            log.AddEntry(entry);
        }
        LogChange change;
        change.added = {heard(u"Madrid"_s, {}), heard(u"Madrid"_s, u"9"_s), heard(u"Nowhere"_s, {})};
        change.setField(0, log.entry(0), LogField::Transmitter, u"Munich"_s);
        change.setField(0, log.entry(0), LogField::Country, u"D"_s);
        change.setField(1, log.entry(1), LogField::Dist, u"5"_s);
        change.setField(2, log.entry(2), LogField::Notes, u"new"_s);
        SiteChanges sites;
        measureChange(change, log, which, list, homeAt(u"51.5"_s, u"-0.1"_s), sites);
        QCOMPARE(change.added[2].dist, QString());
        log.apply(change);
        QStringList distances {change.added[0].dist, change.added[1].dist};
        for (int i = 0; i < 4; ++i) {
            distances += log.entry(i).dist;
        }
        QTEST(distances, "distances");
        // Each site that was heard is measured once, as a re-calculation measures it.
        QCOMPARE(sites.size(), std::size_t(2));
        list.apply(sites);
        QCOMPARE(list.row(0).distance, u"1264.5"_s);
        QCOMPARE(list.row(1).distance, u"905.2"_s);
        QCOMPARE(list.row(2).distance, QString());
    }

    void withoutAPlaceNothingIsMeasured()
    {
        TransmitterList list;
        QVERIFY(list.add({u"Half"_s, u"E"_s, u"40.4"_s, u""_s, u"9"_s}));
        SiteChanges changes;
        const Settings settings = homeAt(u"51.5"_s, u"-0.1"_s);
        QVERIFY(!measuredDistance(u"Half"_s, u"E"_s, list, settings, changes));
        QVERIFY(!measuredDistance(u"Half"_s, u"F"_s, list, settings, changes));
        QVERIFY(!measuredDistance({}, {}, list, settings, changes));
        (void)list.add({u"Half"_s, u"E"_s, u"40.4"_s, u"1"_s, {}});
        QVERIFY(!measuredDistance(u"Half"_s, u"E"_s, list, homeAt(u"0"_s, u"-0.1"_s), changes));
        QVERIFY(changes.empty());
        QVERIFY(measuredDistance(u"Half"_s, u"E"_s, list, settings, changes));
        QCOMPARE(changes.size(), std::size_t(1));
    }
};

QTEST_GUILESS_MAIN(TestSiteLeg)
#include "tst_siteleg.moc"
