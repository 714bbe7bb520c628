#include "import/rdsdx.h"

#include "core/logbook.h"
#include "core/logbooklines.h"
#include "platform/runtimeerror.h"

#include <QStringList>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

const QString path = u"/logs/20100612.txt"_s;
const QByteArray header = "Freq   PI   PS       Time    ITU Station\r\n";

Regional western()
{
    return {CodePage(1252), NumberFormat(), MonthNames::of(QLocale::c())};
}

// A line of the layout: every field padded to its columns.
QByteArray line(const QByteArray &freq, const QByteArray &pi, const QByteArray &ps, const QByteArray &time,
    const QByteArray &country, const QByteArray &station)
{
    return freq.leftJustified(7) + pi.leftJustified(5) + ps.leftJustified(9) + time.leftJustified(8)
        + country.leftJustified(4) + station + "\r\n";
}

QByteArray lineAt(const QByteArray &station)
{
    return line("87.6", "D3C3", "BAYERN3", "1430 22", "D", station);
}

// Adds what a file holds to the log, up to what cannot be read or added; returns how many they are.
qint32 importRdsdx(
    Logbook &log, const QByteArray &file, const QString &name,
    const std::function<void(const QString &)> &status = [](const QString &) {})
{
    const RdsdxImport read = readRdsdx(file, name, western(), status);
    for (std::size_t i = 0; i < read.entries.size(); ++i) {
        try {
            log.AddEntry(read.entries[i]);
        } catch (const RuntimeError &error) {
            throw atRdsdxLine(error, file, name, read.lines[i], western());
        }
    }
    if (read.failure) {
        throw RuntimeError(*read.failure);
    }
    return static_cast<qint32>(read.entries.size());
}

struct Imported
{
    Logbook log;
    QStringList statuses;
    qint32 count = 0;
};

Imported imported(const QByteArray &file, const QString &name = path)
{
    Imported result;
    result.count =
        importRdsdx(result.log, file, name, [&](const QString &status) { result.statuses += status; });
    return result;
}

struct Failed
{
    ErrorName name = ErrorName::ServiceError;
    QString doing;
    Logbook log;
};

Failed failed(const QByteArray &file, const QString &name = path)
{
    Failed result;
    try {
        importRdsdx(result.log, file, name);
    } catch (const RuntimeError &error) {
        result.name = error.name();
        result.doing = error.doing();
    }
    return result;
}

} // namespace

