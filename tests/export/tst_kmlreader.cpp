#include "core/logbookfile.h"
#include "export/kml.h"
#include "exportdata.h"
#include "support/testfiles.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSet>
#include <QTest>

#include <algorithm>

using namespace quillon;
using namespace quillon::test;

namespace {

/// A placemark as another program reads it.
struct Placemark
{
    QString name;
    double longitude = 0;
    double latitude = 0;
    double altitude = 0;
    QString description;
};

/// The placemarks that GDAL finds in a document.
QList<Placemark> readByGdal(const QByteArray &document)
{
    const TestDirectory directory;
    directory.write(u"document.kml"_s, document);
    QProcess ogr2ogr;
    ogr2ogr.start(u"ogr2ogr"_s, {u"-f"_s, u"GeoJSON"_s, u"/vsistdout/"_s, directory.file(u"document.kml"_s)});
    if (!ogr2ogr.waitForFinished() || ogr2ogr.exitCode() != 0) {
        qWarning("ogr2ogr (package gdal-bin): %s", ogr2ogr.readAllStandardError().constData());
        return {};
    }
    QList<Placemark> placemarks;
    const QJsonArray features =
        QJsonDocument::fromJson(ogr2ogr.readAllStandardOutput()).object()[u"features"_s].toArray();
    for (const auto &feature : features) {
        const QJsonArray position = feature[u"geometry"_s][u"coordinates"_s].toArray();
        const QJsonValue properties = feature[u"properties"_s];
        placemarks.append({properties[u"Name"_s].toString(), position.at(0).toDouble(),
            position.at(1).toDouble(), position.at(2).toDouble(), properties[u"description"_s].toString()});
    }
    return placemarks;
}

QByteArray demoFile(const QString &name)
{
    QFile file(QStringLiteral(QUILLON_TEST_DATA "/../../data/demo/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The sample log that is supplied for a first look at the program.
struct Demo
{
    Demo()
    {
        readLogbook(log, demoFile(u"RDSLog.log"_s), english(), u"RDSLog.log"_s);
        readTransmitters(transmitters, demoFile(u"tx.lst"_s), CodePage(1252), u"tx.lst"_s);
    }

    Logbook log;
    TransmitterList transmitters;
};

bool isPlain(const QString &text)
{
    return std::ranges::all_of(text, [](QChar c) { return c.unicode() < 0x80 && c != u'&' && c != u'<'; });
}

/// The part of the sample log that a strict reader understands as it is written: names with "&" and "<" are
/// written as they stand, and letters outside ASCII are in the code page although the file declares UTF-8.
struct PlainDemo
{
    PlainDemo()
    {
        const Demo demo;
        for (int i = 0; i < demo.transmitters.count(); ++i) {
            const Transmitter &transmitter = demo.transmitters.row(i);
            if (isPlain(transmitter.name) && isPlain(transmitter.country)) {
                transmitters.add(transmitter);
            }
        }
        for (const LogEntry &entry : demo.log) {
            if (isPlain(entry.rdsName) && isPlain(entry.transmitter)) {
                log.AddEntry(entry);
            }
        }
    }

    Logbook log;
    TransmitterList transmitters;
};

/// The document in true UTF-8, as other programs read it. Written it is in the code page, although it
/// declares UTF-8: a strict reader stops at the first letter outside ASCII.
QByteArray asUtf8(const QByteArray &document)
{
    return CodePage(1252).decode(document).toUtf8();
}

int listLines(const QList<Placemark> &placemarks)
{
    qsizetype lines = 0;
    for (const Placemark &placemark : placemarks) {
        lines += placemark.description.count(u"<li>"_s);
    }
    return static_cast<int>(lines);
}

/// A month's file: how many placemarks it has, and how many receptions they list.
struct Month
{
    int month = 0;
    int placemarks = 0;
    int receptions = 0;

    bool operator==(const Month &) const = default;
};

/// The transmitters that entries of the month name, in the order of the list.
TransmitterList heardIn(const Demo &demo, int year, int month)
{
    QSet<QString> named;
    for (const LogEntry &entry : demo.log) {
        const CivilTime moment = civil(entry.dateTime);
        if (moment.year == year && moment.month == month) {
            named += entry.transmitter + u'|' + entry.country;
        }
    }
    TransmitterList heard;
    for (const Transmitter &transmitter : demo.transmitters) {
        if (named.contains(transmitter.name + u'|' + transmitter.country)) {
            heard.add(transmitter);
        }
    }
    return heard;
}

void compare(const QList<Placemark> &read, const TransmitterList &expected)
{
    QCOMPARE(read.size(), expected.count());
    int row = 0;
    for (const Placemark &placemark : read) {
        const Transmitter &transmitter = expected.row(row++);
        QCOMPARE(placemark.name, transmitter.name + u" ("_s + transmitter.country + u')');
        QCOMPARE(placemark.longitude, transmitter.longitude.toDouble());
        QCOMPARE(placemark.latitude, transmitter.latitude.toDouble());
        QCOMPARE(placemark.altitude, 200.0);
    }
}

} // namespace

class TestKmlReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNameToEncodeIsReadAsItWas()
    {
        const Logbook log = sampleLog();
        const TransmitterList list = sampleTransmitters();
        const HeardKml heard(log, list, english());
        const QList<Placemark> read = readByGdal(heard.full());
        QCOMPARE(read.size(), 3);
        QCOMPARE(read[2].name, u"Köln & Bonn (D)"_s);
        QCOMPARE(read[2].longitude, 7.0);
        QCOMPARE(read[2].latitude, 50.9);
        QCOMPARE(readByGdal(*heard.month(at(u"01/07/2011"_s))).size(), 2);
    }

    void aLogInAsciiIsReadAsItIsWritten()
    {
        const PlainDemo demo;
        const auto receptions = findReceptions(demo.log, demo.transmitters);
        QVERIFY(demo.transmitters.count() > 40);
        QVERIFY(receptions.size() > 100);
        compare(readByGdal(transmitterKml(demo.transmitters, CodePage(1252))), demo.transmitters);
        const auto all = readByGdal(logbookKml(demo.log, demo.transmitters, CodePage(1252)));
        compare(all, demo.transmitters);
        QCOMPARE(listLines(all), static_cast<int>(receptions.size()));
        const HeardKml heard(demo.log, demo.transmitters, english());
        QCOMPARE(listLines(readByGdal(heard.full())), static_cast<int>(receptions.size()));
        int lines = 0;
        int expected = 0;
        for (const Reception &reception : receptions) {
            expected += civil(demo.log.entry(reception.entry).dateTime).year == 2024 ? 1 : 0;
        }
        for (int month = 1; month <= 12; ++month) {
            if (const auto document = heard.month(*fromCivil({2024, month, 1, 0, 0, 0}))) {
                lines += listLines(readByGdal(*document));
            }
        }
        QVERIFY(expected > 10);
        QCOMPARE(lines, expected);
    }

    void everyTransmitterOfTheDemoIsAtItsPlace()
    {
        const Demo demo;
        QVERIFY(demo.transmitters.count() > 50);
        compare(readByGdal(asUtf8(transmitterKml(demo.transmitters, CodePage(1252)))), demo.transmitters);
    }

    void everyReceptionOfTheDemoIsListed()
    {
        const Demo demo;
        QVERIFY(demo.log.count() > 300);
        const auto read = readByGdal(asUtf8(logbookKml(demo.log, demo.transmitters, CodePage(1252))));
        compare(read, demo.transmitters);
        QCOMPARE(listLines(read), static_cast<int>(findReceptions(demo.log, demo.transmitters).size()));
    }

    void everyHeardTransmitterOfTheDemoIsInTheWholeLog()
    {
        const Demo demo;
        TransmitterList heardOnes;
        for (const Reception &reception : findReceptions(demo.log, demo.transmitters)) {
            heardOnes.add(demo.transmitters.row(reception.transmitter));
        }
        compare(readByGdal(asUtf8(HeardKml(demo.log, demo.transmitters, english()).full())), heardOnes);
    }

    void everyMonthOfTheDemoHasItsTransmittersAtTheirPlaces_data()
    {
        QTest::addColumn<int>("year");
        QTest::addColumn<QList<Month>>("months");
        QTest::newRow("2019") << 2019
                              << QList<Month> {{4, 4, 6}, {5, 8, 10}, {6, 14, 22}, {7, 5, 9}, {8, 1, 1},
                                     {9, 9, 9}, {12, 1, 1}};
        QTest::newRow("2020") << 2020
                              << QList<Month> {
                                     {1, 7, 11}, {5, 5, 10}, {6, 9, 21}, {7, 7, 10}, {8, 2, 2}, {9, 5, 8}};
        QTest::newRow("2021") << 2021
                              << QList<Month> {{4, 1, 1}, {5, 6, 12}, {6, 7, 16}, {7, 7, 12}, {8, 1, 1},
                                     {10, 8, 9}, {12, 1, 1}};
        QTest::newRow("2022") << 2022
                              << QList<Month> {
                                     {1, 7, 7}, {5, 2, 5}, {6, 12, 25}, {7, 5, 9}, {8, 1, 1}, {10, 6, 10}};
        QTest::newRow("2023") << 2023
                              << QList<Month> {
                                     {5, 6, 12}, {6, 13, 23}, {7, 4, 8}, {8, 1, 1}, {9, 7, 8}, {12, 1, 1}};
        QTest::newRow("2024") << 2024
                              << QList<Month> {{1, 9, 9}, {5, 6, 10}, {6, 9, 18}, {8, 1, 1}, {9, 7, 10},
                                     {10, 5, 7}, {12, 1, 1}};
        QTest::newRow("2025") << 2025 << QList<Month> {{6, 15, 20}};
    }

    void everyMonthOfTheDemoHasItsTransmittersAtTheirPlaces()
    {
        QFETCH(int, year);
        QFETCH(QList<Month>, months);
        const Demo demo;
        const HeardKml heard(demo.log, demo.transmitters, english());
        QList<Month> found;
        for (int month = 1; month <= 12; ++month) {
            if (const auto document = heard.month(*fromCivil({year, month, 1, 0, 0, 0}))) {
                const auto read = readByGdal(asUtf8(*document));
                found.append({month, static_cast<int>(read.size()), listLines(read)});
                compare(read, heardIn(demo, year, month));
            }
        }
        QCOMPARE(found, months);
    }
};

QTEST_GUILESS_MAIN(TestKmlReader)
#include "tst_kmlreader.moc"
