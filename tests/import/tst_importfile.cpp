#include "core/logfields.h"
#include "import/importfile.h"
#include "import/importlimits.h"
#include "import/importsession.h"
#include "import/refusedlines.h"
#include "support/importsamples.h"
#include "support/testfiles.h"

#include <QLocale>
#include <QTest>

#include <zlib.h>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

ImportSurroundings surroundings(const QByteArray &zone = "UTC")
{
    return {Regional {CodePage(1252), NumberFormat(), MonthNames::of(QLocale::c())}, QTimeZone(zone), false};
}

ImportReading read(const QByteArray &bytes, const QString &name = u"log.csv"_s,
    const QByteArray &zone = "UTC", const FormatChoice &choice = {})
{
    const auto sources = sourcesOf(name, bytes);
    return readImportFile(sources.front(), choice, {}, surroundings(zone), mostImportRows);
}

// A row on one line: the fields in the order of the file, or why it is refused.
QString told(const ImportRow &row)
{
    if (row.isRefused()) {
        return u"%1 refused: %2"_s.arg(row.line).arg(row.refusal);
    }
    QStringList fields {QString::number(row.line)};
    for (const LogColumn &column : logFields()) {
        fields += column.text ? row.entry.*column.text : generalText(row.entry.dateTime);
    }
    return fields.join(u'|');
}

QStringList told(const ImportReading &reading)
{
    QStringList rows;
    for (const ImportRow &row : reading.rows) {
        rows += told(row);
    }
    if (!reading.refusal.isEmpty()) {
        rows += u"not read: "_s + reading.refusal;
    }
    return rows;
}

} // namespace

class TestImportFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachKindIsKnownByItsContent_data();
    void eachKindIsKnownByItsContent();
    void encodingsAreToldApart_data();
    void encodingsAreToldApart();
    void oneNumberTellsTheDecimalSign();
    void whatIsChosenGoesBeforeWhatIsTold();
    void localTimesFollowTheZone_data();
    void localTimesFollowTheZone();
    void ownFilesComeInAsTheyWere();
    void aLineFeedInTheNotesIsFollowedFor4096Characters();
    void refusedWithTheReason_data();
    void refusedWithTheReason();
    void badFilesAreRefusedInWords_data();
    void badFilesAreRefusedInWords();
    void aFileOfAGigabyteIsNotRead();
    void aBombIsNotUnpacked();
    void aFolderGivesItsFiles();
    void refusedLinesComeBackMended();
    void refusedLinesAreReadAsTheirFileWas();
    void whatIsSaidOfRefusedLinesStaysOnItsLine();
    void whatTheListenerSaidOfAFileComesWithItsRefusedLines();
    void refusedLinesOfAFileWithoutAHeadingAreGivenOne();
    void linesBehindARefusedPiCodeStayWithIt();
    void refusedLinesOfTooManyFilesAreRefused();
    void longNamesOfColumnsAreCut();
    void everyCodePageIsOffered();
    void otherColumnsAreGuessedAndAsked();
    void aFileWithoutAHeadingIsNotRemembered();
};

void TestImportFile::whatIsSaidOfRefusedLinesStaysOnItsLine()
{
    const std::vector<ImportSource> sources = sourcesOf(u"a\r\n<b>x</b>\n.csv"_s,
        "Date/Time,PI Code,Freq,RDS Name\n12/06/2010 18:22:05,D3C1,<img src=x>,\"one\nD3C1\"\n");
    const std::vector<ImportReading> readings {
        readImportFile(sources.front(), {}, {}, surroundings(), mostImportRows)};
    const QByteArray refused = refusedLines(sources, readings);
    QVERIFY2(refused.contains("\r\n#! file: a  <b>x</b> .csv\r\n"), refused.constData());
    const ImportReading again =
        readImportFile(sourcesOf(u"refused.txt"_s, refused).front(), {}, {}, surroundings(), mostImportRows);
    QCOMPARE(again.rows.size(), std::size_t {1});
    QVERIFY(again.rows.front().isRefused());
}