class TestRdsdx : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLineBecomesAnEntry()
    {
        const Imported result =
            imported(header + line("87.6", "D3C3", "BAYERN3", "1430 22", "D", "Wendelstein|Es, strong"));
        QCOMPARE(result.count, 1);
        QCOMPARE(result.log.count(), 1);
        LogEntry expected;
        expected.piCode = u"D3C3"_s;
        expected.dateTime = fromCivil({2010, 6, 12, 14, 30, 22}).value();
        expected.freq = u"87.6"_s;
        expected.rdsName = u"BAYERN3"_s;
        expected.country = u"D"_s;
        expected.transmitter = u"Wendelstein"_s;
        expected.notes = u"Es, strong"_s;
        QVERIFY(result.log.entry(0) == expected);
        QCOMPARE(result.statuses, QStringList());
    }

    void fieldsAreCutAtFixedColumns()
    {
        const QString text = u"123456a8901b34567890c2345678d012e456789 | "_s;
        const RdsdxLine fields = rdsdxLine(text);
        QCOMPARE(fields.freq, u"123456");
        QCOMPARE(fields.piCode, u"8901");
        QCOMPARE(fields.rdsName, u"34567890");
        QCOMPARE(fields.time, u"2345678");
        QCOMPARE(fields.country, u"012");
        QCOMPARE(fields.station, u"456789 |");
    }

    void fieldsLoseTheirBlanksAndKeepTheirTabs()
    {
        const QString text = u" 87.6  D3     R  1   930 22   D   \tX |n  "_s;
        const RdsdxLine fields = rdsdxLine(text);
        QCOMPARE(fields.freq, u"87.6");
        QCOMPARE(fields.piCode, u"D3");
        QCOMPARE(fields.rdsName, u"R  1");
        QCOMPARE(fields.time, u"930 22");
        QCOMPARE(fields.country, u"D");
        QCOMPARE(fields.station, u"\tX |n");
    }

    void shortLinesHaveEmptyFields()
    {
        const RdsdxLine fields = rdsdxLine(u"87.6   D3");
        QCOMPARE(fields.freq, u"87.6");
        QCOMPARE(fields.piCode, u"D3");
        QVERIFY(fields.rdsName.isEmpty());
        QVERIFY(fields.time.isEmpty());
        QVERIFY(fields.country.isEmpty());
        QVERIFY(fields.station.isEmpty());
    }

    void aCharacterOfTheCodePageIsOneColumn()
    {
        const Imported result = imported(
            header + line("87.6", "F201", "Caf\xE9 \xC4\xD6", "1430 22", "F", "Chamb\xE9ry|\xE9t\xE9"));
        QCOMPARE(result.log.entry(0).rdsName, u"Caf\u00E9 \u00C4\u00D6"_s);
        QCOMPARE(result.log.entry(0).country, u"F"_s);
        QCOMPARE(result.log.entry(0).transmitter, u"Chamb\u00E9ry"_s);
        QCOMPARE(result.log.entry(0).notes, u"\u00E9t\u00E9"_s);
    }

    void theDateIsInTheFileName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("date"); // empty when there is none
        QTest::newRow("name") << u"20100612.txt"_s << u"12/06/2010 00:00:00"_s;
        QTest::newRow("path") << u"/logs/2009/20100612.txt"_s << u"12/06/2010 00:00:00"_s;
        QTest::newRow("Windows path") << u"C:\\logs\\20100612.txt"_s << u"12/06/2010 00:00:00"_s;
        QTest::newRow("more behind") << u"20100612-2.txt"_s << u"12/06/2010 00:00:00"_s;
        QTest::newRow("leap day") << u"20120229.txt"_s << u"29/02/2012 00:00:00"_s;
        QTest::newRow("no leap day") << u"20100229.txt"_s << QString();
        QTest::newRow("month 13") << u"20101301.txt"_s << QString();
        QTest::newRow("word") << u"stations.txt"_s << QString();
        QTest::newRow("seven digits") << u"2010612.txt"_s << QString();
        QTest::newRow("blank for a digit") << u"2010 612.txt"_s << QString();
        QTest::newRow("short") << u"2010"_s << QString();
        QTest::newRow("empty") << u""_s << QString();
        QTest::newRow("year of zeros") << u"00000612.txt"_s << QString();
    }

    void theDateIsInTheFileName()
    {
        QFETCH(QString, name);
        QFETCH(QString, date);
        if (!date.isEmpty()) {
            QCOMPARE(generalText(rdsdxDate(name)), date);
            return;
        }
        const Failed result = failed(header + lineAt("A|x"), name);
        QCOMPARE(result.name, ErrorName::TypeMismatch);
        QCOMPARE(result.doing,
            QString(u"Importing "_s + name + u": its name does not begin with a date (yyyymmdd)"_s));
        QCOMPARE(result.log.count(), 0);
    }

    void theTimeIsReadByPosition_data()
    {
        QTest::addColumn<QString>("time");
        QTest::addColumn<QString>("dateTime"); // empty when it is none
        QTest::newRow("as written") << u"1430 22"_s << u"12/06/2010 14:30:22"_s;
        QTest::newRow("colon") << u"1430:22"_s << u"12/06/2010 14:30:22"_s;
        QTest::newRow("midnight") << u"0000 00"_s << u"12/06/2010 00:00:00"_s;
        QTest::newRow("last second") << u"2359 59"_s << u"12/06/2010 23:59:59"_s;
        QTest::newRow("blank before the minute") << u"14 5 07"_s << u"12/06/2010 14:05:07"_s;
        QTest::newRow("one digit of seconds") << u"1430 7"_s << u"12/06/2010 14:30:07"_s;
        QTest::newRow("hour 24") << u"2400 00"_s << QString();
        QTest::newRow("minute 60") << u"1460 00"_s << QString();
        QTest::newRow("second 60") << u"1430 60"_s << QString();
        QTest::newRow("hour without its zero") << u"930 22"_s << QString();
        QTest::newRow("no seconds") << u"1430"_s << QString();
        QTest::newRow("colons") << u"14:30:2"_s << QString();
        QTest::newRow("letters") << u"abcd ef"_s << QString();
        QTest::newRow("sign") << u"-130 22"_s << QString();
        QTest::newRow("Arabic digits") << u"\u0661\u0662\u0663\u0660 00"_s << QString();
        QTest::newRow("empty") << u""_s << QString();
    }

    void theTimeIsReadByPosition()
    {
        QFETCH(QString, time);
        QFETCH(QString, dateTime);
        const DateTime date = rdsdxDate(path);
        if (!dateTime.isEmpty()) {
            QCOMPARE(generalText(rdsdxDateTime(date, time)), dateTime);
            return;
        }
        try {
            (void)rdsdxDateTime(date, time);
            QFAIL("no error");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.name(), ErrorName::TypeMismatch);
            QVERIFY(error.doing().contains(u'"' + time + u'"'));
        }
    }

    void stationTextNamesTransmitterAndNotes_data()
    {
        QTest::addColumn<QByteArray>("station");
        QTest::addColumn<QString>("transmitter");
        QTest::addColumn<QString>("notes");
        QTest::newRow("one comma") << QByteArray("D, Berlin|x") << u" Berlin"_s << u"x"_s;
        QTest::newRow("one comma, no blank") << QByteArray("D,Berlin|x") << u"Berlin"_s << u"x"_s;
        QTest::newRow("no comma") << QByteArray("Berlin|x") << u"Berlin"_s << u"x"_s;
        QTest::newRow("blank before the bar") << QByteArray("Berlin |x") << u"Berlin "_s << u"x"_s;
        QTest::newRow("two commas") << QByteArray("A,B,C|x") << u"Brocken"_s << u"x"_s;
        QTest::newRow("nothing before the bar") << QByteArray("|x") << u""_s << u"x"_s;
        QTest::newRow("comma at the end") << QByteArray("D,|x") << u""_s << u"x"_s;
        QTest::newRow("nothing after the bar") << QByteArray("Berlin|") << u"Berlin"_s << u""_s;
        QTest::newRow("second bar") << QByteArray("Berlin|x, y|z|") << u"Berlin"_s << u"x, y"_s;
        QTest::newRow("blanks in the notes") << QByteArray("Berlin| x | z") << u"Berlin"_s << u" x "_s;
        QTest::newRow("commas in the notes") << QByteArray("Berlin|a,b,c") << u"Berlin"_s << u"a,b,c"_s;
    }

    void stationTextNamesTransmitterAndNotes()
    {
        QFETCH(QByteArray, station);
        QFETCH(QString, transmitter);
        QFETCH(QString, notes);
        const Imported result = imported(header + lineAt("D,Brocken|first") + lineAt(station));
        QCOMPARE(result.count, 2);
        QCOMPARE(result.log.entry(1).transmitter, transmitter);
        QCOMPARE(result.log.entry(1).notes, notes);
    }

    void theTransmitterCarriesOverWithinAFile()
    {
        const Imported result = imported(header + lineAt("A,B,C|first") + lineAt("D, Berlin|x")
            + lineAt("A,B,C|x") + lineAt("A,B,C,D|x") + lineAt("Bonn|x"));
        QStringList transmitters;
        for (const LogEntry &entry : result.log) {
            transmitters += entry.transmitter;
        }
        QCOMPARE(transmitters, QStringList({u""_s, u" Berlin"_s, u" Berlin"_s, u" Berlin"_s, u"Bonn"_s}));
    }

    void theTransmitterCarriesOverFromALineThatIsLeftOut()
    {
        const Imported result =
            imported(header + line("", "D3C3", "R1", "1430 22", "D", "D,Berlin|x") + lineAt("A,B,C|x"));
        QCOMPARE(result.log.count(), 1);
        QCOMPARE(result.log.entry(0).transmitter, u"Berlin"_s);
    }

    void linesWithoutFrequencyAreToldAndLeftOut()
    {
        const QByteArray silent = line("", "D3C3", "R1", "1430 22", "D", "Berlin|x");
        const Imported result =
            imported(header + silent + lineAt("Berlin|x") + "\r\n" + "      D3C3 no bar\r\n");
        QCOMPARE(result.count, 1);
        QCOMPARE(result.log.count(), 1);
        QCOMPARE(result.statuses,
            QStringList({QString(u"No Frequency for "_s + QString::fromLatin1(silent.chopped(2))),
                u"No Frequency for "_s, u"No Frequency for       D3C3 no bar"_s}));
    }

    void aHeaderAloneImportsNothing_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::newRow("with its line end") << header;
        QTest::newRow("without") << header.chopped(2);
        QTest::newRow("empty line") << QByteArray("\r\n");
    }

    void aHeaderAloneImportsNothing()
    {
        QFETCH(QByteArray, file);
        const Imported result = imported(file);
        QCOMPARE(result.count, 0);
        QCOMPARE(result.log.count(), 0);
        QCOMPARE(result.statuses, QStringList());
    }

    void linesMayEndInALineFeedOrInNothing()
    {
        QByteArray file = header + lineAt("A|x") + lineAt("B|y");
        file.replace("\r\n", "\n");
        file.chop(1);
        const Imported result = imported(file);
        QCOMPARE(result.count, 2);
        QCOMPARE(result.log.entry(0).notes, u"x"_s);
        QCOMPARE(result.log.entry(1).notes, u"y"_s);
    }

    void anEmptyFileHasNoHeader()
    {
        const Failed result = failed("");
        QCOMPARE(result.name, ErrorName::InputPastEndOfFile);
        QVERIFY(result.doing.startsWith(u"Importing "_s + path));
    }

    void aFailingLineIsToldAndTheEntriesBeforeItStay_data()
    {
        QTest::addColumn<QByteArray>("bad");
        QTest::addColumn<ErrorName>("error");
        QTest::addColumn<QString>("why");
        QTest::newRow("time not numeric")
            << line("87.6", "D3C3", "R1", "14x0 22", "D", "A|x") << ErrorName::TypeMismatch
            << u"the time of day \"14x0 22\" is not hhnn, a separator and ss"_s;
        QTest::newRow("no time") << line("87.6", "D3C3", "R1", "", "D", "A|x") << ErrorName::TypeMismatch
                                 << u"the time of day \"\" is not hhnn, a separator and ss"_s;
        QTest::newRow("no bar") << line("87.6", "D3C3", "R1", "1430 22", "D", "Berlin")
                                << ErrorName::SubscriptOutOfRange << u"the station text has no \"|\""_s;
        QTest::newRow("short line") << QByteArray("87.6\r\n") << ErrorName::TypeMismatch
                                    << u"the time of day \"\" is not hhnn, a separator and ss"_s;
    }

    void aFailingLineIsToldAndTheEntriesBeforeItStay()
    {
        QFETCH(QByteArray, bad);
        QFETCH(ErrorName, error);
        QFETCH(QString, why);
        const Failed result = failed(header + lineAt("A|x") + "\r\n" + bad + lineAt("B|x"));
        QCOMPARE(result.name, error);
        QCOMPARE(result.doing,
            u"Importing /logs/20100612.txt, line 4: %1: \"%2\""_s.arg(
                why, QString::fromLatin1(bad.chopped(2))));
        QCOMPARE(result.log.count(), 1);
        QCOMPARE(result.log.entry(0).transmitter, u"A"_s);
    }

    void aFullLogIsToldWithTheLine()
    {
        QByteArray file = header;
        for (int i = 0; i < 32'600; ++i) {
            file += lineAt("A|x");
        }
        const Failed result = failed(file);
        QCOMPARE(result.name, ErrorName::Overflow);
        QCOMPARE(result.log.count(), 32'498);
        QVERIFY(result.doing.startsWith(u"Importing /logs/20100612.txt, line 32499: The log is full"_s));
    }

    void theSameFileTwiceAppendsItsReceptionsTwice()
    {
        const QByteArray file = header + lineAt("A|x") + lineAt("B|x");
        Logbook log;
        QCOMPARE(importRdsdx(log, file, path), 2);
        QCOMPARE(importRdsdx(log, file, path), 2);
        QCOMPARE(log.count(), 4);
        QVERIFY(log.entry(0) == log.entry(2));
    }

    void theEntriesAreWrittenInTheLogbooksLayout()
    {
        const Imported result = imported(header + lineAt("D, Berlin|x"));
        QCOMPARE(logbookBytes(result.log, western().codePage),
            QByteArray("D3C3|12/06/2010 14:30:22||87.6| Berlin|D|x|BAYERN3|||||\r\n"));
    }

    void ofTenThousandLinesNoneIsLost()
    {
        QByteArray file = header;
        for (int i = 0; i < 10'000; ++i) {
            file += lineAt("D, Berlin|x");
        }
        const Imported result = imported(file);
        const QByteArray bytes = logbookBytes(result.log, western().codePage);
        QCOMPARE(result.count, 10'000);
        QCOMPARE(bytes.count('\n'), 10'000);
    }
};

QTEST_GUILESS_MAIN(TestRdsdx)
#include "tst_rdsdx.moc"
