#include "export/textlog.h"
#include "exportdata.h"
#include "support/testfiles.h"

#include <QTest>

using namespace quillon;
using namespace quillon::test;

namespace {

const QByteArray heading = "Time  Freq   ITU PS       PI   TX           Distance\r\n"
                           "----------------------------------------------------\r\n";

TextLogRange july2010()
{
    return {at(u"01/07/2010 00:00:00"_s), at(u"31/07/2010 23:59:59"_s), false, {}};
}

QByteArray footer(const QByteArray &count)
{
    return "\r\n*Quillon Export:\r\n 01-Jul-2010 00:00 to \r\n 31-Jul-2010 23:59\r\n " + count
        + " Entries\r\n";
}

QStringList row(const QString &time, const QString &freq, const QString &dist, const QString &prop = u"Es"_s)
{
    return {time, u"D382"_s, freq, u"WDR 2"_s, u"D"_s, u"Langenberg"_s, dist, u"power"_s, u"notes"_s, prop};
}

/// The line of a reception on 5 July 2010 at 21:34.
QByteArray lineOf(const QStringList &cells, bool inMiles = false)
{
    TextLogRange range = july2010();
    range.inMiles = inMiles;
    const QByteArray table = textLog(TableGrid(QList<QStringList> {cells}).rows(), range, english());
    const qsizetype begin = table.indexOf("\r\n\r\n21:34z ") + 4;
    return table.mid(begin, table.indexOf("\r\n", begin) - begin);
}

} // namespace

class TestTextLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTableAsGolden()
    {
        TextLogRange range {at(u"03/07/2010 08:15:00"_s), at(u"10/07/2011 06:31:00"_s), false, {}};
        range.mapLink = u"http://127.0.0.1/fm_logmap.php?datum=2010-07-06&band=ALL&hours=0&omid=12"_s;
        QCOMPARE(textLog(TableGrid(sampleLog()).rows(), range, english()), golden(u"quillon.txt"_s));
    }

    void noRowsInTheRangeGiveHeadAndFoot()
    {
        const TableGrid grid(
            {row(u"30/06/2010 23:59:59"_s, u"89"_s, u"1"_s), row(u"01/08/2010"_s, u"89"_s, u"1"_s)});
        QCOMPARE(textLog(grid.rows(), july2010(), english()), heading + footer("0"));
        QCOMPARE(textLog(TableGrid().rows(), july2010(), english()), heading + footer("0"));
        TextLogRange linked = july2010();
        linked.mapLink = u"http://127.0.0.1/x"_s;
        QCOMPARE(
            textLog(grid.rows(), linked, english()), "http://127.0.0.1/x\r\n\r\n" + heading + footer("0"));
    }

    void bothEndsOfTheRangeAreInIt()
    {
        const TableGrid grid(
            {row(u"01/07/2010 00:00:00"_s, u"89"_s, u"1"_s), row(u"31/07/2010 23:59:59"_s, u"89"_s, u"1"_s)});
        QVERIFY(textLog(grid.rows(), july2010(), english()).endsWith(footer("2")));
    }

    void fromAfterToGivesNothing()
    {
        const TableGrid grid(QList<QStringList> {row(u"05/07/2010 21:34:00"_s, u"89"_s, u"1"_s)});
        const TextLogRange range {at(u"06/07/2010"_s), at(u"05/07/2010"_s), false, {}};
        QCOMPARE(textLog(grid.rows(), range, english()),
            heading
                + "\r\n*Quillon Export:\r\n 06-Jul-2010 00:00 to \r\n 05-Jul-2010 00:00\r\n 0 Entries\r\n");
    }

    void aLineIsBuiltFromTheCells_data()
    {
        QTest::addColumn<GridColumn>("column");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("as they are") << GridColumn::PiCode << u"D382"_s
                                     << "21:34z 100.2 D   WDR 2    D382 Langenberg 120 Km"_ba;
        QTest::newRow("frequency without point")
            << GridColumn::Freq << u"89"_s << "21:34z 89.0  D   WDR 2    D382 Langenberg 120 Km"_ba;
        QTest::newRow("frequency cut")
            << GridColumn::Freq << u"100.25"_s << "21:34z 100.2 D   WDR 2    D382 Langenberg 120 Km"_ba;
        QTest::newRow("frequency with comma")
            << GridColumn::Freq << u"89,5"_s << "21:34z 89,5. D   WDR 2    D382 Langenberg 120 Km"_ba;
        QTest::newRow("no frequency")
            << GridColumn::Freq << u""_s << "21:34z .0    D   WDR 2    D382 Langenberg 120 Km"_ba;
        QTest::newRow("no name") << GridColumn::RdsName << u""_s
                                 << "21:34z 100.2 D   ???????? D382 Langenberg 120 Km"_ba;
        QTest::newRow("name of nine")
            << GridColumn::RdsName << u"123456789"_s << "21:34z 100.2 D   12345678 D382 Langenberg 120 Km"_ba;
        QTest::newRow("name of a blank")
            << GridColumn::RdsName << u" "_s << "21:34z 100.2 D            D382 Langenberg 120 Km"_ba;
        QTest::newRow("name with blanks before")
            << GridColumn::RdsName << u"   WDR"_s << "21:34z 100.2 D   WDR      D382 Langenberg 120 Km"_ba;
        QTest::newRow("no PI code") << GridColumn::PiCode << u""_s
                                    << "21:34z 100.2 D   WDR 2    ???? Langenberg 120 Km"_ba;
        QTest::newRow("deleted") << GridColumn::PiCode << u"delete"_s
                                 << "21:34z 100.2 D   WDR 2    dele Langenberg 120 Km"_ba;
        QTest::newRow("no transmitter")
            << GridColumn::Transmitter << u""_s << "21:34z 100.2 D   WDR 2    D382 ??? 120 Km"_ba;
        QTest::newRow("transmitter not padded")
            << GridColumn::Transmitter << u" a "_s << "21:34z 100.2 D   WDR 2    D382  a  120 Km"_ba;
        QTest::newRow("no country") << GridColumn::Country << u""_s
                                    << "21:34z 100.2 ??? WDR 2    D382 Langenberg 120 Km"_ba;
        QTest::newRow("long country") << GridColumn::Country << u"Ö234"_s
                                      << "21:34z 100.2 \xD6"
                                         "23 WDR 2    D382 Langenberg 120 Km"_ba;
    }

    void aLineIsBuiltFromTheCells()
    {
        QFETCH(GridColumn, column);
        QFETCH(QString, text);
        QFETCH(QByteArray, line);
        QStringList cells = row(u"05/07/2010 21:34:59"_s, u"100.2"_s, u"120"_s);
        cells[static_cast<int>(column)] = text;
        QCOMPARE(lineOf(cells), line);
    }

    void distancesAreWholeKilometres_data()
    {
        QTest::addColumn<QString>("dist");
        QTest::addColumn<bool>("inMiles");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("whole") << u"812"_s << false << "812 Km"_ba;
        QTest::newRow("half to even, down") << u"2.5"_s << false << "2 Km"_ba;
        QTest::newRow("half to even, up") << u"3.5"_s << false << "4 Km"_ba;
        QTest::newRow("comma") << u"1234,6"_s << false << "1235 Km"_ba;
        QTest::newRow("zero") << u"0"_s << false << "0 Km"_ba;
        QTest::newRow("negative") << u"-0.4"_s << false << "0 Km"_ba;
        QTest::newRow("miles") << u"100"_s << true << "161 Km"_ba;
        QTest::newRow("fraction of miles") << u"62.1"_s << true << "100 Km"_ba;
        QTest::newRow("no number") << u"n/a"_s << true << "n/a"_ba;
        QTest::newRow("empty") << u""_s << false << ""_ba;
        QTest::newRow("more than a single holds") << u"1e39"_s << false << "1e39"_ba;
    }

    void distancesAreWholeKilometres()
    {
        QFETCH(QString, dist);
        QFETCH(bool, inMiles);
        QFETCH(QByteArray, expected);
        QCOMPARE(lineOf(row(u"05/07/2010 21:34:00"_s, u"89.5"_s, dist), inMiles),
            "21:34z 89.5  D   WDR 2    D382 Langenberg " + expected);
    }

    void aHeadingOpensEachDayAndEachChangeOfMode()
    {
        const TableGrid grid({
            row(u"04/07/2010 10:00:00"_s, u"1.0"_s, u"1"_s, u"Es"_s),
            row(u"05/07/2010 10:00:00"_s, u"2.0"_s, u"1"_s, u"Es"_s),
            row(u"05/07/2010 11:00:00"_s, u"3.0"_s, u"1"_s, u"Es"_s),
            row(u"05/07/2010 12:00:00"_s, u"4.0"_s, u"1"_s, u""_s),
            row(u"05/07/2010 13:00:00"_s, u"5.0"_s, u"1"_s, u"Es"_s),
        });
        const QByteArray end = "   D   WDR 2    D382 Langenberg 1 Km\r\n";
        QCOMPARE(textLog(grid.rows(), july2010(), english()),
            heading + "\r\n05-Jul-2010 Es\r\n\r\n13:00z 5.0" + end + "\r\n05-Jul-2010 \r\n\r\n12:00z 4.0"
                + end + "\r\n05-Jul-2010 Es\r\n\r\n11:00z 3.0" + end + "10:00z 2.0" + end
                + "\r\n04-Jul-2010 Es\r\n\r\n10:00z 1.0" + end + footer("5"));
    }

    void monthsAreNamedInTheLocale()
    {
        const TableGrid grid(QList<QStringList> {row(u"05.03.2010 21:34"_s, u"89"_s, u"1"_s)});
        const TextLogRange range {at(u"01/03/2010"_s), at(u"01/04/2010"_s), false, {}};
        const QByteArray german = textLog(grid.rows(), range, regionalOf(u"de_DE"_s));
        QVERIFY(german.contains("\r\n05-M\xE4r-2010 Es\r\n"));
        QVERIFY(german.contains("\r\n 01-M\xE4r-2010 00:00 to \r\n 01-Apr-2010 00:00\r\n"));
        QVERIFY(textLog(grid.rows(), range, english()).contains("\r\n05-Mar-2010 Es\r\n"));
    }

    void aRowWithoutADateIsToldAndNothingIsWritten()
    {
        const TestDirectory directory;
        directory.write(u"quillon.txt"_s, "old");
        const TableGrid grid(QList<QStringList> {
            row(u"32/07/2010"_s, u"89"_s, u"1"_s), row(u"05/07/2010"_s, u"89"_s, u"1"_s)});
        QCOMPARE(errorOf([&] { writeTextLog(directory.path(), grid.rows(), july2010(), english()); }),
            u"Run-time error: Type mismatch\nExporting row 1 of the log: \"32/07/2010\" is not a date and time"_s);
        QCOMPARE(directory.read(u"quillon.txt"_s), "old"_ba);
    }

    void theFileIsWrittenWholeOrNotAtAll()
    {
        const TableGrid grid(QList<QStringList> {row(u"05/07/2010"_s, u"89"_s, u"1"_s)});
        const QByteArray expected = textLog(grid.rows(), july2010(), english());
        for (int failing = 1;; ++failing) {
            const TestDirectory directory;
            directory.write(u"Quillon.txt"_s, "old");
            FailingCalls calls(failing);
            QString path;
            const QString error = errorOf([&] {
                path = writeTextLog(directory.path(), grid.rows(), july2010(), english(), calls).path;
            });
            const QByteArray now = directory.read(u"Quillon.txt"_s);
            QVERIFY(now == "old" || now == expected);
            QCOMPARE(directory.names(), QStringList {u"Quillon.txt"_s});
            if (!calls.hasFailed()) {
                QCOMPARE(path, directory.file(u"Quillon.txt"_s));
                QCOMPARE(now, expected);
                break;
            }
            QCOMPARE(error, u"Run-time error: Disk full\nWriting "_s + directory.file(u"Quillon.txt"_s));
        }
    }
};

QTEST_GUILESS_MAIN(TestTextLog)
#include "tst_textlog.moc"