void TestImportFile::refusedLinesAreReadAsTheirFileWas()
{
    // Neither the order of its date nor its decimal sign can be told of the line alone.
    const std::vector<ImportSource> sources =
        sourcesOf(u"a.csv"_s, "Date;Local time;MHz;PI\n03/04/2025;12:00;98,5;D3CX\n");
    FormatChoice choice;
    choice.dates = DateOrder::MonthFirst;
    choice.decimalComma = true;
    choice.localTime = true;
    choice.columns = {ColumnUse::Date, ColumnUse::Time, ColumnUse::Freq, ColumnUse::PiCode};
    const std::vector<ImportReading> readings {
        readImportFile(sources.front(), choice, {}, surroundings("Europe/Berlin"), mostImportRows)};
    QByteArray refused = refusedLines(sources, readings);
    QVERIFY2(refused.contains("dates=month first; decimal=comma; times=Europe/Berlin; "
                              "separator=semicolon; columns=date,time,freq,pi\r\n"),
        refused.constData());
    Logbook log;
    ImportSession session(log, surroundings(), {}, 0);
    session.setSources(
        sourcesOf(u"mended.txt"_s, refused.replace("D3CX", "D3C2").replace("98,5", "1.098,5")));
    QCOMPARE(session.rows().size(), std::size_t(1));
    QCOMPARE(told(*session.rows().front()).section(u'|', 0, 3), u"6|D3C2|04/03/2025 11:00:00|"_s);
    QCOMPARE(session.rows().front()->entry.freq, u"1.0985"_s);
    QCOMPARE(session.zone(), QTimeZone("Europe/Berlin"));
    // What the listener chooses goes before it.
    session.setZone(QTimeZone::utc());
    session.choice(0).dates = DateOrder::DayFirst;
    session.read();
    QCOMPARE(told(*session.rows().front()).section(u'|', 2, 2), u"03/04/2025 12:00:00"_s);
}

void TestImportFile::whatTheListenerSaidOfAFileComesWithItsRefusedLines()
{
    const auto sources = sourcesOf(u"a.csv"_s,
        CodePage(1250).encode(u"Kiedy|Gdzie|Ile|Kod\n21.11.2025 18:30|\u0141\u00F3d\u017A; x|98,5|D3CX\n"_s));
    FormatChoice choice;
    choice.encoding = TextEncoding::Windows1250;
    choice.separator = u'|';
    choice.columns = {ColumnUse::DateTime, ColumnUse::Transmitter, ColumnUse::Freq, ColumnUse::PiCode};
    const std::vector<ImportReading> readings {
        readImportFile(sources.front(), choice, {}, surroundings(), mostImportRows)};
    QByteArray refused = refusedLines(sources, readings);
    QVERIFY2(refused.contains("; separator=bar; columns=datetime,site,freq,pi\r\n"), refused.constData());
    // Nobody remembers the heading, and there is a semicolon in each of its lines now.
    refused.replace("Gdzie", "Gdzie;").replace("D3CX", "D3C2");
    const auto mended = sourcesOf(u"mended.txt"_s, refused);
    const ImportReading again =
        readImportFile(mended.front(), mended.front().choice, {}, surroundings(), mostImportRows);
    QVERIFY(!again.format.guessed);
    QCOMPARE(again.format.encoding, TextEncoding::Utf8);
    QCOMPARE(told(again), QStringList {u"6|D3C2|21/11/2025 18:30:00||98.5|L\u00F3dz; x|TBD||||||"_s});
    // What is none of these words stays open.
    refused.replace("separator=bar", "separator=dot").replace("columns=datetime", "columns=day");
    const FormatChoice open = sourcesOf(u"mended.txt"_s, refused).front().choice;
    QVERIFY(!open.separator && !open.columns && open.dates);
}

void TestImportFile::refusedLinesOfAFileWithoutAHeadingAreGivenOne()
{
    const auto sources = sourcesOf(u"a.csv"_s,
        "2025-11-21 18:30,98.5,D3C2,MDR\n2025-11-21 18:31,none,D3C2,MDR\n2025-11-21 18:32,none,F201,FIP\n");
    FormatChoice choice;
    choice.columns = {ColumnUse::DateTime, ColumnUse::Freq, ColumnUse::PiCode, ColumnUse::Name};
    const std::vector<ImportReading> readings {
        readImportFile(sources.front(), choice, {}, surroundings(), mostImportRows)};
    QByteArray refused = refusedLines(sources, readings);
    QVERIFY2(refused.contains("\r\nColumn 1,Column 2,Column 3,Column 4\r\n#! line 2: "), refused.constData());
    const auto mended = sourcesOf(u"mended.txt"_s, refused.replace("none", "99.5"));
    const ImportReading again =
        readImportFile(mended.front(), mended.front().choice, {}, surroundings(), mostImportRows);
    QCOMPARE(again.rows.size(), std::size_t(2));
    QCOMPARE(again.rows[1].entry.piCode, u"F201"_s);
}

