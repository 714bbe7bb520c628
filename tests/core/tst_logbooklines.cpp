#include "core/logbooklines.h"

#include <QRandomGenerator>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

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

} // namespace

/// The lines that are kept encoded are those of the log as it is now.
class TestLogbookLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptyLogIsAnEmptyFile()
    {
        const Logbook log;
        LogbookLines lines(log, CodePage());
        QCOMPARE(lines.bytes(), ""_ba);
    }

    void everyEntryIsThere_data()
    {
        QTest::addColumn<int>("count");
        for (const int count :
            {1, Logbook::blockSize - 1, Logbook::blockSize, Logbook::blockSize + 1, 2 * Logbook::blockSize}) {
            QTest::addRow("%d entries", count) << count;
        }
    }

    void everyEntryIsThere()
    {
        QFETCH(int, count);
        Logbook log = numberedLog(count);
        LogbookLines lines(log, CodePage());
        QCOMPARE(lines.bytes(), logbookBytes(log, CodePage()));
        QCOMPARE(lines.bytes().count('\n'), count);
        log.AddEntry(numbered(count));
        QCOMPARE(lines.bytes(), logbookBytes(log, CodePage()));
        QCOMPARE(lines.bytes().count('\n'), count + 1);
    }

    void aChangeOfAnyEntryIsThere_data()
    {
        QTest::addColumn<int>("index");
        for (const int index : {0, Logbook::blockSize - 1, Logbook::blockSize, 599}) {
            QTest::addRow("entry %d", index) << index;
        }
    }

    void aChangeOfAnyEntryIsThere()
    {
        QFETCH(int, index);
        Logbook log = numberedLog(600);
        LogbookLines lines(log, CodePage());
        const QByteArray before = lines.bytes();
        log.changeEntry(index, [](LogEntry &entry) { entry.rdsName = u"KÖLN"_s; });
        QCOMPARE(lines.bytes().count("|K\xd6LN|"), 1);
        QCOMPARE(lines.bytes(), logbookBytes(log, CodePage()));
        log.changeEntry(index, [](LogEntry &entry) { entry.piCode = deletedPiCode.toString(); });
        QCOMPARE(lines.bytes().count('\n'), 599);
        log.changeEntry(index, [index](LogEntry &entry) { entry = numbered(index); });
        QCOMPARE(lines.bytes(), before);
    }

    void aThousandChangesAtRandomAreThere()
    {
        QRandomGenerator random(20080830);
        Logbook log = numberedLog(300);
        LogbookLines lines(log, CodePage());
        for (int change = 0; change < 1000; ++change) {
            const auto index = static_cast<qint32>(random.bounded(log.count()));
            switch (random.bounded(3)) {
            case 0:
                log.AddEntry(numbered(change));
                break;
            case 1:
                log.changeEntry(index, [&](LogEntry &entry) { entry.dist = QString::number(change); });
                break;
            default:
                log.changeEntry(index, [](LogEntry &entry) { entry.piCode = deletedPiCode.toString(); });
            }
            if (random.bounded(4) == 0) {
                QCOMPARE(lines.bytes(), logbookBytes(log, CodePage()));
            }
        }
        QCOMPARE(lines.bytes(), logbookBytes(log, CodePage()));
    }
};

QTEST_GUILESS_MAIN(TestLogbookLines)

#include "tst_logbooklines.moc"
