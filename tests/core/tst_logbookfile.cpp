#include "core/logbookfile.h"
#include "core/logbooklines.h"
#include "platform/runtimeerror.h"
#include "support/changedlog.h"
#include "support/testfiles.h"

#include <QRandomGenerator>
#include <QTest>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

const QByteArray good = logLine("D3C3", "12/06/2010 18:22:05", "87.6", "MDR_JUMP");

Regional regional(int page = 1252)
{
    return {CodePage(page), NumberFormat(), MonthNames()};
}

bool read(Logbook &log, const QByteArray &file, int page = 1252, const QString &fileName = u"log"_s)
{
    return readLogbook(log, file, regional(page), fileName);
}

// The bytes that a save after loading `file` writes.
QByteArray savedAgain(const QByteArray &file, int page = 1252)
{
    Logbook log;
    read(log, file, page);
    return logbookBytes(log, CodePage(page));
}

bool readWhole(const QByteArray &file)
{
    Logbook log;
    return read(log, file);
}

QStringList piCodes(const Logbook &log)
{
    QStringList codes;
    for (const LogEntry &entry : log) {
        codes += entry.piCode;
    }
    return codes;
}

// A field of any bytes but "|", and of no CR LF, which would end the line.
QByteArray randomField(QRandomGenerator &random)
{
    QByteArray field;
    const int length = random.bounded(4) == 0 ? 0 : random.bounded(12);
    while (field.size() < length) {
        const char byte = static_cast<char>(random.bounded(256));
        if (byte != '|' && !(byte == '\n' && field.endsWith('\r'))) {
            field += byte;
        }
    }
    return field;
}