void TestImportFile::linesBehindARefusedPiCodeStayWithIt()
{
    const QString log = u"2025-11-21 18:40:00Z\tPI\tE213\n"
                        "2025-11-21 18:41:00Z\tPI\tnone\n"
                        "broken\n"
                        "2025-11-21 18:41:01Z\tPS\tINTER___\n"
                        "2025-11-21 18:41:02Z\tRT1\tMusic\n"
                        "2025-11-21 18:42:00Z\tPI\tD3C2\n"
                        "2025-11-21 18:42:01Z\tPS\tA|B\n"
                        "2025-11-21 18:42:02Z\tPTY\tPop\n"_s;
    const auto sources = sourcesOf(u"x/98500-183000Z.txt"_s, log.toUtf8());
    const std::vector<ImportReading> readings {
        readImportFile(sources.front(), {}, {}, surroundings(), mostImportRows)};
    QByteArray refused = refusedLines(sources, readings);
    refused.replace("\tnone", "\tF201").replace("A|B", "A_B").replace("broken\r\n", "");
    QStringList rows;
    for (const ImportSource &source : sourcesOf(u"mended.txt"_s, refused)) {
        rows += told(readImportFile(source, {}, {}, surroundings(), mostImportRows));
    }
    QCOMPARE(rows.size(), 2);
    QVERIFY2(rows[0].endsWith(u"|F201|21/11/2025 18:41:00||98.5||TBD|RT1: Music|INTER||||"_s),
        qPrintable(rows[0]));
    QVERIFY2(
        rows[1].endsWith(u"|D3C2|21/11/2025 18:42:00||98.5||TBD|PTY: Pop|A_B||||"_s), qPrintable(rows[1]));
}

void TestImportFile::refusedLinesOfTooManyFilesAreRefused()
{
    const QByteArray head = refusedLines({}, {});
    const auto parts = sourcesOf(u"a.txt"_s, head + QByteArray("#! file: a\n").repeated(mostImportFiles + 1));
    QCOMPARE(parts.size(), std::size_t(1));
    QCOMPARE(parts.front().refusal, u"line 50002: it holds the lines of more than 50000 files"_s);
    QCOMPARE(sourcesOf(u"a.txt"_s, head + QByteArray("#! file: a\n").repeated(mostImportFiles)).size(),
        static_cast<std::size_t>(mostImportFiles));
}

void TestImportFile::longNamesOfColumnsAreCut()
{
    const ImportReading reading =
        read("Date;UTC;MHz;PI;" + QByteArray(5000, 'n') + "\n2025-11-21;18:30;98.5;D3C2;x\n");
    QCOMPARE(reading.rows.front().refusal, QString());
    QCOMPARE(reading.rows.front().entry.notes, QString(60, u'n') + u": x"_s);
}

void TestImportFile::everyCodePageIsOffered()
{
    for (int page = 1250; page <= 1258; ++page) {
        const TextEncoding encoding = encodingOfPage(page);
        QCOMPARE(encodingName(encoding), u"Windows-%1"_s.arg(page));
        QCOMPARE(decodedText("\xE0", encoding), CodePage(page).decode("\xE0"));
    }
}

void TestImportFile::oneNumberTellsTheDecimalSign()
{
    const QByteArray line = "Date;Time;MHz;PI\n13/04/2025;12:00;98,5;D3C1\n";
    QCOMPARE(read(line).format.decimalComma, true);
    QCOMPARE(read(QByteArray(line).replace("98,5", "98.5")).format.decimalComma, false);
}

void TestImportFile::aFileWithoutAHeadingIsNotRemembered()
{
    FormatChoice said;
    said.columns = std::vector<ColumnUse>(4, ColumnUse::Nothing);
    const auto known = [&](const QStringList &) { return std::optional(said); };
    const auto sources = sourcesOf(u"a"_s, "2025-11-21;18:30;98.5;D3C2\n2025-11-22;18:30;98.5;D3C2\n");
    const ImportReading reading = readImportFile(sources.front(), {}, known, surroundings(), mostImportRows);
    QCOMPARE(reading.format.headingLine, 0);
    QVERIFY(reading.format.guessed);
}

