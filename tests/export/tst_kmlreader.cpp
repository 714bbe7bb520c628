#include "core/logbookfile.h"
#include "export/kml.h"
#include "exportdata.h"
#include "support/testfiles.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
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

    void theMonthsOfAYearOfTheDemoHoldItsReceptions()
    {
        const Demo demo;
        const HeardKml heard(demo.log, demo.transmitters, english());
        int expected = 0;
        for (const Reception &reception : findReceptions(demo.log, demo.transmitters)) {
            expected += civil(demo.log.entry(reception.entry).dateTime).year == 2024 ? 1 : 0;
        }
        int lines = 0;
        for (int month = 1; month <= 12; ++month) {
            if (const auto document = heard.month(*fromCivil({2024, month, 1, 0, 0, 0}))) {
                lines += listLines(readByGdal(asUtf8(*document)));
            }
        }
        QVERIFY(expected > 20);
        QCOMPARE(lines, expected);
    }
};

QTEST_GUILESS_MAIN(TestKmlReader)
#include "tst_kmlreader.moc"
