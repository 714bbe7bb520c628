#include "export/shownfile.h"
#include "shownfixture.h"
#include "support/testfiles.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

using namespace quillon;
using namespace quillon::test;

namespace {

/// What a program of others says of a file; null when it fails or complains.
QByteArray told(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    const bool ended = process.waitForFinished();
    const QByteArray complaint = process.readAllStandardError();
    if (!ended || process.exitCode() != 0 || !complaint.isEmpty()) {
        qWarning("%s: %s", qPrintable(program), complaint.constData());
        return {};
    }
    return process.readAllStandardOutput();
}

/// The features that GDAL finds in the file.
QJsonArray readByGdal(const QByteArray &bytes, const QString &name, const QStringList &options = {})
{
    const TestDirectory directory;
    directory.write(name, bytes);
    const QByteArray json = told(
        u"ogr2ogr"_s, options + QStringList {u"-f"_s, u"GeoJSON"_s, u"/vsistdout/"_s, directory.file(name)});
    return QJsonDocument::fromJson(json)[u"features"_s].toArray();
}

/// The cells that Python's csv reads, strictly.
QJsonArray readByPython(const QByteArray &bytes)
{
    const TestDirectory directory;
    directory.write(u"a.csv"_s, bytes);
    return QJsonDocument::fromJson(
        told(u"python3"_s,
            {u"-c"_s,
                u"import csv, json, sys\n"
                "rows = list(csv.reader(open(sys.argv[1], newline='', encoding='utf-8'), strict=True))\n"
                "json.dump(rows, sys.stdout)\n"_s,
                directory.file(u"a.csv"_s)}))
        .array();
}

} // namespace

class TestShownReaders : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pythonReadsTheCsvAsItWas()
    {
        const ShownFixture fixture({trickyReception()});
        const ShownLog shown = fixture.shown();
        const QJsonArray rows = readByPython(shownBytes(shown, ShownKind::Csv));
        QCOMPARE(rows.size(), static_cast<qsizetype>(shown.entries.size()) + 1);
        QCOMPARE(rows[0].toArray(),
            (QJsonArray {u"Date/Time"_s, u"PI Code"_s, u"Freq"_s, u"RDS Name"_s, u"Country"_s,
                u"Transmitter"_s, u"Dist"_s, u"Power"_s, u"Notes"_s, u"Prop"_s, u"FMList"_s, u"UID"_s}));
        QCOMPARE(rows[2][8].toString(), u"first\r\nsecond"_s);
        QCOMPARE(rows[7].toArray(),
            (QJsonArray {u"2012-12-24T18:00:01Z"_s, u"1A2B"_s, u"98.7"_s, u"'=1+1, \"x\""_s, u"D"_s,
                u"Köln & Bonn"_s, u"1234.5"_s, u"-12.5"_s, u"first \"line\"\r\nsecond, <b>line</b> & €\r\n"_s,
                u"'-Es"_s, u"fml=sent#"_s, u"''@42"_s}));
    }

    void gdalReadsTheCsv()
    {
        const ShownFixture fixture({trickyReception()});
        const QJsonArray rows = readByGdal(
            shownBytes(fixture.shown(), ShownKind::Csv), u"a.csv"_s, {u"-oo"_s, u"AUTODETECT_TYPE=YES"_s});
        QCOMPARE(rows.size(), 7);
        const QJsonObject tricky = rows[6][u"properties"_s].toObject();
        QCOMPARE(tricky[u"Freq"_s].toDouble(), 98.7);
        QCOMPARE(tricky[u"Transmitter"_s].toString(), u"Köln & Bonn"_s);
        QVERIFY(tricky[u"Date/Time"_s].toString().startsWith(u"2012"_s));
    }

    void gdalReadsTheGeoJson()
    {
        const ShownFixture fixture({trickyReception()});
        ShownLog shown = fixture.shown();
        shown.home = GeoPosition {-43, 172};
        const QJsonArray all = readByGdal(shownBytes(shown, ShownKind::GeoJson), u"a.geojson"_s);
        QCOMPARE(all.size(), 10);
        QCOMPARE(all[6][u"geometry"_s][u"coordinates"_s].toArray(), (QJsonArray {7.0, 50.9}));
        QCOMPARE(all[6][u"properties"_s][u"Notes"_s].toString(),
            u"first \"line\"\r\nsecond, <b>line</b> & €\r\n"_s);
        QCOMPARE(all[6][u"properties"_s][u"Freq"_s].toDouble(), 98.7);
        QVERIFY(all[7][u"geometry"_s][u"type"_s].toString().endsWith(u"LineString"_s));
    }

    void gdalReadsTheKml()
    {
        const ShownFixture fixture({trickyReception()});
        const QJsonArray all = readByGdal(shownBytes(fixture.shown(), ShownKind::Kml), u"a.kml"_s);
        QCOMPARE(all.size(), 3);
        QCOMPARE(all[1][u"properties"_s][u"Name"_s].toString(), u"Köln & Bonn (D)"_s);
        QCOMPARE(all[1][u"geometry"_s][u"coordinates"_s].toArray(), (QJsonArray {7.0, 50.9, 200.0}));
        QCOMPARE(all[1][u"properties"_s][u"description"_s].toString().count(u"<li>"_s), 2);
    }

    void tidyFindsNothingInThePage()
    {
        LogEntry entry = trickyReception();
        entry.rdsName = u"<script>alert(1)</script>"_s;
        entry.notes = u"<meta http-equiv=refresh>\x01"_s;
        const ShownFixture fixture({entry});
        const QByteArray page = shownBytes(fixture.shown(), ShownKind::Page);
        const TestDirectory directory;
        directory.write(u"a.html"_s, page);
        QProcess tidy;
        tidy.start(u"tidy"_s, {u"-q"_s, u"-e"_s, u"-utf8"_s, directory.file(u"a.html"_s)});
        QVERIFY(tidy.waitForFinished());
        QCOMPARE(QString::fromUtf8(tidy.readAllStandardError()), QString());
        QCOMPARE(tidy.exitCode(), 0);
        QCOMPARE(page.count("<tr>"), 8);
        QVERIFY(page.contains("<title>Receptions of DL1ABC</title>"));
        QVERIFY(page.contains("7 receptions, written by Quillon on 22/11/2026 05:00:00 UTC"));
        QVERIFY(page.contains("<td>&lt;script&gt;alert(1)&lt;/script&gt;</td>"));
        QVERIFY(page.contains(R"(<td class="n">98,7</td>)"));
        QVERIFY(!page.contains("<script") && !page.contains("<meta http-equiv=refresh"));
    }
};

QTEST_GUILESS_MAIN(TestShownReaders)
#include "tst_shownreaders.moc"