void TestImportFile::eachKindIsKnownByItsContent_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("FMList")
        << fmlistLogbook().toUtf8() << u"a.txt"_s << u"FMList logbook (CSV)"_s
        << QStringList {u"5|E213|21/11/2025 09:30:00|Es|98.50|Peña Cabarga|E|Program: RNE Clásica; "
                        "QTF: 215; RDS: X; Details: PI E213 noted; Remarks: strong; Antenna: 5 "
                        "el|RNE_Clás|10|1234.5||"_s,
               u"6||21/11/2025 00:05:00|Tr|87.6|Monte Cavo|I|QTF: 170|RAI_1|1000|1100||"_s,
               u"8 refused: Frequency Empty"_s, u"9 refused: The date \"32.11.2025\" is none"_s};
    const QString tower =
        u"6|D3C2|21/07/2025 18:30:05||98.500|Leipzig|D|name: MDR JUMP Sachsen; pol: h; az: 45|MDR_JUMP|100|120||4711"_s;
    QTest::newRow("web server") << webServerLog(true).toUtf8() << u"a.csv"_s << u"Web server logger (CSV)"_s
                                << QStringList {tower, u"7 refused: PI Code and RDS Name Empty"_s,
                                       u"8|E213|21/07/2025 18:32:00||87.600||E|PI?|RNE_CLAS||||"_s};
    const QStringList tef {
        u"2|D3C2|21/07/2025 18:30:00||98.50||TBD|Signal: 35.1 dBµV; Stereo: yes; TP: yes; PTY: Pop; ECC: E0; Radiotext: \"Non stop, the\" best|MDR_JUMP||||"_s,
        u"3|E213|31/12/2025 00:05:00||87.60||TBD|Signal: 12.0 dBµV|RNE_CLAS||||"_s,
        u"4 refused: The date \"-\" is none"_s};
    QTest::newRow("TEF") << tefLogbook(false, false).toUtf8() << u"a"_s << u"TEF6686 logbook"_s << tef;
    QTest::newRow("TEF, American") << tefLogbook(true, false).toUtf8() << u"a"_s << u"TEF6686 logbook"_s
                                   << tef;
    QTest::newRow("TEF, offset") << tefLogbook(false, true).toUtf8() << u"a"_s << u"TEF6686 logbook"_s
                                 << QStringList {QString(tef[0]).replace(u"18:30"_s, u"16:30"_s),
                                        QString(tef[1]).replace(u"31/12/2025 00"_s, u"30/12/2025 22"_s),
                                        tef[2]};
    QTest::newRow("XDR-GTK")
        << xdrLog().toUtf8() << u"2025-11-21/98500-183000Z.txt"_s << u"XDR-GTK log"_s
        << QStringList {
               u"3|D3C2|21/11/2025 18:30:04||98.5||TBD|RT1: Non stop music; AF: 98.5 99.1; PTY: Pop|MDR_JUMP||||"_s,
               u"9|E213|21/11/2025 18:40:00||98.5||TBD|PI?|RNE_CLAS||||"_s,
               u"11 refused: The PI code is not four hexadecimal digits"_s};
    const QStringList urds {
        u"9|D3C2|21/11/2025 18:30:00||98.5||TBD|rds: 12; min: 20.1; max: 35.1; time: 60; lat: 51.34; lon: "
        "12.37; mode: 3; alt: 120; gps time: 1763749799; PI count: 9; PS count: 4; TA: 0; TP: 1; music: 1; "
        "PTY: "
        "Pop; group: 0A; stereo: 1|MDR_JUMP||||"_s};
    QTest::newRow("URDS") << urdsFile() << u"a.csv"_s << u"URDS (fm_rds.csv)"_s << urds;
    QTest::newRow("URDS, packed") << gzipped(urdsFile()) << u"a.csv.gz"_s << u"URDS (fm_rds.csv)"_s << urds;
    QTest::newRow("logbook")
        << QByteArray("D3C3|12/06/2010 18:22:05|Es|87.6|Brocken|D|aCRLFb|RNE 1||812.4|fml=sent#|4711|\r\n")
        << u"RDSLog.log"_s << u"Logbook of this program"_s
        << QStringList {u"1|D3C3|12/06/2010 18:22:05|Es|87.6|Brocken|D|a\r\nb|RNE 1||812.4|fml=sent#|4711"_s};
    QTest::newRow("older logbook")
        << QByteArray("D3C3|12/06/2010 18:22:05|Es|87.6|Brocken|D|a\nb|RNE_1||812.4|\r\nx|y\r\n") << u"x"_s
        << u"Older logbook of this program"_s
        << QStringList {u"1|D3C3|12/06/2010 18:22:05|Es|87.6|Brocken|D|a\nb|RNE_1||812.4||"_s,
               u"3 refused: The line has 1 fields instead of 10"_s};
    QTest::newRow("shown")
        << shownHeading().toUtf8()
            + "2010-06-12T18:22:05,D3C3,87.60,-5,D,'=Brocken,812.4,10,\"''a\r\nb \"\"c\"\"\",Es,Sent,4711\r\n"
        << u"x.csv"_s << u"CSV of this program"_s
        << QStringList {
               u"2|D3C3|12/06/2010 18:22:05|Es|87.60|=Brocken|D|'a\r\nb \"c\"|-5|10|812.4|fml=sent#|4711"_s};
}

