#include "stations/mapjson.h"

#include "platform/runtimeerror.h"
#include "stations/jsontokens.h"
#include "stations/stationlist.h"

#include <QBuffer>
#include <QJsonDocument>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

StationCollector collected(const QByteArray &json)
{
    QBuffer buffer;
    buffer.setData(json);
    buffer.open(QIODevice::ReadOnly);
    BlockSource source(buffer, u"list.json"_s, {});
    StationCollector stations;
    readMapJson(source, stations);
    return stations;
}

QString failure(const QByteArray &json)
{
    try {
        (void)collected(json);
    } catch (const RuntimeError &error) {
        return error.doing();
    }
    return {};
}

QByteArray station(const QByteArray &fields)
{
    return "{\"locations\":{\"7\":{\"stations\":[{"_ba + fields
        + "}],\"name\":\"Ochsenkopf\",\"itu\":\"D\",\"lat\":50.03,\"lon\":11.81}}}"_ba;
}

} // namespace

class TestMapJson : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aListIsRead()
    {
        const StationCollector stations =
            collected("{\n"
                      "  \"version\": {\"deep\": [1, [2, {\"x\": \"}\"}]]},\n"
                      "  \"locations\": {\n"
                      "    \"12\": {\"name\": \"Br\\u00e4nnkyrka \\\"S\\\"\", \"itu\": \"S\", \"lat\": "
                      "\"59.3\", \"lon\": 18.0,\n"
                      "      \"stations\": [\n"
                      "        {\"id\": 5, \"freq\": 92.4, \"pi\": \"E201\", \"pireg\": null, \"ps\": "
                      "\"SR_P1 P1\", \"station\": \"P1\",\n"
                      "         \"regname\": \"\", \"erp\": \"60\", \"pol\": \"H\", \"inactive\": false, "
                      "\"extra\": {\"a\": []}},\n"
                      "        {\"id\": \"6\", \"freq\": \"96.2\", \"pi\": \"E202\", \"pireg\": \"E402\", "
                      "\"ps\": \"SR_P2\", \"erp\": null, \"inactive\": 1}\n"
                      "      ]}}}"_ba);
        QCOMPARE(stations.refusedCount(), 0);
        QCOMPARE(QString::fromUtf8(stations.file()),
            u"Quillon stations 1\r\n"
            "92400|E201||SR_P1 P1|P1||Brännkyrka \"S\"|S|59.3|18|60|H||5|\r\n"
            "96200|E202|E402|SR_P2|||Brännkyrka \"S\"|S|59.3|18|0||1|6|\r\n"_s);
    }

    void theNameOfAPlaceMayFollowItsStations()
    {
        QCOMPARE(collected(station("\"freq\":\"102.3\",\"pi\":\"d314\"")).file().mid(20),
            "102300|D314|||||Ochsenkopf|D|50.03|11.81|0||||\r\n"_ba);
    }

    void whatIsNoStationIsRefusedWithItsLine()
    {
        const StationCollector stations = collected("{\"locations\":{\"1\":\n5,\"2\":{\"stations\":[\n7,\n"
                                                    "{\"freq\":\"abc\"},[1]\n]}}}"_ba);
        QCOMPARE(refusedText(stations.refused(), stations.refusedCount(), 9),
            u"Line 1: a location is no object\nLine 3: a station is no object\n"
            "Line 4: a station is no object\nLine 4: \"abc\" is no frequency from 64 to 110 MHz (abc)");
    }

    void whatIsNoJsonIsToldWithItsPlace_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("told");
        const auto row = [](const char *name, const QByteArray &json, const QString &told) {
            QTest::newRow(name) << json << u"Reading list.json, "_s + told;
        };
        row("empty", ""_ba, u"line 1, byte 1 of it: a value is missing"_s);
        row("cut", "{\"locations\":{"_ba, u"line 1, byte 15 of it: a name in quotes is missing"_s);
        row("second line", "{\n\"locations\" {}}"_ba, u"line 2, byte 14 of it: a colon is missing"_s);
        row("quotes", "{\"loc"_ba, u"line 1, byte 6 of it: the text ends inside quotes"_s);
        row("comma", "{\"a\":1,}"_ba, u"line 1, byte 8 of it: a name in quotes is missing"_s);
        row("two values", "{\"a\":1 2}"_ba,
            u"line 1, byte 9 of it: a comma or the closing bracket is missing"_s);
        row("crossed", "{\"a\":[}]"_ba, u"line 1, byte 7 of it: a value is missing"_s);
        row("number", "{\"a\":01}"_ba, u"line 1, byte 8 of it: a number is none"_s);
        row("escape", "{\"a\":\"\\x\"}"_ba, u"line 1, byte 9 of it: an unknown letter follows a backslash"_s);
        row("unit", "{\"a\":\"\\u12G4\"}"_ba,
            u"line 1, byte 13 of it: no four hexadecimal digits follow \\u"_s);
        row("behind", "{\"locations\":{}} x"_ba, u"line 1, byte 18 of it: something follows the end"_s);
        QTest::newRow("no list")
            << "[1,2]"_ba
            << u"Reading list.json: it is no list of an FM map service, it has no \"locations\""_s;
        QTest::newRow("no locations")
            << "{\"locations\":[]}"_ba
            << u"Reading list.json: it is no list of an FM map service, it has no \"locations\""_s;
        row("deep", "{\"a\":"_ba + QByteArray(100'000, '['),
            u"line 1, byte 70 of it: the brackets nest too deep"_s);
    }

    void whatIsNoJsonIsToldWithItsPlace()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, told);
        QCOMPARE(failure(json), told);
    }

    void textsAreDecoded_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("escapes") << "\"\\\"\\\\\\/\\b\\f\\n\\r\\t\""_ba;
        QTest::newRow("unit") << "\"\\u00e9\\u20ac\""_ba;
        QTest::newRow("pair") << "\"\\ud83d\\ude00\""_ba;
        QTest::newRow("bytes") << "\"\xC3\xA9\xF0\x9F\x98\x80\""_ba;
    }

    void textsAreDecoded()
    {
        QFETCH(QByteArray, json);
        QBuffer buffer(&json);
        buffer.open(QIODevice::ReadOnly);
        BlockSource source(buffer, u"text"_s, {});
        JsonTokens tokens(source);
        QCOMPARE(tokens.next(), JsonToken::String);
        QCOMPARE(tokens.text(), QJsonDocument::fromJson('[' + json + ']')[0].toString());
        QCOMPARE(tokens.next(), JsonToken::End);
    }

    void halfAPairBecomesTheReplacement()
    {
        for (const QByteArray &text : {"\\ud83d"_ba, "\\ude00"_ba, "\\ud83d\\u0041"_ba}) {
            const StationCollector stations =
                collected(station("\"freq\":\"102.3\",\"pi\":\"D314\",\"station\":\"x"_ba + text + '"'));
            QCOMPARE(stations.refusedCount(), 0);
            QVERIFY(stations.file().contains("|x"));
        }
    }

    void aLongTextIsCutAndReadingGoesOn()
    {
        const StationCollector stations = collected(station(
            "\"freq\":\"102.3\",\"pi\":\"D314\",\"extra\":\""_ba + QByteArray(20'000'000, 'x') + '"'));
        QCOMPARE(stations.refusedCount(), 0);
        QCOMPARE(StationList(stations.file(), {}).count(), 1);
    }

    void progressMayStopIt()
    {
        QByteArray json = station("\"extra\":\""_ba + QByteArray(200'000, 'x') + '"');
        QBuffer buffer(&json);
        buffer.open(QIODevice::ReadOnly);
        struct Stop
        {
        };
        QList<qint64> told;
        BlockSource source(buffer, u"list.json"_s, [&](qint64 read) {
            told += read;
            if (read > 100'000) {
                throw Stop();
            }
        });
        StationCollector stations;
        QVERIFY_THROWS_EXCEPTION(Stop, readMapJson(source, stations));
        QCOMPARE(told, (QList<qint64> {65'536, 131'072}));
    }
};

QTEST_GUILESS_MAIN(TestMapJson)
#include "tst_mapjson.moc"
