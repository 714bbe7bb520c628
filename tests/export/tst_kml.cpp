#include "export/kmlfiles.h"
#include "export/mapscript.h"
#include "exportdata.h"
#include "support/testfiles.h"

#include <QDir>
#include <QTest>

using namespace quillon;
using namespace quillon::test;

namespace {

QByteArray emptyDocument(const QByteArray &folder)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<kml xmlns=\"http://earth.google.com/kml/2.1\">\r\n"
           "<Folder>\r\n<name>"
        + folder + "</name>\r\n</Folder>\r\n</kml> \r\n";
}

} // namespace

class TestKml : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void transmittersAsGolden()
    {
        QCOMPARE(transmitterKml(sampleTransmitters(), CodePage(1252)), golden(u"tx.kml"_s));
    }

    void logbookAsGolden()
    {
        QCOMPARE(logbookKml(sampleLog(), sampleTransmitters(), CodePage(1252)), golden(u"quillon.kml"_s));
    }

    void fullAndMonthlyAsGolden()
    {
        const Logbook log = sampleLog();
        const TransmitterList list = sampleTransmitters();
        const HeardKml heard(log, list, english());
        QCOMPARE(heard.full(), golden(u"html_quillon.kml"_s));
        QCOMPARE(*heard.month(at(u"31/07/2010"_s)), golden(u"html_quillon_log_2010-Jul.kml"_s));
    }

    void anEmptyListGivesAnEmptyFolder()
    {
        const Logbook log = sampleLog();
        const TransmitterList none;
        QCOMPARE(transmitterKml(none, CodePage()), emptyDocument("Quillon - Export TX"));
        QCOMPARE(logbookKml(log, none, CodePage()), emptyDocument("Quillon - Export LogBook"));
        QCOMPARE(HeardKml(log, none, english()).full(), emptyDocument("Quillon Full"));
    }

    void heardTwiceIsOnePlacemarkWithTwoLinesInLogOrder()
    {
        // Entered out of the order of time.
        Logbook log;
        log.AddEntry(reception(u"09/07/2010 10:00:00"_s, u"B"_s, u"89"_s, u"later"_s, u"X"_s, u"D"_s));
        log.AddEntry(reception(u"01/07/2010 10:00:00"_s, u"A"_s, u"89"_s, u"sooner"_s, u"X"_s, u"D"_s));
        log.AddEntry(reception(u"01/07/2010 10:00:00"_s, u"C"_s, u"89"_s, u"abroad"_s, u"X"_s, u"F"_s));
        TransmitterList list;
        list.add({u"X"_s, u"D"_s, u"1"_s, u"2"_s, {}});
        list.add({u"X"_s, u"F"_s, u"3"_s, u"4"_s, {}});
        const HeardKml heard(log, list, english());
        const QByteArray month = *heard.month(at(u"05/07/2010"_s));
        QCOMPARE(month.count("<Placemark>"), 2);
        QVERIFY(month.contains("<Placemark><name>X (D)</name>\r\n<description><![CDATA[ <ol>\r\n"
                               "<li>[09/07/2010 10:00:00] [B] [later] [89]</li>\r\n"
                               "<li>[01/07/2010 10:00:00] [A] [sooner] [89]</li>\r\n"
                               "</ol>]]> </description>\r\n"));
        QVERIFY(month.contains("<Placemark><name>X (F)</name>\r\n<description><![CDATA[ <ol>\r\n"
                               "<li>[01/07/2010 10:00:00] [C] [abroad] [89]</li>\r\n"
                               "</ol>]]> </description>\r\n"));
    }

    void belongingIsExact()
    {
        Logbook log;
        log.AddEntry(reception(u"09/07/2010 10:00:00"_s, u"A"_s, u"89"_s, u""_s, u"x"_s, u"D"_s));
        log.AddEntry(reception(u"09/07/2010 10:00:00"_s, u"A"_s, u"89"_s, u""_s, u"X "_s, u"D"_s));
        log.AddEntry(reception(u"09/07/2010 10:00:00"_s, u"A"_s, u"89"_s, u""_s, u"X"_s, u"d"_s));
        TransmitterList list;
        list.add({u"X"_s, u"D"_s, u"1"_s, u"2"_s, {}});
        QVERIFY(findReceptions(log, list).empty());
        QVERIFY(!HeardKml(log, list, english()).month(at(u"09/07/2010"_s)));
    }

    void neverHeardHasAnEmptyListInTheLogbookOnly()
    {
        const Logbook log = sampleLog();
        const TransmitterList list = sampleTransmitters();
        const HeardKml heard(log, list, english());
        QVERIFY(logbookKml(log, list, CodePage())
                    .contains("<name>Never heard (D)</name>\r\n<description><![CDATA[ <ol>\r\n"
                              "</ol>]]> </description>\r\n"));
        QVERIFY(!heard.full().contains("Never heard"));
        QVERIFY(!heard.month(at(u"01/07/2010"_s))->contains("Never heard"));
    }

    void onlyMonthlyAndFullEncodeTheSiteAndNeverTheCountry()
    {
        Logbook log;
        log.AddEntry(reception(u"09/07/2010 10:00:00"_s, u"A"_s, u"89"_s, u"<&>"_s, u"A&<B"_s, u"C&D"_s));
        TransmitterList list;
        list.add({u"A&<B"_s, u"C&D"_s, u"1"_s, u"2"_s, {}});
        const HeardKml heard(log, list, english());
        QVERIFY(transmitterKml(list, CodePage()).contains("<name>A&<B (C&D)</name>"));
        QVERIFY(logbookKml(log, list, CodePage()).contains("<name>A&<B (C&D)</name>"));
        QVERIFY(heard.full().contains("<name>A&#38;&#60;B (C&D)</name>"));
        QVERIFY(heard.month(at(u"09/07/2010"_s))->contains("<name>A&#38;&#60;B (C&D)</name>"));
        QVERIFY(heard.full().contains("] [<&>] ["));
    }

    void coordinatesAreCopiedEvenWhenEmpty()
    {
        TransmitterList list;
        list.add({u"X"_s, u"D"_s, u"52,5"_s, u" 7.10"_s, {}});
        list.add({u"Y"_s, u"D"_s, u"1"_s, u""_s, {}});
        list.add({u"Z"_s, u"D"_s, u""_s, u"2"_s, {}});
        const QByteArray document = transmitterKml(list, CodePage());
        QVERIFY(document.contains("<coordinates> 7.10,52,5,200</coordinates>"));
        QVERIFY(document.contains("<coordinates>,1,200</coordinates>"));
        QVERIFY(document.contains("<coordinates>2,,200</coordinates>"));
    }

    void theSameMonthOfAnotherYearIsAnotherFile()
    {
        const Logbook log = sampleLog();
        const TransmitterList list = sampleTransmitters();
        const HeardKml heard(log, list, english());
        const QByteArray july2010 = *heard.month(at(u"01/07/2010"_s));
        const QByteArray july2011 = *heard.month(at(u"01/07/2011"_s));
        QVERIFY(july2010.contains("<name>Quillon 2010-Jul</name>"));
        QVERIFY(july2011.contains("<name>Quillon 2011-Jul</name>"));
        QVERIFY(!july2010.contains("/2011 "));
        QVERIFY(!july2011.contains("/2010 "));
    }

    void theMonthIsNamedInTheLocale()
    {
        Logbook log;
        log.AddEntry(reception(u"09/03/2010 10:00:00"_s, u"A"_s, u"89"_s, u""_s, u"X"_s, u"D"_s));
        TransmitterList list;
        list.add({u"X"_s, u"D"_s, u"1"_s, u"2"_s, {}});
        QVERIFY(HeardKml(log, list, regionalOf(u"de_DE"_s))
                    .month(at(u"01/03/2010"_s))
                    ->contains("<name>Quillon 2010-M\xE4r</name>"));
        QVERIFY(HeardKml(log, list, english())
                    .month(at(u"01/03/2010"_s))
                    ->contains("<name>Quillon 2010-Mar</name>"));
    }

    void textIsWrittenInTheCodePage()
    {
        TransmitterList list;
        list.add({u"Łódź"_s, u"Š"_s, u"1"_s, u"2"_s, {}});
        QVERIFY(transmitterKml(list, CodePage(1250))
                    .contains("<name>\xA3\xF3"
                              "d\x9F (\x8A)</name>"));
        QVERIFY(transmitterKml(list, CodePage(1252))
                    .contains("<name>L\xF3"
                              "dz (\x8A)</name>"));
    }

    void filesAreWrittenWholeAndNamed()
    {
        const TestDirectory directory;
        directory.write(u"tx.kml"_s, "an older and much longer file than the new one could ever be");
        directory.write(u"Quillon.KML"_s, "old");
        const TransmitterList none;
        QCOMPARE(writeTransmitterKml(directory.path(), none, CodePage()), directory.file(u"tx.kml"_s));
        QCOMPARE(
            writeLogbookKml(directory.path(), Logbook(), none, CodePage()), directory.file(u"Quillon.KML"_s));
        QCOMPARE(directory.names(), (QStringList {u"Quillon.KML"_s, u"tx.kml"_s}));
        QCOMPARE(directory.read(u"tx.kml"_s), emptyDocument("Quillon - Export TX"));
        QCOMPARE(directory.read(u"Quillon.KML"_s), emptyDocument("Quillon - Export LogBook"));
    }

    void aMonthWithoutPlacemarksLeavesNoFile()
    {
        const TestDirectory directory;
        const Logbook log = sampleLog();
        const TransmitterList list = sampleTransmitters();
        const HeardKml heard(log, list, english());
        const MapFiles files {directory.file(u"month.kml"_s), directory.file(u"month.kml.js"_s)};
        QVERIFY(!writeMonthlyKml(files, heard, at(u"01/08/2010"_s)));
        QCOMPARE(directory.names(), QStringList());
        QVERIFY(writeMonthlyKml(files, heard, at(u"01/07/2010"_s)));
        QCOMPARE(directory.names(), (QStringList {u"month.kml"_s, u"month.kml.js"_s}));
        QCOMPARE(directory.read(u"month.kml"_s), golden(u"html_quillon_log_2010-Jul.kml"_s));
        QCOMPARE(directory.read(u"month.kml.js"_s), mapScript(golden(u"html_quillon_log_2010-Jul.kml"_s)));
        QVERIFY(!writeMonthlyKml(files, heard, at(u"01/08/2010"_s)));
        QCOMPARE(directory.names(), QStringList());
    }

    void aFileThatCannotBeWrittenIsTold()
    {
        const TestDirectory directory;
        const Logbook log = sampleLog();
        const TransmitterList list = sampleTransmitters();
        const HeardKml heard(log, list, english());
        const QString missing = directory.file(u"html/month.kml"_s);
        QCOMPARE(errorOf([&] {
            writeMonthlyKml({missing, missing + u".js"_s}, heard, at(u"01/07/2010"_s));
        }),
            u"Run-time error: Path not found\nWriting "_s + missing);
        const QString folder = directory.file(u"folder"_s);
        QVERIFY(QDir().mkpath(folder));
        QCOMPARE(errorOf([&] {
            writeMonthlyKml({folder, folder + u".js"_s}, heard, at(u"01/08/2010"_s));
        }),
            u"Run-time error: Permission denied\nDeleting "_s + folder);
        QCOMPARE(errorOf([&] { writeTransmitterKml(missing, list, CodePage()); }),
            u"Run-time error: Path not found\nWriting "_s + missing + u"/tx.kml"_s);
    }

    void aFailingDiskLeavesTheOldFileOrTheNew()
    {
        const Logbook log = sampleLog();
        const TransmitterList list = sampleTransmitters();
        for (int failing = 1;; ++failing) {
            const TestDirectory directory;
            directory.write(u"quillon.kml"_s, "old");
            FailingCalls calls(failing);
            const QString error =
                errorOf([&] { writeLogbookKml(directory.path(), log, list, CodePage(1252), calls); });
            const QByteArray now = directory.read(u"quillon.kml"_s);
            QVERIFY(now == "old" || now == golden(u"quillon.kml"_s));
            QCOMPARE(directory.names(), QStringList {u"quillon.kml"_s});
            if (!calls.hasFailed()) {
                QCOMPARE(error, QString());
                QCOMPARE(now, golden(u"quillon.kml"_s));
                QVERIFY(failing > 6);
                break;
            }
            QCOMPARE(error, u"Run-time error: Disk full\nWriting "_s + directory.file(u"quillon.kml"_s));
        }
    }
};

QTEST_GUILESS_MAIN(TestKml)
#include "tst_kml.moc"