void TestImportFile::eachKindIsKnownByItsContent()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, name);
    const ImportReading reading = read(bytes, name);
    QTEST(importKindCaption(reading.format.kind), "kind");
    QTEST(told(reading), "rows");
}

void TestImportFile::encodingsAreToldApart_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("encoding");
    const QString text = fmlistLogbook();
    const auto utf16 = [&](bool big) {
        QByteArray bytes;
        for (const QChar c : text) {
            const char high = static_cast<char>(c.unicode() >> 8);
            const char low = static_cast<char>(c.unicode() & 0xFF);
            bytes += big ? high : low;
            bytes += big ? low : high;
        }
        return bytes;
    };
    QTest::newRow("UTF-8") << text.toUtf8() << u"UTF-8"_s;
    QTest::newRow("UTF-8 with a mark") << "\xEF\xBB\xBF" + text.toUtf8() << u"UTF-8"_s;
    QTest::newRow("UTF-8 with one broken letter") << text.toUtf8() + ";;;;\xE9;\n" << u"UTF-8"_s;
    QTest::newRow("UTF-16 LE") << utf16(false) << u"UTF-16 LE"_s;
    QTest::newRow("UTF-16 LE with a mark") << "\xFF\xFE" + utf16(false) << u"UTF-16 LE"_s;
    QTest::newRow("UTF-16 BE with a mark") << "\xFE\xFF" + utf16(true) << u"UTF-16 BE"_s;
    QTest::newRow("UTF-16 BE") << utf16(true) << u"UTF-16 BE"_s;
    QTest::newRow("Windows") << CodePage(1252).encode(text) << u"Windows-1252"_s;
}

void TestImportFile::encodingsAreToldApart()
{
    QFETCH(QByteArray, bytes);
    const ImportReading reading = read(bytes);
    QTEST(encodingName(reading.format.encoding), "encoding");
    QCOMPARE(reading.rows.front().entry.transmitter, u"Peña Cabarga"_s);
}

void TestImportFile::whatIsChosenGoesBeforeWhatIsTold()
{
    FormatChoice choice;
    choice.encoding = TextEncoding::Windows1250;
    choice.decimalComma = false;
    choice.dates = DateOrder::MonthFirst;
    choice.localTime = true;
    const QByteArray bytes = "Date;UTC;MHz;Propa;Program;kW\n3.11.25;930;98,50;\xB3;FIP;1,000\n";
    QCOMPARE(told(read(bytes, u"a"_s, "Europe/Berlin", choice)),
        QStringList {u"2||11/03/2025 08:30:00|l|98.50||TBD||FIP|1000|||"_s});
    choice = {};
    choice.separator = u'\t';
    QVERIFY(read(bytes, u"a"_s, "UTC", choice).format.kind == ImportKind::Columns);
}

void TestImportFile::localTimesFollowTheZone_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("utc");
    QTest::newRow("winter") << QByteArray("2025-01-15;12:00:00") << u"15/01/2025 11:00:00"_s;
    QTest::newRow("summer") << QByteArray("2025-07-15;12:00:00") << u"15/07/2025 10:00:00"_s;
    QTest::newRow("before the change") << QByteArray("2025-03-30;01:59:59") << u"30/03/2025 00:59:59"_s;
    QTest::newRow("behind the change") << QByteArray("2025-03-30;03:00:00") << u"30/03/2025 01:00:00"_s;
    QTest::newRow("in the hour that is not") << QByteArray("2025-03-30;02:30:00") << u"30/03/2025 01:30:00"_s;
    QTest::newRow("in the hour that is twice")
        << QByteArray("2025-10-26;02:30:00") << u"26/10/2025 00:30:00"_s;
    QTest::newRow("behind the hour that is twice")
        << QByteArray("2025-10-26;03:00:00") << u"26/10/2025 02:00:00"_s;
    QTest::newRow("it says that it is UTC") << QByteArray("2025-07-15;12:00:00Z") << u"15/07/2025 12:00:00"_s;
}

