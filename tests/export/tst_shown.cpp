#include "export/markup.h"
#include "export/showncsv.h"
#include "export/shownfile.h"
#include "export/showngeojson.h"
#include "export/shownkml.h"
#include "export/showntext.h"
#include "shownfixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace quillon;
using namespace quillon::test;

namespace {

QByteArray csvCell(const QString &text)
{
    LogEntry entry = reception(u"01/01/2026 00:00:00"_s, u""_s, u""_s, u""_s, u""_s, u""_s, u""_s);
    entry.notes = text;
    ShownFixture fixture({entry});
    ShownLog shown = fixture.shown();
    shown.entries = {fixture.log().count() - 1};
    shown.columns = {GridColumn::Uid, GridColumn::Notes};
    const QByteArray csv = shownCsv(shown);
    return csv.sliced(csv.indexOf("\r\n") + 3).chopped(2);
}

QJsonArray features(const ShownLog &shown)
{
    QJsonParseError error {};
    const QJsonDocument document = QJsonDocument::fromJson(shownGeoJson(shown), &error);
    if (error.error != QJsonParseError::NoError) {
        qFatal("not JSON: %s", qPrintable(error.errorString()));
    }
    return document[u"features"_s].toArray();
}

} // namespace

class TestShown : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCsvCell_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("cell");
        QTest::newRow("plain") << u"weak"_s << "weak"_ba;
        QTest::newRow("empty") << QString() << ""_ba;
        QTest::newRow("comma") << u"a,b"_s << "\"a,b\""_ba;
        QTest::newRow("quotes") << u"the \"x\""_s << "\"the \"\"x\"\"\""_ba;
        QTest::newRow("lines") << u"a\r\nb"_s << "\"a\r\nb\""_ba;
        QTest::newRow("bytes above 127") << u"Köln €"_s << "K\xC3\xB6ln \xE2\x82\xAC"_ba;
        QTest::newRow("=") << u"=1+1"_s << "'=1+1"_ba;
        QTest::newRow("+") << u"+x"_s << "'+x"_ba;
        QTest::newRow("-") << u"-x"_s << "'-x"_ba;
        QTest::newRow("- alone") << u"-"_s << "'-"_ba;
        QTest::newRow("@") << u"@x"_s << "'@x"_ba;
        QTest::newRow("apostrophe") << u"'x"_s << "''x"_ba;
        QTest::newRow("negative number") << u"-12.5"_s << "-12.5"_ba;
        QTest::newRow("number with plus") << u"+5"_s << "+5"_ba;
        QTest::newRow("within") << u"a=b"_s << "a=b"_ba;
        QTest::newRow("formula with a comma") << u"=A(1,2)"_s << "\"'=A(1,2)\""_ba;
    }
    void aCsvCell()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, cell);
        QCOMPARE(csvCell(text), cell);
    }

    void theCsvHasTheColumnsAndRowsOfTheGrid()
    {
        ShownFixture fixture;
        fixture.rows().setFilter([](const LogEntry &entry, qint32) { return entry.freq == u"89"_s; });
        fixture.rows().sortBy(LogRows::Sorting {GridColumn::DateTime, true});
        ShownLog shown = fixture.shown();
        shown.columns = {GridColumn::Freq, GridColumn::DateTime, GridColumn::Power};
        QCOMPARE(shownCsv(shown),
            "Freq,Date/Time,Power\r\n89,2010-07-05T21:40:00Z,\r\n89,2010-07-03T08:15:00Z,100\r\n"_ba);
    }

    void theCsvHoldsTheFieldsNotWhatTheGridMakesOfThem()
    {
        ShownFixture fixture({trickyReception()});
        ShownLog shown = fixture.shown();
        shown.entries = {fixture.log().count() - 1};
        shown.columns = {GridColumn::DateTime, GridColumn::Freq, GridColumn::Dist, GridColumn::FMList};
        QCOMPARE(shownCsv(shown),
            "Date/Time,Freq,Dist,FMList\r\n2012-12-24T18:00:01Z,98.7,1234.5,fml=sent#\r\n"_ba);
    }

    void aRowOfOneEmptyCellIsNoEmptyLine()
    {
        ShownFixture fixture;
        ShownLog shown = fixture.shown();
        shown.entries = {0};
        shown.columns = {GridColumn::Uid};
        QCOMPARE(shownCsv(shown), "UID\r\n\"\"\r\n"_ba);
    }

    void deletedReceptionsStayHere()
    {
        const ShownFixture fixture;
        QCOMPARE(fixture.shown().entries, (std::vector<qint32> {0, 1, 2, 3, 4, 5}));
        QVERIFY(!shownCsv(fixture.shown()).contains("delete"));
    }

    void aGeoJsonPointHasAllFields()
    {
        ShownFixture fixture({trickyReception()});
        const QJsonArray all = features(fixture.shown(3));
        QCOMPARE(all.size(), 7);
        const QJsonObject tricky = all[6].toObject();
        QCOMPARE(tricky[u"geometry"_s][u"type"_s].toString(), u"Point"_s);
        QCOMPARE(tricky[u"geometry"_s][u"coordinates"_s].toArray(), (QJsonArray {7.0, 50.9}));
        const QJsonObject properties = tricky[u"properties"_s].toObject();
        QCOMPARE(properties,
            (QJsonObject {{u"Date/Time"_s, u"2012-12-24T18:00:01Z"_s}, {u"PI Code"_s, u"1A2B"_s},
                {u"Freq"_s, 98.7}, {u"RDS Name"_s, u"=1+1, \"x\""_s}, {u"Country"_s, u"D"_s},
                {u"Transmitter"_s, u"Köln & Bonn"_s}, {u"Dist"_s, 1234.5}, {u"Power"_s, -12.5},
                {u"Notes"_s, u"first \"line\"\r\nsecond, <b>line</b> & €\r\n"_s}, {u"Prop"_s, u"-Es"_s},
                {u"FMList"_s, u"fml=sent#"_s}, {u"UID"_s, u"'@42"_s}}));
    }

    void theGeoJsonIsReadAsItStands()
    {
        ShownFixture fixture({trickyReception()});
        const QByteArray text = shownGeoJson(fixture.shown(3));
        QVERIFY(text.contains("\"Köln & Bonn\""));
        QVERIFY(text.contains("\"first \\\"line\\\"\\u000d\\u000asecond, <b>line</b> & €"));
    }

    void aSiteWithoutAPlaceHasNoGeometry()
    {
        const ShownFixture fixture;
        const QJsonArray all = features(fixture.shown());
        QVERIFY(all[3][u"geometry"_s].isNull());
        QCOMPARE(all[3][u"properties"_s][u"Transmitter"_s].toString(), u"Nowhere"_s);
        QVERIFY(all[4][u"properties"_s][u"Dist"_s].isNull());
    }

    void theLinesFromHomeAreOneForEachSite()
    {
        const ShownFixture fixture;
        ShownLog shown = fixture.shown();
        shown.home = GeoPosition {51.5, -0.1};
        QList<QJsonObject> lines;
        for (const auto &feature : features(shown)) {
            if (feature[u"geometry"_s][u"type"_s] == u"LineString"_s) {
                lines += feature.toObject();
            }
        }
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines[0][u"properties"_s].toObject(),
            (QJsonObject {
                {u"Transmitter"_s, u"Langenberg"_s}, {u"Country"_s, u"D"_s}, {u"Receptions"_s, 2}}));
        const QJsonArray way = lines[0][u"geometry"_s][u"coordinates"_s].toArray();
        QVERIFY(way.size() > 4);
        QCOMPARE(way.first().toArray(), (QJsonArray {-0.1, 51.5}));
    }

    void theKmlListsTheReceptionsOfEachSite()
    {
        ShownFixture fixture({trickyReception()});
        const QByteArray kml = shownKml(fixture.shown());
        QCOMPARE(kml.count("<Placemark>"), 3);
        QVERIFY(kml.contains("<Placemark><name>K\xC3\xB6ln &amp; Bonn (D)</name>\r\n"
                             "<description><![CDATA[ <ol>\r\n"
                             "<li>[05/07/2010 21:34:09] [5213] [RAI  R1] [90.1]</li>\r\n"
                             "<li>[24/12/2012 18:00:01] [1A2B] [=1+1, &quot;x&quot;] [98,7]</li>\r\n"
                             "</ol>]]> </description>\r\n"));
        QVERIFY(kml.contains("<coordinates>7,50.9,200</coordinates>"));
        QCOMPARE(leftOut(fixture.shown(), ShownKind::Kml), 2);
        QCOMPARE(leftOut(fixture.shown(), ShownKind::GeoJson), 0);
    }

    void theTextTableIsAligned()
    {
        ShownFixture fixture;
        ShownLog shown = fixture.shown();
        shown.entries = {1, 0};
        shown.columns = {GridColumn::Freq, GridColumn::Transmitter, GridColumn::Notes};
        QCOMPARE(QString::fromUtf8(shownText(shown)),
            u"Freq  Transmitter  Notes\r\n"
            "----  -----------  ------------\r\n"
            "90.1  Köln & Bonn  first second\r\n"
            "  89  Langenberg\r\n"_s);
    }

    void aLongCellDoesNotWidenTheTable()
    {
        LogEntry entry = reception(u"01/01/2026 00:00:00"_s, u""_s, u"99"_s, u""_s, u""_s, u""_s, u""_s);
        entry.notes = QString(100'000, u'x');
        ShownFixture fixture({entry});
        ShownLog shown = fixture.shown();
        shown.columns = {GridColumn::Notes, GridColumn::Freq};
        const QByteArray text = shownText(shown);
        QVERIFY(text.contains(QByteArray(entry.notes.toUtf8() + "      99\r\n")));
        QVERIFY(text.size() < 102'000);
    }

    void markupHoldsNothingThatAReaderTakesForItsOwn()
    {
        QByteArray bytes;
        appendMarkup(bytes, u"<a href=\"x\">&]]>\x01\x85é\t\r\n"_s);
        QCOMPARE(bytes, "&lt;a href=&quot;x&quot;&gt;&amp;]]&gt;\xEF\xBF\xBD\xEF\xBF\xBD\xC3\xA9\t\r\n"_ba);
    }

    void theNameTellsTheKind_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<std::optional<ShownKind>>("kind");
        QTest::newRow("csv") << u"/x/a.csv"_s << std::optional(ShownKind::Csv);
        QTest::newRow("capitals") << u"/x/a.CSV"_s << std::optional(ShownKind::Csv);
        QTest::newRow("geojson") << u"a.geojson"_s << std::optional(ShownKind::GeoJson);
        QTest::newRow("kml") << u"a.b.kml"_s << std::optional(ShownKind::Kml);
        QTest::newRow("txt") << u"a.txt"_s << std::optional(ShownKind::Text);
        QTest::newRow("html") << u"a.html"_s << std::optional(ShownKind::Page);
        QTest::newRow("another") << u"a.xls"_s << std::optional<ShownKind>();
        QTest::newRow("none") << u"/x.csv/a"_s << std::optional<ShownKind>();
    }
    void theNameTellsTheKind()
    {
        QFETCH(QString, path);
        QFETCH(std::optional<ShownKind>, kind);
        QCOMPARE(shownKindOf(path), kind);
    }
};

QTEST_GUILESS_MAIN(TestShown)
#include "tst_shown.moc"
