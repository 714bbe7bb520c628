#include "stations/candidates.h"

#include "stations/stationcollector.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

struct Listed
{
    QString pi;
    QString names;
    QString site;
    QString latitude;
    QString longitude;
    QString kilowatts;
    QString regionalPi = {};
    QString inactive = {};
    QString id = {};
    QString frequency = u"99.4"_s;
};

StationList listOf(const QList<Listed> &stations)
{
    StationCollector collector;
    for (const Listed &one : stations) {
        collector.add({.frequency = one.frequency,
                          .pi = one.pi,
                          .regionalPi = one.regionalPi,
                          .names = one.names,
                          .programme = {},
                          .region = {},
                          .site = one.site,
                          .country = u"D"_s,
                          .latitude = one.latitude,
                          .longitude = one.longitude,
                          .kilowatts = one.kilowatts,
                          .polarisation = {},
                          .inactive = one.inactive,
                          .id = one.id},
            1);
    }
    Q_ASSERT(collector.refusedCount() == 0);
    return {collector.file(), u"stations.lst"_s};
}

LogEntry entry(const QString &pi, const QString &name, const QString &site, const QString &prop = u"Tropo"_s,
    qint64 seconds = 1'000'000, const QString &uid = {})
{
    LogEntry one;
    one.piCode = pi;
    one.dateTime = {seconds};
    one.prop = prop;
    one.freq = u"99.40"_s;
    one.transmitter = site;
    one.country = u"D"_s;
    one.rdsName = name;
    one.power = u"100"_s;
    one.uid = uid;
    return one;
}

// London.
constexpr GeoPosition home {51.5, 0};

HeardSignal signal(const QString &pi, const QString &name, bool esLikely = false)
{
    HeardSignal heard = heardSignal(u"99,4", pi, name).value();
    heard.esLikely = esLikely;
    heard.home = home;
    return heard;
}

QStringList sites(const std::vector<Candidate> &found)
{
    QStringList names;
    for (const Candidate &one : found) {
        names += one.station.site;
    }
    return names;
}

QStringList reasons(const std::vector<Candidate> &found)
{
    QStringList texts;
    for (const Candidate &one : found) {
        texts += one.why;
    }
    return texts;
}

const Listed ochsenkopf {u"D313"_s, u"BAYERN_3"_s, u"Ochsenkopf"_s, u"50.03"_s, u"11.81"_s, u"100"_s};
const Listed lille {u"D313"_s, u"BAYERN_3"_s, u"Lille"_s, u"50.6"_s, u"3.0"_s, u"100"_s};
const Listed malaga {u"D313"_s, u"BAYERN_3"_s, u"Malaga"_s, u"38.0"_s, u"-4.4"_s, u"20"_s};

} // namespace