void TestImportFile::localTimesFollowTheZone()
{
    QFETCH(QByteArray, line);
    const ImportReading reading =
        read("date;time;freq;pi;ps;id\n" + line + ";98.5;D3C2;A;\n" + "2025-06-15;12:00:00;98.5;D3C2;A;\n",
            u"a"_s, "Europe/Berlin");
    QVERIFY(reading.format.localTime);
    QTEST(generalText(reading.rows.front().entry.dateTime), "utc");
    QCOMPARE(generalText(reading.rows.back().entry.dateTime), u"15/06/2025 10:00:00"_s);
}

void TestImportFile::ownFilesComeInAsTheyWere()
{
    const QByteArray line = "|12/06/2010 18:22:05||98,5 MHz||||rne 1|1kw| 7|fml=none#|x|\r\n";
    QCOMPARE(
        told(read(line)), QStringList {u"1||12/06/2010 18:22:05||98,5 MHz||||rne 1|1kw| 7|fml=none#|x"_s});
}

void TestImportFile::aLineFeedInTheNotesIsFollowedFor4096Characters()
{
    const QByteArray before = "D3C3|12/06/2010 18:22:05|Es|87.6|Brocken|D|a\n";
    const QByteArray after = "|RNE_1||812.4|\r\n";
    const QByteArray notes(4096 - after.size(), 'b');
    const ImportReading whole = read(before + notes + after, u"x"_s);
    QCOMPARE(whole.rows.size(), std::size_t {1});
    QVERIFY2(!whole.rows.front().isRefused(), qPrintable(whole.rows.front().refusal));
    const ImportReading cut = read(before + 'b' + notes + after, u"x"_s);
    QCOMPARE(cut.rows.size(), std::size_t {2});
    QVERIFY(cut.rows.front().isRefused() && cut.rows.back().isRefused());
}

void TestImportFile::refusedWithTheReason_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("separator of the log")
        << QByteArray("21.11.25;930;98.5;E213;a|b;D")
        << u"Transmitter holds \"|\", which separates the fields of the log"_s;
    QTest::newRow("full width") << QByteArray("21.11.25;930;98.5;E213;a\xEF\xBD\x9C"
                                              "b;D")
                                << u"Transmitter holds \"|\", which separates the fields of the log"_s;
    QTest::newRow("CRLF")
        << QByteArray("21.11.25;930;98.5;E213;aCRLFb;D")
        << u"Transmitter holds the letters \"CRLF\", which become a line break in the log"_s;
    QTest::newRow("delete") << QByteArray("21.11.25;930;98.5;delete;a;D")
                            << u"The PI code \"delete\" marks a deleted reception"_s;
    QTest::newRow("line break") << QByteArray("21.11.25;930;98.5;E213;\"a\nb\";D")
                                << u"Transmitter holds a line break"_s;
    QTest::newRow("PI code") << QByteArray("21.11.25;930;98.5;E2134;a;D")
                             << u"The PI code \"E2134\" is not four hexadecimal digits"_s;
    QTest::newRow("frequency") << QByteArray("21.11.25;930;abc;E213;a;D")
                               << u"The frequency \"abc\" is no number"_s;
    QTest::newRow("no time") << QByteArray("21.11.25;;98.5;E213;a;D") << u"There is no time"_s;
    QTest::newRow("time") << QByteArray("21.11.25;2460;98.5;E213;a;D") << u"The time \"2460\" is none"_s;
    QTest::newRow("cells") << QByteArray("21.11.25;930;98.5;E213;a;D;more")
                           << u"The row has 7 columns instead of 6"_s;
    QTest::newRow("quote") << QByteArray("21.11.25;930;98.5;E213;\"a;D")
                           << u"A quote (\") is opened and not closed"_s;
}

void TestImportFile::refusedWithTheReason()
{
    QFETCH(QByteArray, line);
    const ImportReading reading =
        read("Date;UTC;MHz;PI;Location;Propa\n21.11.25;930;98.5;E213;\xC3\x9F;D\n" + line + "\n");
    QCOMPARE(reading.rows.size(), std::size_t(2));
    QCOMPARE(reading.rows[0].refusal, QString());
    QTEST(reading.rows[1].refusal, "refusal");
    QCOMPARE(reading.rows[1].line, 3);
    QCOMPARE(reading.rows[1].text, QString::fromUtf8(line));
    QVERIFY(reading.rows[1].entry.dateTime.seconds >= 0);
}

