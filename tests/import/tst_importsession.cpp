#include "import/importlimits.h"
#include "import/importmemory.h"
#include "import/importsession.h"
#include "platform/runtimeerror.h"
#include "support/importsamples.h"
#include "support/testfiles.h"

#include <QElapsedTimer>
#include <QLocale>
#include <QTest>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

LogEntry reception(const QString &moment, const QString &freq, const QString &piCode, const QString &rdsName)
{
    LogEntry entry;
    entry.dateTime = toDateTime(moment, MonthNames::of(QLocale::c()), u"a test"_s);
    entry.freq = freq;
    entry.piCode = piCode;
    entry.rdsName = rdsName;
    return entry;
}

ImportSurroundings surroundings()
{
    return {Regional {CodePage(1252), NumberFormat(), MonthNames::of(QLocale::c())}, QTimeZone::utc(), false};
}

std::vector<ImportSource> shown(const QString &rows)
{
    return sourcesOf(u"shown.csv"_s, (shownHeading() + rows).toUtf8());
}

} // namespace

class TestImportSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSameIsFound_data();
    void theSameIsFound();
    void ofEqualOnesTheFirstIsFound();
    void deletedEntriesAreNotThere();
    void rowsAboveCountToo();
    void whatIsThereCompletesEmptyFieldsOnly();
    void actionsStayWhenTheLogChanges();
    void moreThanTheLogHoldsIsRefused();
    void lettersOutsideTheCodePageAreCounted();
    void theRoomOfALogIsWhatItTakes();
    void headingsAreKept();
    void aBrokenMemoryCostsNothing();
    void manyOfOneStationAreQuick();
};

void TestImportSession::theSameIsFound_data()
{
    QTest::addColumn<QString>("moment");
    QTest::addColumn<QString>("freq");
    QTest::addColumn<QString>("piCode");
    QTest::addColumn<QString>("rdsName");
    QTest::addColumn<int>("minutes");
    QTest::addColumn<bool>("found");
    const QString at = u"12/06/2010 18:00:00"_s;
    QTest::newRow("all the same") << at << u"87.6"_s << u"D3C3"_s << u"RNE_1"_s << 10 << true;
    QTest::newRow("another form of the frequency") << at << u"87,60"_s << u"D3C3"_s << u""_s << 10 << true;
    QTest::newRow("another frequency") << at << u"87.7"_s << u"D3C3"_s << u"RNE_1"_s << 10 << false;
    QTest::newRow("same PI code") << at << u"87.6"_s << u"d3c3"_s << u"OTHER"_s << 10 << true;
    QTest::newRow("same name") << at << u"87.6"_s << u"F201"_s << u"rne 1"_s << 10 << true;
    QTest::newRow("neither") << at << u"87.6"_s << u"F201"_s << u"OTHER"_s << 10 << false;
    QTest::newRow("no PI code, no name") << at << u"87.6"_s << u""_s << u""_s << 10 << false;
    QTest::newRow("10 minutes before")
        << u"12/06/2010 17:50:00"_s << u"87.6"_s << u"D3C3"_s << u""_s << 10 << true;
    QTest::newRow("10 minutes behind")
        << u"12/06/2010 18:10:00"_s << u"87.6"_s << u"D3C3"_s << u""_s << 10 << true;
    QTest::newRow("a second more before")
        << u"12/06/2010 17:49:59"_s << u"87.6"_s << u"D3C3"_s << u""_s << 10 << false;
    QTest::newRow("a second more behind")
        << u"12/06/2010 18:10:01"_s << u"87.6"_s << u"D3C3"_s << u""_s << 10 << false;
    QTest::newRow("no minutes, same second") << at << u"87.6"_s << u"D3C3"_s << u""_s << 0 << true;
    QTest::newRow("no minutes, next second")
        << u"12/06/2010 18:00:01"_s << u"87.6"_s << u"D3C3"_s << u""_s << 0 << false;
    QTest::newRow("a day") << u"13/06/2010 18:00:00"_s << u"87.6"_s << u"D3C3"_s << u""_s << 1440 << true;
    QTest::newRow("before 1970") << u"12/06/1960 18:00:00"_s << u"87.6"_s << u"D3C3"_s << u""_s << 10
                                 << false;
}

void TestImportSession::theSameIsFound()
{
    QFETCH(QString, moment);
    QFETCH(QString, freq);
    QFETCH(QString, piCode);
    QFETCH(QString, rdsName);
    QFETCH(int, minutes);
    KnownReceptions known(minutes);
    known.add(reception(u"12/06/2010 18:00:00"_s, u"87.6"_s, u"D3C3"_s, u"RNE_1"_s), 7);
    const auto found = known.find(reception(moment, freq, piCode, rdsName));
    QTEST(found.has_value(), "found");
    QVERIFY(!found || *found == 7);
}

