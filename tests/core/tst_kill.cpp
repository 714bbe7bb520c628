#include "core/logbookfile.h"
#include "core/logbooklines.h"
#include "support/child.h"
#include "support/testfiles.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTest>

#include <unistd.h>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

constexpr int entryCount = 20'000;
constexpr int kills = 200;
constexpr quint32 longestLifeUs = 80'000;

Regional regional()
{
    return {CodePage(), NumberFormat(), MonthNames()};
}

// One of the two contents between which the file changes.
Logbook logOf(bool second)
{
    Logbook log;
    const DateTime first = *fromCivil({2005, 5, 1});
    for (int i = 0; i < entryCount; ++i) {
        LogEntry entry;
        entry.piCode = QString::number(0x1000 + i % 0xE000, 16).toUpper();
        entry.dateTime = DateTime {first.seconds + qint64(i) * 617};
        entry.prop = u"Es"_s;
        entry.freq = u"%1.%2"_s.arg(88 + i % 20).arg(i % 10);
        entry.transmitter = u"Mühlacker"_s;
        entry.country = u"D"_s;
        entry.notes = second ? u"heard again\r\nlouder"_s : u"first"_s;
        entry.rdsName = u"STATION"_s;
        log.AddEntry(entry);
    }
    return log;
}

// Saves the two logs in turn until it is killed.
[[noreturn]] void saveForEver(const QString &directory, const Logbook &first, const Logbook &second)
{
    const QString path = filePath(directory, u"RDSLog.log"_s);
    KeptFile kept;
    kept.readWhole(path, *fileState(path));
    for (;;) {
        kept.save(path, directory, logbookBytes(second, CodePage()));
        kept.save(path, directory, logbookBytes(first, CodePage()));
    }
}

} // namespace

class TestKill : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLogKilledWhileItIsSavedIsWhole()
    {
        const Logbook firstLog = logOf(false);
        const Logbook secondLog = logOf(true);
        const QByteArray first = logbookBytes(firstLog, CodePage());
        const QByteArray second = logbookBytes(secondLog, CodePage());
        QVERIFY(first != second);
        const TestDirectory home;
        home.write(u"RDSLog.log"_s, first);
        const QString path = home.file(u"RDSLog.log"_s);
        QRandomGenerator random(19480512);
        QElapsedTimer timer;
        timer.start();
        int firsts = 0;
        for (int i = 0; i < kills; ++i) {
            Child child([&] { saveForEver(home.path(), firstLog, secondLog); });
            ::usleep(random.bounded(longestLifeUs));
            QVERIFY(child.kill());

            QStringList names = home.names();
            // Between naming the new file and renaming it, its second name may be left: the next load removes
            // it.
            names.removeAll(u".RDSLog.log.new"_s);
            QCOMPARE(names, QStringList(u"RDSLog.log"_s));
            const QByteArray now = home.read(u"RDSLog.log"_s);
            QVERIFY(now == first || now == second);
            firsts += now == first ? 1 : 0;

            KeptFile kept;
            Logbook log;
            QCOMPARE(loadLogbook(log, path, regional(), kept), LogbookLoading::Loaded);
            QCOMPARE(log.count(), entryCount);
            QCOMPARE(home.names(), QStringList(u"RDSLog.log"_s));
        }
        // The kills did meet saves: both contents were seen.
        QVERIFY(firsts > 0);
        QVERIFY(firsts < kills);
        qInfo("%d kills in %lld ms, the first content seen %d times", kills,
            static_cast<long long>(timer.elapsed()), firsts);
    }
};

QTEST_GUILESS_MAIN(TestKill)
#include "tst_kill.moc"