void TestImportFile::badFilesAreRefusedInWords_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("never a line end")
        << QByteArray(mostImportBytes, 'a') << u"line 1 is longer than 262144 characters"_s;
    QTest::newRow("a million columns")
        << QByteArray(1'000'000, ';').insert(0, "Date") << u"line 1 is longer than 262144 characters"_s;
    QTest::newRow("too many columns") << QByteArray(201, ';') + "\n" << u"line 1 has more than 200 columns"_s;
    QTest::newRow("nothing") << QByteArray() << u"There are no columns in it, and no log that is known"_s;
    QTest::newRow("a text") << QByteArray("Hello\nworld\n")
                            << u"There are no columns in it, and no log that is known"_s;
    QTest::newRow("cut short") << gzipped(urdsFile()).chopped(12)
                               << u"the gzip file is broken: it ends too early"_s;
    QByteArray lines = "Date;UTC;MHz;PI;Propa\n";
    for (qsizetype i = 0; i <= mostImportRows; ++i) {
        lines += "x;1;2;3;4\n";
    }
    QTest::newRow("too many lines") << lines
                                    << u"line 200002: an import takes in no more than 200000 lines"_s;
    QByteArray quotes = "Date;UTC;MHz;PI;Propa\n";
    QTest::newRow("a line that is too long") << quotes + "x;1;2;3;4" + QByteArray(longestImportLine, 'x')
            + "\n" << u"line 2 is longer than 262144 characters"_s;
    // The next quote is further away than a record may be long.
    const QByteArray plain = QByteArray(longestImportLine / 2, 'x') + "\n";
    for (int i = 0; i <= 100; ++i) {
        quotes += "\"x;1;2;3;4\n" + plain + plain;
    }
    QTest::newRow("endless quotes") << quotes << u"line 302: more than 100 quotes are never closed"_s;
}

void TestImportFile::badFilesAreRefusedInWords()
{
    QFETCH(QByteArray, bytes);
    QTEST(read(bytes).refusal, "refusal");
}