void TestImportSession::ofEqualOnesTheFirstIsFound()
{
    KnownReceptions known(60);
    const auto later = reception(u"12/06/2010 18:10:00"_s, u"87.6"_s, u"D3C3"_s, {});
    known.add(reception(u"12/06/2010 18:00:00"_s, u"87.6"_s, u"D3C3"_s, {}), 1);
    known.add(later, 2);
    known.add(later, 3);
    QCOMPARE(known.find(later), std::optional<qint64>(2));
}

void TestImportSession::deletedEntriesAreNotThere()
{
    Logbook log;
    LogEntry entry = reception(u"12/06/2010 18:00:00"_s, u"87.6"_s, deletedPiCode.toString(), u"RNE_1"_s);
    log.AddEntry(entry);
    QCOMPARE(countAlreadyThere(log, std::vector {entry}), 0);
    entry.piCode = u"D3C3"_s;
    log.AddEntry(entry);
    QCOMPARE(countAlreadyThere(log, std::vector {entry}), 1);
    const auto other = reception(u"13/06/2010 18:00:00"_s, u"87.6"_s, u"D3C3"_s, u""_s);
    QCOMPARE(countAlreadyThere(log, std::vector {entry, other, other, other}), 3);
}

void TestImportSession::rowsAboveCountToo()
{
    const Logbook log;
    ImportSession session(log, surroundings(), {}, 10);
    session.setSources(shown(u"2010-06-12 18:00:00,D3C3,87.6,,,,,,,,,\n"
                             "12/06/2010 18:00:00,x|y,87.6,,,,,,,,,\n"
                             "2010-06-12 18:09:00,,87.60,RNE_1,,,,,,,,\n"
                             "2010-06-12 18:12:00,D3C3,87.6,RNE_1,,,,,,,,\n"_s));
    QCOMPARE(session.rows().size(), std::size_t(4));
    QVERIFY(session.rows()[1]->isRefused());
    QVERIFY(!session.match(2).isThere());
    QCOMPARE(session.match(3).entry, -1);
    QCOMPARE(session.match(3).above, 2);
    QCOMPARE(session.action(3), ImportAction::LeaveOut);
    session.setMinutes(12);
    QCOMPARE(session.match(3).above, 0);
    ImportTally tally;
    QCOMPARE(session.change(tally).added.size(), std::size_t(2));
    session.setAction(3, ImportAction::Complete);
    QCOMPARE(session.action(3), ImportAction::LeaveOut);
    session.setAction(1, ImportAction::Add);
    QCOMPARE(session.action(1), ImportAction::LeaveOut);
    session.setAction(3, ImportAction::Add);
    QCOMPARE(session.change(tally).added.size(), std::size_t(3));
    QCOMPARE(importReport(tally), u"Added: 3\nCompleted: 0\nAlready there: 0\nRefused: 1"_s);
}

void TestImportSession::whatIsThereCompletesEmptyFieldsOnly()
{
    Logbook log;
    LogEntry entry = reception(u"12/06/2010 18:00:00"_s, u"87.6"_s, u"D3C3"_s, u""_s);
    entry.country = u"TBD"_s;
    entry.notes = u"mine"_s;
    log.AddEntry(entry);
    ImportSession session(log, surroundings(), {}, 10);
    session.setSources(shown(u"2010-06-12 18:01:00,D3C3,87.60,RNE_1,E,Bilbao,,,theirs,Es,,\n"
                             "2010-06-12 18:02:00,D3C3,87.60,OTHER,E,,812.4,,,,,4711\n"
                             "2010-06-12 18:03:00,D3C3,87.60,,TBD,,,,,,,\n"_s));
    QVERIFY(session.match(2).completes.empty());
    QVERIFY(!session.isPossible(2, ImportAction::Complete));
    session.setAction(0, ImportAction::Complete);
    session.setAction(1, ImportAction::Complete);
    ImportTally tally;
    const LogChange change = session.change(tally);
    QCOMPARE(tally.added, 0);
    QCOMPARE(tally.completed, 1);
    QCOMPARE(tally.alreadyThere, 1);
    log.apply(change);
    LogEntry completed = entry;
    completed.rdsName = u"RNE_1"_s;
    completed.transmitter = u"Bilbao"_s;
    completed.prop = u"Es"_s;
    completed.dist = u"812.4"_s;
    completed.uid = u"4711"_s;
    QVERIFY(log.entry(0) == completed);
    log.apply(change.inverse());
    QVERIFY(log.entry(0) == entry);
}