QByteArray randomLine(QRandomGenerator &random, int fields)
{
    QByteArray line;
    for (int i = 0; i < fields; ++i) {
        QByteArray field = randomField(random);
        if (i == 0 && field == "delete") {
            field.clear();
        }
        if (i == 1) {
            field = generalText(DateTime {qint64(random.bounded(2'000'000'000))}).toLatin1();
        }
        if (i == 6 && random.bounded(3) == 0) {
            field += "CRLF"_ba + randomField(random);
        }
        line += field + '|';
    }
    return line;
}

} // namespace

class TestLogbookFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsAndWritesTheCurrentLayout()
    {
        const QByteArray line =
            "D3C3|12/06/2010 18:22:05|Es|87.6|Brocken|D|firstCRLFsecond|MDR_JUMP|100|812.4|fml=sent|4711|\r\n"_ba;
        Logbook log;
        QCOMPARE(logbookLayout(line), LogbookLayout::Current);
        QVERIFY(read(log, line));
        QCOMPARE(log.count(), 1);
        QCOMPARE(log.entry(0),
            (LogEntry {u"D3C3"_s, *fromCivil({2010, 6, 12, 18, 22, 5}), u"Es"_s, u"87.6"_s, u"Brocken"_s,
                u"D"_s, u"first\r\nsecond"_s, u"MDR_JUMP"_s, u"100"_s, u"812.4"_s, u"fml=sent"_s,
                u"4711"_s}));
        QCOMPARE(logbookBytes(log, CodePage()), line);
    }

    void readsTheOlderLayoutAndWritesTheCurrentOne()
    {
        const QByteArray older = "D3C3|12/06/2010 18:22:05|Es|87.6|Brocken|D|aCRLFb|MDR|100|812.4|"_ba;
        Logbook log;
        QCOMPARE(logbookLayout(QByteArray(older + "\r\n"_ba)), LogbookLayout::Older);
        QVERIFY(read(log, older + "\r\n"_ba + older + "\r\n"_ba));
        QCOMPARE(log.count(), 2);
        QCOMPARE(log.entry(1).dist, u"812.4"_s);
        QCOMPARE(log.entry(1).fmlist, QString());
        QCOMPARE(log.entry(1).uid, QString());
        QCOMPARE(logbookBytes(log, CodePage()), QByteArray(older + "||\r\n"_ba + older + "||\r\n"_ba));
    }

    void theFirstLineTellsTheLayout_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("layout");
        const auto row = [](const char *name, const QByteArray &file, LogbookLayout layout) {
            QTest::newRow(name) << file << int(layout);
        };
        row("empty file", "", LogbookLayout::Unknown);
        row("empty line", "\r\n" + good, LogbookLayout::Unknown);
        row("other text", "hello\r\n", LogbookLayout::Unknown);
        row("10 pieces", QByteArray(9, '|') + "\r\n", LogbookLayout::Unknown);
        row("11 pieces", QByteArray(10, '|') + "\r\n", LogbookLayout::Older);
        row("12 pieces", QByteArray(11, '|') + "\r\n", LogbookLayout::Unknown);
        row("13 pieces", QByteArray(12, '|') + "\r\n", LogbookLayout::Current);
        row("14 pieces", QByteArray(13, '|') + "\r\n", LogbookLayout::Unknown);
        row("13 pieces, LF", QByteArray(12, '|') + "\n", LogbookLayout::Current);
        row("13 pieces, no line end", QByteArray(12, '|'), LogbookLayout::Current);
        row("11 pieces, LF, then 13", QByteArray(10, '|') + "\n" + QByteArray(12, '|') + "\n",
            LogbookLayout::Older);
        row("a field with a line feed", "a\nb" + QByteArray(12, '|') + "\r\n", LogbookLayout::Current);
    }

    void theFirstLineTellsTheLayout()
    {
        QFETCH(QByteArray, file);
        QFETCH(int, layout);
        QCOMPARE(int(logbookLayout(file)), layout);
    }

    void anUnknownFileAddsNothingAndIsNotWhole()
    {
        Logbook log;
        QVERIFY(!read(log, "hello\r\n" + good));
        QCOMPARE(log.count(), 0);
    }

    void everyByteComesBackInEveryTextField_data()
    {
        QTest::addColumn<int>("page");
        for (const int page : {1250, 1251, 1252, 1253, 1254, 1257}) {
            QTest::addRow("%d", page) << page;
        }
    }

    void everyByteComesBackInEveryTextField()
    {
        QFETCH(int, page);
        for (int field = 0; field < 12; ++field) {
            if (field == 1) {
                continue;
            }
            for (int byte = 0; byte < 256; ++byte) {
                if (byte == '|') {
                    continue;
                }
                QByteArrayList fields {"D3C3", "12/06/2010 18:22:05", "Es", "87.6", "Brocken", "D", "note",
                    "NAME", "10", "812", "fml=sent#", "4711"};
                fields[field] += static_cast<char>(byte);
                fields[field] += "x";
                const QByteArray line = fields.join('|') + "|\r\n"_ba;
                const QByteArray file = good + line + good;
                QCOMPARE(savedAgain(file, page), file);
                QCOMPARE(savedAgain(line, page), line);
            }
        }
    }

    void everyByteComesBackAtTheEndsOfAField()
    {
        for (int byte = 0; byte < 256; ++byte) {
            if (byte == '|') {
                continue;
            }
            const QByteArray one(1, static_cast<char>(byte));
            const QByteArray line =
                one + "|12/06/2010 18:22:05|"_ba + QByteArray(one + '|').repeated(9) + one + "|\r\n"_ba;
            QCOMPARE(savedAgain(line + good), QByteArray(line + good));
        }
    }

    void lineBreaksInNotes_data()
    {
        QTest::addColumn<QByteArray>("inFile");
        QTest::addColumn<QString>("inMemory");
        QTest::newRow("two lines") << "aCRLFb"_ba << u"a\r\nb"_s;
        QTest::newRow("at both ends") << "CRLFaCRLF"_ba << u"\r\na\r\n"_s;
        QTest::newRow("empty lines") << "CRLFCRLF"_ba << u"\r\n\r\n"_s;
        QTest::newRow("small letters") << "crlf"_ba << u"crlf"_s;
        QTest::newRow("nested") << "CRCRLFLF"_ba << u"CR\r\nLF"_s;
        QTest::newRow("lone CR before") << "\rCRLF"_ba << u"\r\r\n"_s;
        QTest::newRow("lone LF") << "a\nb"_ba << u"a\nb"_s;
        QTest::newRow("lone CR") << "a\rb"_ba << u"a\rb"_s;
    }

    void lineBreaksInNotes()
    {
        QFETCH(QByteArray, inFile);
        QFETCH(QString, inMemory);
        const QByteArray file = "D3C3|12/06/2010 18:22:05|||||"_ba + inFile + "|CRLF|CRLF|||CRLF|\r\n"_ba;
        Logbook log;
        QVERIFY(read(log, file));
        QCOMPARE(log.entry(0).notes, inMemory);
        QCOMPARE(log.entry(0).rdsName, u"CRLF"_s);
        QCOMPARE(log.entry(0).uid, u"CRLF"_s);
        QCOMPARE(logbookBytes(log, CodePage()), file);
    }

    void typedCRLFComesBackAsALineBreak()
    {
        Logbook log;
        LogEntry entry;
        entry.dateTime = *fromCivil({2010, 1, 1});
        entry.notes = u"typed CRLF"_s;
        log.AddEntry(entry);
        Logbook again;
        QVERIFY(read(again, logbookBytes(log, CodePage())));
        QCOMPARE(again.entry(0).notes, u"typed \r\n"_s);
    }

    void linesThatEndInLineFeedAloneAreRead()
    {
        const QByteArray file = good + good;
        QCOMPARE(savedAgain(QByteArray(file).replace("\r\n", "\n")), file);
        QVERIFY(readWhole(QByteArray(file).replace("\r\n", "\n")));
        QCOMPARE(savedAgain(file.chopped(2)), file);
        QVERIFY(readWhole(file.chopped(2)));
    }

    void anyDateFormIsReadAndTheOneFormIsWritten()
    {
        for (const QByteArray &date : {"2010-06-12 18:22:05"_ba, "12.06.2010 18:22:05"_ba,
                 "12-Jun-10 18:22:05"_ba, "12/6/2010 6:22:05 PM"_ba}) {
            QCOMPARE(savedAgain(logLine("D3C3", date, "87.6", "MDR_JUMP")), good);
        }
    }

    void deletedEntriesAreNotWritten()
    {
        Logbook log;
        QVERIFY(read(log, good + logLine("D318", "12/06/2010 18:22:05", "87.7", "B") + good));
        changeEntry(log, 1, [](LogEntry &entry) { entry.piCode = u"delete"_s; });
        QCOMPARE(logbookBytes(log, CodePage()), QByteArray(good + good));
        QCOMPARE(log.count(), 3);
        changeEntry(log, 0, [](LogEntry &entry) { entry.piCode = u"delete"_s; });
        changeEntry(log, 2, [](LogEntry &entry) { entry.piCode = u"delete"_s; });
        QCOMPARE(logbookBytes(log, CodePage()), ""_ba);
    }

    void wholeIsTold_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<bool>("whole");
        const QByteArray line = good.chopped(2);
        const QByteArray older = "D3C3|12/06/2010 18:22:05|||||||||\r\n"_ba;
        QTest::newRow("current") << QByteArray(good + good) << true;
        QTest::newRow("older") << QByteArray(older + older) << true;
        QTest::newRow("text behind the last field") << QByteArray(good + line + "x\r\n"_ba) << false;
        QTest::newRow("a surplus piece") << QByteArray(good + line + "x|\r\n"_ba) << false;
        QTest::newRow("an empty surplus piece") << QByteArray(good + line + "|\r\n"_ba) << false;
        QTest::newRow("current line in an older file") << QByteArray(older + good) << false;
        QTest::newRow("a line without its last bar")
            << QByteArray(good + line.chopped(1) + "\r\n"_ba) << false;
        QTest::newRow("a deleted entry") << QByteArray(good + "delete"_ba + good.mid(4)) << false;
    }

    void wholeIsTold()
    {
        QFETCH(QByteArray, file);
        QFETCH(bool, whole);
        Logbook log;
        QCOMPARE(read(log, file), whole);
        QCOMPARE(log.count(), 2);
    }

    void fieldsAreReadByPosition()
    {
        Logbook log;
        const QByteArray line = good.chopped(2);
        read(log, good + line.chopped(1) + "\r\n"_ba + line + "x|y\r\n"_ba);
        QCOMPARE(log.entry(1), log.entry(0));
        QCOMPARE(log.entry(2), log.entry(0));
    }

    void aBrokenLineIsToldAndTheOnesBeforeItStay_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<int>("name");
        QTest::addColumn<QString>("message");
        const QString few = u"the line has %1 pieces instead of 13: \"%2\""_s;
        QTest::newRow("empty") << ""_ba << int(ErrorName::SubscriptOutOfRange) << few.arg(1).arg(QString());
        QTest::newRow("text") << "K\xD6LN 100%1"_ba << int(ErrorName::SubscriptOutOfRange)
                              << QString(u"the line has 1 pieces instead of 13: \"KÖLN 100%1\""_s);
        QTest::newRow("older layout")
            << "D3C3|12/06/2010 18:22:05|||||||||"_ba << int(ErrorName::SubscriptOutOfRange)
            << few.arg(11).arg(u"D3C3|12/06/2010 18:22:05|||||||||"_s);
        QTest::newRow("date") << logLine("D3C3", "31/02/2010", "87.6", "X").chopped(2)
                              << int(ErrorName::TypeMismatch)
                              << u"Date/Time: \"31/02/2010\" is not a date and time"_s;
        QTest::newRow("no date") << logLine("D3C3", "", "87.6", "X").chopped(2)
                                 << int(ErrorName::TypeMismatch)
                                 << u"Date/Time: \"\" is not a date and time"_s;
        QTest::newRow("a bar in a field")
            << "D3|C3|12/06/2010 18:22:05|||||||||||"_ba << int(ErrorName::TypeMismatch)
            << u"Date/Time: \"C3\" is not a date and time"_s;
    }

    void aBrokenLineIsToldAndTheOnesBeforeItStay()
    {
        QFETCH(QByteArray, line);
        QFETCH(int, name);
        QFETCH(QString, message);
        for (const QByteArray &end : {"\r\n"_ba, "\n"_ba}) {
            QByteArray before = good.repeated(999);
            QByteArray file = before + line + "\r\n"_ba + good;
            file.replace("\r\n", end);
            Logbook log;
            try {
                read(log, file, 1252, u"/home/50%2/RDSLog.log"_s);
                QFAIL("nothing was thrown");
            } catch (const RuntimeError &error) {
                QCOMPARE(int(error.name()), name);
                QCOMPARE(error.doing(), QString(u"Reading /home/50%2/RDSLog.log, line 1000: "_s + message));
            }
            QCOMPARE(log.count(), 999);
            QCOMPARE(logbookBytes(log, CodePage()), before);
        }
    }

    void theLineNumberCountsTheLinesOfTheFile()
    {
        const QByteArray split = "D3C3|12/06/2010 18:22:05|||||a\nb\nc||||||\r\n"_ba;
        Logbook log;
        try {
            read(log, split + split + "broken\r\n"_ba);
            QFAIL("nothing was thrown");
        } catch (const RuntimeError &error) {
            QVERIFY(error.doing().startsWith(u"Reading log, line 7: "));
        }
        QCOMPARE(log.entry(1).notes, u"a\nb\nc"_s);
    }

    void aFullLogIsToldWithItsLine()
    {
        Logbook log;
        try {
            read(log, good.repeated(32'600));
            QFAIL("nothing was thrown");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.name(), ErrorName::Overflow);
            QVERIFY(error.doing().startsWith(u"Reading log, line 32498: The log is full: "));
        }
        QCOMPARE(log.count(), 32'498);
    }

    void largeBrokenFilesAreRefused()
    {
        for (const QByteArray &piece :
            {"\n"_ba, "a\n"_ba, "|\n"_ba, "||||||||||\n"_ba, "\r"_ba, "\r\n"_ba, "|"_ba}) {
            const QByteArray junk = piece.repeated(2'000'000 / piece.size());
            Logbook log;
            QVERIFY_THROWS_EXCEPTION(RuntimeError, read(log, good + junk + "x"));
            read(log, "x\n" + junk);
        }
    }

    void anyFileThatLoadsComesBackByteForByte()
    {
        QRandomGenerator random(1948);
        for (int round = 0; round < 300; ++round) {
            QByteArray file;
            QByteArray expected;
            const bool older = random.bounded(4) == 0;
            const int lines = 1 + random.bounded(30);
            for (int i = 0; i < lines; ++i) {
                const QByteArray line = randomLine(random, older ? 10 : 12);
                file += line + "\r\n"_ba;
                expected += line + (older ? "||\r\n"_ba : "\r\n"_ba);
            }
            Logbook log;
            QVERIFY(read(log, file));
            QCOMPARE(log.count(), lines);
            const QByteArray bytes = logbookBytes(log, CodePage());
            QCOMPARE(bytes, expected);
            Logbook again;
            QVERIFY(read(again, bytes));
            QVERIFY(std::equal(log.begin(), log.end(), again.begin(), again.end()));
        }
    }

    void loadingTellsWhatBecameOfTheFile()
    {
        const TestDirectory home;
        const QString path = home.file(u"RDSLog.log"_s);
        KeptFile kept;
        Logbook log;
        QCOMPARE(loadLogbook(log, path, regional(), kept), LogbookLoading::NoFile);
        home.write(u"RDSLog.log"_s, "");
        QCOMPARE(loadLogbook(log, path, regional(), kept), LogbookLoading::Loaded);
        home.write(u"RDSLog.log"_s, "hello\r\n");
        QCOMPARE(loadLogbook(log, path, regional(), kept), LogbookLoading::NotLoaded);
        QCOMPARE(log.count(), 0);
        home.write(u"RDSLog.log"_s, good);
        QCOMPARE(loadLogbook(log, path, regional(), kept), LogbookLoading::Loaded);
        QCOMPARE(piCodes(log), QStringList(u"D3C3"_s));
    }

    void aWholeFileIsSavedOverAndAnyOtherIsKept_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<bool>("copied");
        QTest::newRow("whole") << good << false;
        QTest::newRow("unknown") << "hello\r\n"_ba << true;
        QTest::newRow("empty") << ""_ba << false;
        QTest::newRow("surplus") << QByteArray(good.chopped(2) + "x\r\n"_ba) << true;
        QTest::newRow("broken") << QByteArray(good + "broken\r\n"_ba) << true;
    }

    void aWholeFileIsSavedOverAndAnyOtherIsKept()
    {
        QFETCH(QByteArray, file);
        QFETCH(bool, copied);
        const TestDirectory home;
        home.write(u"RDSLog.log"_s, file);
        home.write(u".RDSLog.log.new"_s, "half");
        const QString path = home.file(u"RDSLog.log"_s);
        KeptFile kept;
        Logbook log;
        try {
            Q_UNUSED(loadLogbook(log, path, regional(), kept))
        } catch (const RuntimeError &error) {
            QVERIFY(file.contains("broken"));
            QVERIFY(error.doing().contains(path));
        }
        QCOMPARE(home.names(), QStringList(u"RDSLog.log"_s));
        const auto copy = kept.save(path, home.path(), logbookBytes(log, CodePage()));
        QCOMPARE(copy.has_value(), copied);
        if (copy) {
            QCOMPARE(readFile(*copy), file);
        }
        QCOMPARE(home.names().size(), copied ? 2 : 1);
    }

    void aLogbookThatCannotBeReadIsTold()
    {
        const TestDirectory home;
        home.write(u"RDSLog.log/inside"_s, "x");
        KeptFile kept;
        Logbook log;
        QVERIFY_THROWS_EXCEPTION(
            RuntimeError, static_cast<void>(loadLogbook(log, home.file(u"RDSLog.log"_s), regional(), kept)));
    }
};

QTEST_GUILESS_MAIN(TestLogbookFile)
#include "tst_logbookfile.moc"
