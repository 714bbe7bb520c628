#include "core/logbooklines.h"
#include "support/changedlog.h"

#include <QRandomGenerator>
#include <QTest>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

// Entries that are encoded together.
constexpr int blockSize = 64;

LogEntry numbered(int number)
{
    LogEntry entry;
    entry.piCode = QString::number(0x1000 + number, 16).toUpper();
    entry.freq = u"87.6"_s;
    entry.notes = u"note %1"_s.arg(number);
    return entry;
}

Logbook numberedLog(int count)
{
    Logbook log;
    for (int i = 0; i < count; ++i) {
        log.AddEntry(numbered(i));
    }
    return log;
}

// A log, and the lines that are told of its changes.
struct Kept
{
    explicit Kept(Logbook start = {})
        : log(std::move(start))
    {
    }

    template<typename Work>
    void change(qint32 number, const Work &work)
    {
        changeEntry(log, number, work);
        lines.changed(number);
    }
    void add(const LogEntry &entry)
    {
        lines.changedFrom(log.count());
        log.AddEntry(entry);
    }
    void removeLast(qint32 count)
    {
        LogChange change;
        change.removed.resize(static_cast<std::size_t>(count));
        log.apply(change);
        lines.changedFrom(log.count());
    }
    QByteArray bytes() { return lines.bytes(log); }
    [[nodiscard]] QByteArray expected() const { return logbookBytes(log, CodePage()); }

    Logbook log;
    LogbookLines lines {CodePage()};
};

} // namespace

/// The lines that are kept encoded are those of the log as it is now.
class TestLogbookLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptyLogIsAnEmptyFile()
    {
        const Logbook log;
        LogbookLines lines {CodePage()};
        QCOMPARE(lines.bytes(log), ""_ba);
    }

    // Each takes four bytes in the file where the note has two characters.
    void notesOfLineBreaksAloneAreThere()
    {
        constexpr int breaks = 10'000;
        constexpr int count = 3;
        Kept kept(numberedLog(count));
        for (int i = 0; i < count; ++i) {
            kept.change(i, [](LogEntry &entry) { entry.notes = u"\r\n"_s.repeated(breaks); });
        }
        QByteArray expected;
        for (int i = 0; i < count; ++i) {
            expected += QByteArray::number(0x1000 + i, 16).toUpper() + "|01/01/1970 00:00:00||87.6|||"
                + QByteArray("CRLF").repeated(breaks) + "||||||\r\n";
        }
        QCOMPARE(kept.bytes(), expected);
        QCOMPARE(kept.expected(), expected);
    }

    void everyEntryIsThere_data()
    {
        QTest::addColumn<int>("count");
        for (const int count : {1, blockSize - 1, blockSize, blockSize + 1, 2 * blockSize}) {
            QTest::addRow("%d entries", count) << count;
        }
    }

    void everyEntryIsThere()
    {
        QFETCH(int, count);
        Kept kept(numberedLog(count));
        QCOMPARE(kept.bytes(), kept.expected());
        QCOMPARE(kept.bytes().count('\n'), count);
        kept.add(numbered(count));
        QCOMPARE(kept.bytes(), kept.expected());
        QCOMPARE(kept.bytes().count('\n'), count + 1);
        kept.removeLast(1);
        QCOMPARE(kept.bytes(), logbookBytes(numberedLog(count), CodePage()));
        kept.removeLast(count);
        QCOMPARE(kept.bytes(), ""_ba);
        kept.add(numbered(7));
        QCOMPARE(kept.bytes(), kept.expected());
    }

    void whatIsPreparedIsNotEncodedAgain()
    {
        Kept kept(numberedLog(600));
        kept.lines.prepare(kept.log);
        const QByteArray before = kept.expected();
        // Not told of, so what was prepared is still what is given.
        changeEntry(kept.log, 300, [](LogEntry &entry) { entry.rdsName = u"NEW"_s; });
        QCOMPARE(kept.bytes(), before);
        kept.lines.changed(300);
        QCOMPARE(kept.bytes(), kept.expected());
        QCOMPARE(kept.bytes().count("|NEW|"), 1);
    }

    void aChangeOfAnyEntryIsThere_data()
    {
        QTest::addColumn<int>("index");
        for (const int index : {0, blockSize - 1, blockSize, 599}) {
            QTest::addRow("entry %d", index) << index;
        }
    }

    void aChangeOfAnyEntryIsThere()
    {
        QFETCH(int, index);
        Kept kept(numberedLog(600));
        const QByteArray before = kept.bytes();
        kept.change(index, [](LogEntry &entry) { entry.rdsName = u"KÖLN"_s; });
        QCOMPARE(kept.bytes().count("|K\xd6LN|"), 1);
        QCOMPARE(kept.bytes(), kept.expected());
        kept.change(index, [](LogEntry &entry) { entry.piCode = deletedPiCode.toString(); });
        QCOMPARE(kept.bytes().count('\n'), 599);
        kept.change(index, [index](LogEntry &entry) { entry = numbered(index); });
        QCOMPARE(kept.bytes(), before);
    }

    void aThousandChangesAtRandomAreThere()
    {
        QRandomGenerator random(20080830);
        Kept kept(numberedLog(300));
        for (int change = 0; change < 1000; ++change) {
            const auto index = static_cast<qint32>(random.bounded(kept.log.count()));
            switch (random.bounded(5)) {
            case 0:
            case 1:
                kept.add(numbered(change));
                break;
            case 2:
                kept.change(index, [&](LogEntry &entry) { entry.dist = QString::number(change); });
                break;
            case 3:
                kept.removeLast(random.bounded(std::min(3, kept.log.count())));
                break;
            default:
                kept.change(index, [](LogEntry &entry) { entry.piCode = deletedPiCode.toString(); });
            }
            if (random.bounded(4) == 0) {
                QCOMPARE(kept.bytes(), kept.expected());
            }
        }
        QCOMPARE(kept.bytes(), kept.expected());
    }
};

QTEST_GUILESS_MAIN(TestLogbookLines)

#include "tst_logbooklines.moc"