void TestImportSession::actionsStayWhenTheLogChanges()
{
    Logbook log;
    ImportSession session(log, surroundings(), {}, 10);
    session.setSources(
        shown(u"2010-06-12 18:00:00,D3C3,87.6,,,,,,,,,\n2010-06-13 18:00:00,D3C3,87.6,,,,,,,,,\n"_s));
    session.setAction(1, ImportAction::LeaveOut);
    log.AddEntry(reception(u"12/06/2010 18:00:00"_s, u"87.6"_s, u"D3C3"_s, u""_s));
    session.logChanged();
    QCOMPARE(session.match(0).entry, 0);
    QCOMPARE(session.action(0), ImportAction::LeaveOut);
    QCOMPARE(session.action(1), ImportAction::LeaveOut);
}

void TestImportSession::moreThanTheLogHoldsIsRefused()
{
    const Logbook log;
    QCOMPARE(roomRefusal(log, 32497), QString());
    QCOMPARE(roomRefusal(log, 32498),
        u"Nothing was imported: these are 32498 receptions, and the log has room for 32497 more. Leave some "
        u"out, "
        "or start a new logbook file in the setup."_s);
}

void TestImportSession::theRoomOfALogIsWhatItTakes()
{
    Logbook log;
    qint32 added = 0;
    const qint32 room = log.room();
    while (log.room() > 0) {
        log.AddEntry({});
        ++added;
    }
    QCOMPARE(added, room);
    QVERIFY_THROWS_EXCEPTION(RuntimeError, log.AddEntry({}));
}

void TestImportSession::lettersOutsideTheCodePageAreCounted()
{
    const Logbook log;
    ImportSession session(log, surroundings(), {}, 10);
    session.setSources(shown(u"2010-06-12 18:00:00,D3C3,87.6,,,Łódź \U0001F600,,,,,,\n"_s));
    QCOMPARE(session.rows()[0]->entry.transmitter, u"Lódz ?"_s);
    ImportTally tally;
    (void)session.change(tally);
    QCOMPARE(tally.lettersLost, 3);
    QCOMPARE(importReport(tally).section(u'\n', -1),
        u"3 letters are not in the code page of the log and came in as it has them."_s);
    session.setAction(0, ImportAction::LeaveOut);
    (void)session.change(tally);
    QCOMPARE(importReport(tally), u"Added: 0\nCompleted: 0\nAlready there: 0\nRefused: 0\nLeft out: 1"_s);
}

void TestImportSession::headingsAreKept()
{
    const TestDirectory directory;
    const QString file = directory.file(u"import.ini"_s);
    const QStringList heading {u"When"_s, u"What, and \u0142"_s};
    FormatChoice said;
    said.columns = {ColumnUse::DateTime, ColumnUse::Details};
    said.localTime = true;
    {
        ImportMemory memory(file);
        QVERIFY(!memory.heading(heading));
        QCOMPARE(memory.minutes(), 10);
        memory.keepHeading(heading, said);
        memory.keepMinutes(25);
        memory.keepZone(QTimeZone("Europe/Berlin"));
    }
    const ImportMemory memory(file);
    const auto kept = memory.heading(heading);
    QVERIFY(kept);
    QVERIFY(kept->columns == said.columns);
    QVERIFY(kept->localTime == said.localTime);
    QVERIFY(!memory.heading({u"When"_s}));
    QCOMPARE(memory.minutes(), 25);
    QCOMPARE(memory.zone().id(), "Europe/Berlin"_ba);
}

void TestImportSession::aBrokenMemoryCostsNothing()
{
    const TestDirectory directory;
    directory.write(u"import.ini"_s, QByteArray("[General]\nzone=Nowhere\nminutes=-7\n\xFF[[[\n"));
    const ImportMemory memory(directory.file(u"import.ini"_s));
    QCOMPARE(memory.minutes(), 0);
    QVERIFY(memory.zone().isValid());
    ImportMemory none {QString()};
    none.keepMinutes(3);
    none.keepHeading({u"a"_s}, {});
    QCOMPARE(none.minutes(), 10);
}

void TestImportSession::manyOfOneStationAreQuick()
{
    std::vector<LogEntry> receptions(
        100'000, reception(u"12/06/2010 18:00:00"_s, u"87.6"_s, u"D3C3"_s, u"A"_s));
    for (std::size_t i = 0; i < receptions.size(); ++i) {
        receptions[i].dateTime.seconds -= static_cast<qint64>(i);
    }
    QElapsedTimer time;
    time.start();
    QCOMPARE(countAlreadyThere(Logbook(), receptions), qsizetype(99'999));
    QVERIFY2(time.elapsed() < 5000, qPrintable(QString::number(time.elapsed())));
}

QTEST_GUILESS_MAIN(TestImportSession)
#include "tst_importsession.moc"