class TestCandidates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSignalNeedsAFrequencyAndAPiOrAName()
    {
        QVERIFY(!heardSignal({}, u"D313", u"BAYERN 3"_s));
        QVERIFY(!heardSignal(u"12", u"D313", u"BAYERN 3"_s));
        QVERIFY(!heardSignal(u"99.4", u"D31", u" ? "_s));
        QVERIFY(heardSignal(u"99.4", {}, u"B"_s));
        const auto heard = heardSignal(u"99,4", u" d313 ", {});
        QVERIFY(heard);
        QCOMPARE(heard->kilohertz, 99'400);
        QCOMPARE(heard->pi, std::optional<quint16>(0xD313));
    }

    void withoutStationsThereIsNone()
    {
        QVERIFY(candidates(signal(u"D313"_s, {}), {}, {}).empty());
        QVERIFY(candidates(signal(u"D314"_s, u"BAYERN 3"_s), listOf({ochsenkopf}), {}).empty());
    }

    void theExactCodeIsBeforeItsVariants()
    {
        const StationList list = listOf({{u"D513"_s, u"BAYERN_3"_s, u"Near"_s, u"51.4"_s, u"0.1"_s, u"500"_s},
            {u"D413"_s, u"OTHER"_s, u"Far"_s, u"59"_s, u"18"_s, u"0.1"_s}});
        const auto found = candidates(signal(u"D413"_s, u"BAYERN 3"_s), list, {});
        QCOMPARE(sites(found), (QStringList {u"Far"_s, u"Near"_s}));
        QCOMPARE(reasons(found), (QStringList {u"PI, other name"_s, u"name; PI, other region"_s}));
        QVERIFY(found[0].share > found[1].share);
        QCOMPARE(found[0].share + found[1].share, 1.0);
    }

    void aVariantDiffersInTheSecondDigitFrom4()
    {
        const StationList list = listOf({{u"D413"_s, {}, u"4"_s, u"50"_s, u"8"_s, u"1"_s},
            {u"DF13"_s, {}, u"F"_s, u"50"_s, u"8"_s, u"1"_s},
            {u"D313"_s, {}, u"3"_s, u"50"_s, u"8"_s, u"1"_s},
            {u"D514"_s, {}, u"no"_s, u"50"_s, u"8"_s, u"1"_s},
            {u"1000"_s, {}, u"regional"_s, u"50"_s, u"8"_s, u"1"_s, u"D513"_s}});
        QStringList found = sites(candidates(signal(u"D513"_s, {}), list, {}));
        found.sort();
        QCOMPARE(found, (QStringList {u"4"_s, u"F"_s, u"regional"_s}));
    }

    void theNameDecidesLetterByLetter()
    {
        const StationList list = listOf({{u"D313"_s, u"ANTENNE"_s, u"A"_s, u"50"_s, u"8"_s, u"100"_s},
            {u"D313"_s, u"BAYERN_3"_s, u"B"_s, u"50"_s, u"8.1"_s, u"100"_s},
            {u"D313"_s, u"BAYERN_1"_s, u"C"_s, u"50"_s, u"8.2"_s, u"100"_s}});
        QCOMPARE(sites(candidates(signal(u"D313"_s, u"B YE   3"_s), list, {})),
            (QStringList {u"B"_s, u"C"_s, u"A"_s}));
        QCOMPARE(sites(candidates(signal(u"D313"_s, u"YEBARN 3"_s), list, {})).first(), u"B"_s);
    }

    void thePowerOverTheDistanceDecides()
    {
        QCOMPARE(sites(candidates(signal(u"D313"_s, {}), listOf({malaga, ochsenkopf, lille}), {})),
            (QStringList {u"Lille"_s, u"Ochsenkopf"_s, u"Malaga"_s}));
        const auto found = candidates(signal(u"D313"_s, {}), listOf({lille}), {});
        QVERIFY(found[0].leg);
        QVERIFY(qAbs(found[0].leg->kilometres - 233) < 5);
        QVERIFY(qAbs(found[0].leg->azimuth - 115) < 3);
        QCOMPARE(found[0].share, 1.0);
    }

    void byEsTheEsDistanceIsLikely()
    {
        const auto found = candidates(signal(u"D313"_s, {}, true), listOf({ochsenkopf, malaga}), {});
        QCOMPARE(sites(found), (QStringList {u"Malaga"_s, u"Ochsenkopf"_s}));
        QCOMPARE(reasons(found).first(), u"PI, Es distance");
        QCOMPARE(
            sites(candidates(signal(u"D313"_s, {}, true), listOf({lille, malaga}), {})).first(), u"Lille"_s);
    }

    void withoutAPiTheNameMustAgree()
    {
        const StationList list = listOf({{u"D313"_s, u"BAYERN_3"_s, u"B"_s, u"50"_s, u"8"_s, u"100"_s},
            {{}, u"M6"_s, u"M"_s, u"50"_s, u"8"_s, u"100"_s},
            {u"F202"_s, u"ANTENNE"_s, u"A"_s, u"50"_s, u"8"_s, u"100"_s}});
        QCOMPARE(sites(candidates(signal({}, u"BAYERN"_s), list, {})), QStringList(u"B"_s));
        QCOMPARE(sites(candidates(signal({}, u"M6"_s), list, {})), QStringList(u"M"_s));
        QCOMPARE(reasons(candidates(signal({}, u"M6"_s), list, {})), QStringList(u"name"_s));
        QVERIFY(candidates(signal({}, u"BADEN 1"_s), list, {}).empty());
    }

    void rivalsOverATenthAreAllThere()
    {
        QList<Listed> stations;
        for (int i = 0; i < 30; ++i) {
            stations += {u"D313"_s, {}, u"Site %1"_s.arg(i), u"50.03"_s, u"11.81"_s, u"100"_s};
        }
        for (int i = 0; i < 30; ++i) {
            stations += {u"D313"_s, {}, u"Weak %1"_s.arg(i), u"50.03"_s, u"11.81"_s, u"0.01"_s};
        }
        const auto found = candidates(signal(u"D313"_s, {}), listOf(stations), {}, 10);
        QCOMPARE(found.size(), 30U);
        for (const Candidate &one : found) {
            QVERIFY(one.station.site.startsWith(u"Site"_s));
        }
        QCOMPARE(candidates(signal(u"D313"_s, {}), listOf(stations), {}, 40).size(), 40U);
    }

    void anInactiveOneIsUnlikely()
    {
        Listed off = lille;
        off.site = u"Off"_s;
        off.inactive = u"true"_s;
        const auto found = candidates(signal(u"D313"_s, u"BAYERN 3"_s), listOf({off, lille}), {});
        QCOMPARE(sites(found), (QStringList {u"Lille"_s, u"Off"_s}));
        QCOMPARE(reasons(found).last(), u"PI and name, said to be off");
    }

    void theLogKnowsStationsToo()
    {
        Logbook log;
        log.AddEntry(entry(u"D313"_s, u"BAYERN_3"_s, u"Ochsenkopf"_s));
        log.AddEntry(entry(u"D313"_s, u"BAYERN 3"_s, u"Ochsenkopf"_s, u"Es"_s, 2'000'000));
        log.AddEntry(entry(u"D313"_s, u"ELSEWHERE"_s, u"Nowhere"_s));
        log.AddEntry(entry(u"delete"_s, u"BAYERN 3"_s, u"Gone"_s));
        log.AddEntry(entry(u"D313"_s, u"BAYERN 3"_s, {}));
        TransmitterList places;
        places.add({u"Ochsenkopf"_s, u"D"_s, u"50.03"_s, u"11.81"_s, {}});
        const HeardStations heard(log, places);
        const auto found = candidates(signal(u"D313"_s, u"BAYERN 3"_s), {}, heard);
        QCOMPARE(found.size(), 2U);
        const Candidate &ochsenkopfs = found[0].hasPlace ? found[0] : found[1];
        QCOMPARE(ochsenkopfs.station.site, u"Ochsenkopf");
        QCOMPARE(ochsenkopfs.why, u"PI and name, heard 2 times");
        QVERIFY(ochsenkopfs.leg);
        const Candidate &nowhere = found[0].hasPlace ? found[1] : found[0];
        QCOMPARE(nowhere.station.site, u"Nowhere");
        QCOMPARE(nowhere.why, u"PI, other name, heard once");
        QVERIFY(!nowhere.leg);
    }

    void whatListAndLogKnowStandsOnce_data()
    {
        QTest::addColumn<QString>("site");
        QTest::addColumn<QString>("uid");
        QTest::addColumn<std::size_t>("rows");
        QTest::newRow("same site") << u"OCHSENKOPF"_s << QString() << std::size_t {1};
        QTest::newRow("same UID") << u"Fichtelgebirge"_s << u"77"_s << std::size_t {1};
        QTest::newRow("same place") << u"Bischofsgruen"_s << QString() << std::size_t {1};
        QTest::newRow("other UID") << u"Ochsenkopf"_s << u"78"_s << std::size_t {2};
        QTest::newRow("other place") << u"Grimming"_s << QString() << std::size_t {2};
    }

    void whatListAndLogKnowStandsOnce()
    {
        QFETCH(QString, site);
        QFETCH(QString, uid);
        QFETCH(std::size_t, rows);
        Logbook log;
        log.AddEntry(entry(u"D313"_s, u"BAYERN 3"_s, site, u"Tropo"_s, 1'000'000, uid));
        TransmitterList places;
        places.add({u"Bischofsgruen"_s, u"D"_s, u"50.05"_s, u"11.8"_s, {}});
        places.add({u"Grimming"_s, u"D"_s, u"47.5"_s, u"14.0"_s, {}});
        Listed listed = ochsenkopf;
        listed.id = u"77"_s;
        const auto found =
            candidates(signal(u"D313"_s, u"BAYERN 3"_s), listOf({listed}), HeardStations(log, places));
        QCOMPARE(found.size(), rows);
        if (rows == 1) {
            QCOMPARE(found[0].why, u"PI and name, heard once");
            QCOMPARE(found[0].station.site, u"Ochsenkopf");
        }
    }

    void theHourIsEsWhenItsReceptionsAre_data()
    {
        QTest::addColumn<QStringList>("modes");
        QTest::addColumn<qint64>("apart");
        QTest::addColumn<bool>("es");
        QTest::newRow("empty") << QStringList() << qint64 {0} << false;
        QTest::newRow("one") << QStringList {u"Es"_s} << qint64 {3'600} << true;
        QTest::newRow("too early") << QStringList {u"Es"_s} << qint64 {-3'601} << false;
        QTest::newRow("half") << QStringList {u"Es"_s, u"Tropo"_s, {}} << qint64 {60} << true;
        QTest::newRow("more others") << QStringList {u"Es"_s, u"Tropo"_s, u"MS"_s} << qint64 {60} << false;
        QTest::newRow("no mode") << QStringList {{}, {}} << qint64 {60} << false;
    }

    void theHourIsEsWhenItsReceptionsAre()
    {
        QFETCH(QStringList, modes);
        QFETCH(qint64, apart);
        QFETCH(bool, es);
        Logbook log;
        log.AddEntry(entry(u"D313"_s, {}, u"S"_s, u"Es"_s, 5'000'000));
        log.AddEntry(entry(u"delete"_s, {}, u"S"_s, u"Es"_s, 5'000'000));
        for (const QString &mode : modes) {
            log.AddEntry(entry(u"D313"_s, {}, u"S"_s, mode, 5'000'000 + apart));
        }
        QCOMPARE(isEsHour(log, {5'000'000}, 0), es);
        QVERIFY(isEsHour(log, {5'000'000}, -1) || modes.size() == 3);
    }

    void withoutHomeTheyAreRankedByPower()
    {
        HeardSignal heard = signal(u"D313"_s, {});
        heard.home.reset();
        const auto found = candidates(heard, listOf({malaga, lille}), {});
        QCOMPARE(sites(found), (QStringList {u"Lille"_s, u"Malaga"_s}));
        QVERIFY(!found[0].leg);
    }
};

QTEST_GUILESS_MAIN(TestCandidates)
#include "tst_candidates.moc"