void TestImportFile::aFileOfAGigabyteIsNotRead()
{
    const TestDirectory directory;
    QFile file(directory.file(u"large.csv"_s));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(1'000'000'000));
    file.close();
    const auto sources = importSources({file.fileName(), directory.file(u"none.csv"_s), u"/dev/zero"_s});
    QCOMPARE(sources.size(), std::size_t(3));
    QCOMPARE(
        sources[0].refusal, u"It is larger than 32 MiB, the most that is read. Part it into smaller files"_s);
    QCOMPARE(sources[0].bytes.size(), 0);
    QCOMPARE(sources[1].refusal, u"There is no such file"_s);
    QCOMPARE(sources[2].refusal, u"It is no file"_s);
}

void TestImportFile::aBombIsNotUnpacked()
{
    // 100 MB of zeros a member, a thousand members.
    z_stream stream {};
    QCOMPARE(deflateInit2(&stream, 9, Z_DEFLATED, 15 + 16, 9, Z_DEFAULT_STRATEGY), Z_OK);
    QByteArray member(200'000, '\0');
    const QByteArray zeros(100'000'000, '\0');
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(zeros.data()));
    stream.avail_in = static_cast<uInt>(zeros.size());
    stream.next_out = reinterpret_cast<Bytef *>(member.data());
    stream.avail_out = static_cast<uInt>(member.size());
    QCOMPARE(deflate(&stream, Z_FINISH), Z_STREAM_END);
    member.resize(static_cast<qsizetype>(stream.total_out));
    deflateEnd(&stream);
    const auto sources = sourcesOf(u"bomb.gz"_s, member.repeated(100));
    QCOMPARE(sources.front().refusal, u"unpacked, the file is larger than 32 MiB"_s);
    QCOMPARE(sources.front().bytes.size(), 0);
}

void TestImportFile::aFolderGivesItsFiles()
{
    const TestDirectory directory;
    directory.write(u"2025-11-21/98500-183000Z.txt"_s, xdrLog().toUtf8());
    directory.write(u"2025-11-20/87600-183000Z.txt"_s, xdrLog().toUtf8());
    directory.write(u".hidden/x.txt"_s, "x");
    QStringList names;
    for (const ImportSource &source : importSources({directory.path()})) {
        names += source.name;
    }
    QCOMPARE(names, (QStringList {u"2025-11-20/87600-183000Z.txt"_s, u"2025-11-21/98500-183000Z.txt"_s}));
    const auto one = importSources({directory.file(u"2025-11-21/98500-183000Z.txt"_s)});
    QCOMPARE(one.front().name, u"2025-11-21/98500-183000Z.txt"_s);
}

void TestImportFile::refusedLinesComeBackMended()
{
    std::vector<ImportSource> sources = sourcesOf(u"a.csv"_s, fmlistLogbook().toUtf8());
    sources.push_back(sourcesOf(u"2025-11-21/98500-183000Z.txt"_s, xdrLog().toUtf8()).front());
    std::vector<ImportReading> readings;
    readings.reserve(sources.size());
    for (const ImportSource &source : sources) {
        readings.push_back(readImportFile(source, {}, {}, surroundings(), mostImportRows));
    }
    const QByteArray refused = refusedLines(sources, readings);
    QCOMPARE(refused,
        QByteArray("#! Receptions that Quillon refused: mend the lines and import this file again.\r\n"
                   "#! file: a.csv\r\n"
                   "#! read with: dates=day first; decimal=comma; times=UTC; separator=semicolon; "
                   "columns=date,time,freq,country,name,site,kw,dist,notes,prop,notes,details,notes,notes\r\n"
                   "Date;UTC;MHz;ITU;Program;Location;kW;QRB km;QTF;Propa;RDS;Details;Remarks;Antenna\r\n"
                   "#! line 8: Frequency Empty\r\n"
                   "20.11.25;1200;;F;FIP;;;;;;;;;\r\n"
                   "#! line 9: The date \"32.11.2025\" is none\r\n"
                   "32.11.2025;1200;90,1;F;FIP;Paris;10;;;;;;;\r\n"
                   "#! file: 2025-11-21/98500-183000Z.txt\r\n"
                   "#! read with: dates=day first; decimal=point; times=UTC\r\n"
                   "#! line 11: The PI code is not four hexadecimal digits\r\n"
                   "2025-11-21 18:41:00Z\tPI\tnone\r\n"));
    QByteArray mended = refused;
    mended.replace("32.11.2025", "22.11.2025").replace("\tnone", "\tF201");
    QStringList rows;
    for (const ImportSource &source : sourcesOf(u"mended.txt"_s, mended)) {
        rows += told(readImportFile(source, {}, {}, surroundings(), mostImportRows));
    }
    QCOMPARE(rows,
        (QStringList {u"6 refused: Frequency Empty"_s, u"8||22/11/2025 12:00:00||90.1|Paris|F||FIP|10|||"_s,
            u"12|F201|21/11/2025 18:41:00||98.5||TBD||||||"_s}));
}

void TestImportFile::otherColumnsAreGuessedAndAsked()
{
    const QByteArray bytes =
        "My log\n\nWhen\tFrequency (kHz)\tPI\tERP [W]\tMood\n21/11/2025 18:30\t98500\t0xd3c2\t1,500\tgood\n";
    ImportReading reading = read(bytes);
    QVERIFY(reading.format.guessed);
    QCOMPARE(
        reading.heading, (QStringList {u"When"_s, u"Frequency (kHz)"_s, u"PI"_s, u"ERP [W]"_s, u"Mood"_s}));
    QCOMPARE(reading.examples[3], u"1,500"_s);
    QCOMPARE(missingColumns(reading.format.columns), u"No column is the date"_s);
    FormatChoice said;
    said.columns = std::vector<ColumnUse>();
    for (const ImportColumn &column : reading.format.columns) {
        said.columns->push_back(column.use);
    }
    said.columns->front() = ColumnUse::DateTime;
    said.decimalComma = false;
    const auto known = [&](const QStringList &heading) {
        return heading == reading.heading ? std::optional(said) : std::nullopt;
    };
    const auto sources = sourcesOf(u"a"_s, bytes);
    FormatChoice point;
    point.decimalComma = false;
    const ImportReading again = readImportFile(sources.front(), point, known, surroundings(), mostImportRows);
    QVERIFY(!again.format.guessed);
    QCOMPARE(told(again), QStringList {u"4|D3C2|21/11/2025 18:30:00||98.5||TBD|Mood: good||1.5|||"_s});
}

QTEST_GUILESS_MAIN(TestImportFile)
#include "tst_importfile.moc"
