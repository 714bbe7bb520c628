#include "stations/stationlist.h"

#include "platform/runtimeerror.h"
#include "stations/stationcollector.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

StationTexts berlin()
{
    return {.frequency = u"98.5"_s,
        .pi = u"D3C2"_s,
        .regionalPi = {},
        .names = u"RADIO_1 R1_NEWS"_s,
        .programme = u"Radio One"_s,
        .region = u"East"_s,
        .site = u"Berlin/Scholzplatz"_s,
        .country = u"D"_s,
        .latitude = u"52.5061"_s,
        .longitude = u"13,2189"_s,
        .kilowatts = u"80"_s,
        .polarisation = u"H"_s,
        .inactive = {},
        .id = u"1234"_s};
}

StationTexts changed(QString StationTexts::*text, const QString &value)
{
    StationTexts texts = berlin();
    texts.*text = value;
    return texts;
}

bool everything(const StationFields &)
{
    return true;
}

StationList listOf(const StationCollector &collector)
{
    return {collector.file(), u"stations.lst"_s};
}

} // namespace

class TestStationList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFileHoldsAStationAsALine()
    {
        StationCollector collector;
        collector.add(berlin(), 2);
        QCOMPARE(collector.file(),
            "Quillon stations 1\r\n"
            "98500|D3C2||RADIO_1 R1_NEWS|Radio One|East|Berlin/Scholzplatz|D|52.5061|13.2189|80|H||1234|\r\n"_ba);
        const std::vector<ListedStation> read = listOf(collector).on(98'500, everything);
        QCOMPARE(read.size(), 1U);
        QCOMPARE(read[0].pi, std::optional<quint16>(0xD3C2));
        QVERIFY(!read[0].regionalPi);
        QCOMPARE(read[0].names, u"RADIO_1 R1_NEWS");
        QCOMPARE(read[0].place.longitude, 13.2189);
        QCOMPARE(read[0].kilowatts, 80.0);
        QCOMPARE(read[0].id, u"1234");
        QCOMPARE(stationLine(read[0]) + "\r\n", collector.file().mid(20));
    }

    void aLineIsRefusedWithItsReason_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("reason");
        const auto row = [](const char *field, const QString &value, const QString &reason) {
            QTest::addRow("%s %s", field, qPrintable(value.left(20)))
                << QString::fromLatin1(field) << value << reason;
        };
        row("frequency", {}, u"\"\" is no frequency from 64 to 110 MHz"_s);
        row("frequency", u"985"_s, u"\"985\" is no frequency from 64 to 110 MHz"_s);
        row("frequency", u"nan"_s, u"\"nan\" is no frequency from 64 to 110 MHz"_s);
        row("pi", u"D3C"_s, u"the PI code \"D3C\" is not four hexadecimal digits"_s);
        row("latitude", u"91"_s, u"\"91\", \"13,2189\" is no place in decimal degrees"_s);
        row("latitude", {}, u"\"\", \"13,2189\" is no place in decimal degrees"_s);
        row("power", u"strong"_s, u"the power \"strong\" is no number of kW"_s);
        row("power", u"-1"_s, u"the power \"-1\" is no number of kW"_s);
        row("power", u"1e300"_s, u"the power \"1e300\" is no number of kW"_s);
        row("site", u" | "_s, u"it has no site"_s);
    }

    void aLineIsRefusedWithItsReason()
    {
        QFETCH(QString, field);
        QFETCH(QString, value);
        QFETCH(QString, reason);
        const QHash<QString, QString StationTexts::*> fields {{u"frequency"_s, &StationTexts::frequency},
            {u"pi"_s, &StationTexts::pi}, {u"latitude"_s, &StationTexts::latitude},
            {u"power"_s, &StationTexts::kilowatts}, {u"site"_s, &StationTexts::site}};
        StationCollector collector;
        collector.add(changed(fields[field], value), 7);
        QCOMPARE(collector.refusedCount(), 1);
        QCOMPARE(collector.refused().at(0).line, 7);
        QVERIFY2(collector.refused().at(0).reason.startsWith(reason + u" ("),
            qPrintable(collector.refused().at(0).reason));
        QCOMPARE(collector.file(), "Quillon stations 1\r\n"_ba);
    }

    void withoutPiAndNameItIsRefused()
    {
        StationTexts texts = berlin();
        texts.pi.clear();
        texts.names.clear();
        StationCollector collector;
        collector.add(texts, 3);
        QCOMPARE(refusedText(collector.refused(), collector.refusedCount(), 5),
            u"Line 3: it has neither a PI code nor an RDS name (98.5, Radio One, Berlin/Scholzplatz, D)");
    }

    void onlySoManyRefusedLinesAreKept()
    {
        StationCollector collector;
        for (int line = 1; line <= 5'000; ++line) {
            collector.refuse(line, u"bad"_s);
        }
        QCOMPARE(collector.refused().size(), StationCollector::mostRefused);
        QCOMPARE(collector.refusedCount(), 5'000);
        QCOMPARE(refusedText(collector.refused(), collector.refusedCount(), 2),
            u"Line 1: bad\nLine 2: bad\n… and 4998 more");
    }

    void textsAreCleanedAndCut()
    {
        StationTexts texts = berlin();
        texts.site = u"A|B\r\nC\u202E"_s;
        texts.programme = QString(10'000, u'x');
        StationCollector collector;
        collector.add(texts, 1);
        const ListedStation station = listOf(collector).on(98'500, everything).at(0);
        QCOMPARE(station.site, u"A B C");
        QCOMPARE(station.programme, QString(80, u'x'));
    }

    void itIsSortedByFrequencyAndHoldsNothingTwice()
    {
        StationCollector collector;
        collector.add(changed(&StationTexts::frequency, u"107.9"_s), 1);
        collector.add(berlin(), 2);
        collector.add(changed(&StationTexts::site, u"Aachen"_s), 3);
        collector.add(berlin(), 4);
        const StationList list = listOf(collector);
        QCOMPARE(list.count(), 3);
        QCOMPARE(list.counts(), (StationCounts {3, 2, 1}));
        QCOMPARE(countsText(list.counts()), u"3 stations at 2 sites in 1 country");
        QCOMPARE(list.on(98'500, everything).size(), 2U);
        QCOMPARE(list.on(98'500, everything).at(0).site, u"Aachen");
        QVERIFY(list.on(98'501, everything).empty());
        QVERIFY(
            list.on(98'500, [](const StationFields &fields) { return fields.site == "Nowhere"; }).empty());
    }

    void linesOfAChangedFileAreLeftOutAndCounted()
    {
        StationCollector collector;
        collector.add(berlin(), 1);
        QByteArray file = collector.file();
        file += "98500|D3C2|\r\n\r\n98500|D3C2|||||S|D|95|13|1||||\r\n98500||||||S|D|5|13|-1||||\r\n";
        const StationList list(file, u"stations.lst"_s);
        QCOMPARE(list.count(), 1);
        QCOMPARE(list.leftOut(), 4);
        QCOMPARE(list.firstLeftOut(), 3);
    }

    void anotherFileIsRefused()
    {
        try {
            const StationList list("something else\n"_ba, u"stations.lst"_s);
            QFAIL("it was read");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.doing(),
                u"Reading stations.lst, line 1: it does not begin with \"Quillon stations 1\"");
        }
        QCOMPARE(StationList({}, u"stations.lst"_s).count(), 0);
    }
};

QTEST_GUILESS_MAIN(TestStationList)
#include "tst_stationlist.moc"
