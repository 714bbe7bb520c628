#include "backuphome.h"
#include "support/child.h"

#include <QRandomGenerator>

#include <sys/stat.h>
#include <unistd.h>

using namespace quillon;
using namespace quillon::test;

namespace {

const DateTime noon = at(u"22/11/2026 12:00:00"_s);

} // namespace

class TestBackupFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whicheverCallFailsTheLogIsUntouched_data()
    {
        QTest::addColumn<int>("code");
        QTest::newRow("full disk") << ENOSPC;
        QTest::newRow("read-only") << EROFS;
        QTest::newRow("broken disk") << EIO;
    }
    void whicheverCallFailsTheLogIsUntouched()
    {
        QFETCH(int, code);
        const QString yesterday = u"2026-11-21 120000.zip"_s;
        const QString outdatedOne = u"2026-02-03 120000.zip"_s;
        const QString lastOfFebruary = u"2026-02-04 120000.zip"_s;
        for (int failing = 1;; ++failing) {
            const BackupHome home;
            home.put(yesterday, "kept");
            home.put(outdatedOne, "old");
            home.put(lastOfFebruary, "last");
            const QStringList before = home.files();
            FaultyCalls calls(failing, code);
            Backups backups = home.backups(calls);
            const auto failure = backups.makeDaily(noon);
            QCOMPARE(home.files(), before);
            QCOMPARE(calls.open(), 0);
            QStringList names = home.names();
            QCOMPARE(names.removeAll(yesterday), 1);
            QCOMPARE(names.removeAll(lastOfFebruary), 1);
            names.removeAll(outdatedOne);
            // The new one is there whole, or not at all; nothing else is left.
            QVERIFY(names.isEmpty() || names == QStringList(u"2026-11-22 120000.zip"_s));
            if (!names.isEmpty()) {
                const ZipContent content =
                    readZip(backups.folder() + u'/' + names.front(), ZipReading::Whole);
                QCOMPARE(content.problem, QString());
                QCOMPARE(content.members.size(), std::size_t(4));
            }
            if (!calls.failed()) {
                QCOMPARE(failure, std::nullopt);
                QVERIFY(failing > 6);
                break;
            }
            QVERIFY(failure && failure->startsWith(u"Run-time error: "_s));
            const bool isThere = !names.isEmpty();
            // One that is there may be so until the next power cut only.
            QVERIFY(backups.problem() == *failure || (isThere && backups.problem().isEmpty()));
            const bool isDone = backups.problem().isEmpty();
            // It is not tried at every change, but again when ten minutes are over.
            calls.heal();
            QCOMPARE(backups.makeDaily(at(u"22/11/2026 12:09:59"_s)), std::nullopt);
            QCOMPARE(home.names().filter(u"2026-11-22"_s).size(), isThere ? 1 : 0);
            QCOMPARE(backups.problem().isEmpty(), isDone);
            QCOMPARE(backups.makeDaily(at(u"22/11/2026 12:10:00"_s)), std::nullopt);
            QCOMPARE(home.names().filter(u"2026-11-22"_s).size(), 1);
            QCOMPARE(backups.problem(), QString());
        }
    }

    void theClockMayBeSetBackOrTheDayEnd_data()
    {
        QTest::addColumn<QString>("next");
        QTest::newRow("set back") << u"22/11/2026 11:59:59"_s;
        QTest::newRow("the next day") << u"23/11/2026 00:00:00"_s;
    }
    // Ten minutes that would never end, or that belong to another day.
    void theClockMayBeSetBackOrTheDayEnd()
    {
        QFETCH(QString, next);
        const BackupHome home;
        FaultyCalls calls(1);
        Backups backups = home.backups(calls);
        const DateTime last = at(next).seconds < noon.seconds ? noon : at(u"22/11/2026 23:59:00"_s);
        QVERIFY(backups.makeDaily(last).has_value());
        calls.heal();
        QCOMPARE(backups.makeDaily(at(next)), std::nullopt);
        QCOMPARE(home.names().size(), 1);
    }

    void theProblemIsThatOfTheLogbook()
    {
        BackupHome home;
        home.directory.write(u"Other.log"_s, twoReceptions);
        const auto turnTo = [&](const QString &name) {
            home.config.changeConfig(u"LOGBOOK_FILENAME="_s, name);
        };
        FaultyCalls calls(0);
        Backups backups = home.backups(calls);
        QCOMPARE(backups.makeDaily(noon), std::nullopt);
        turnTo(u"Other.log"_s);
        calls.failAt(calls.count() + 1);
        QVERIFY(backups.makeDaily(noon).has_value());
        QVERIFY(!backups.problem().isEmpty());
        // The first one has its backup, whatever became of the other's.
        turnTo(u"RDSLog.log"_s);
        QCOMPARE(backups.makeDaily(noon), std::nullopt);
        QCOMPARE(backups.problem(), QString());
        turnTo(u"Other.log"_s);
        QCOMPARE(backups.makeDaily(noon), std::nullopt);
        QVERIFY(!backups.problem().isEmpty());
        calls.heal();
        QCOMPARE(backups.makeDaily(at(u"22/11/2026 12:10:00"_s)), std::nullopt);
        QCOMPARE(backups.problem(), QString());
    }

    void aBackupByHandEndsTheProblem()
    {
        const BackupHome home;
        FaultyCalls calls(1);
        Backups backups = home.backups(calls);
        QVERIFY(backups.makeDaily(noon).has_value());
        calls.heal();
        backups.make(noon);
        QCOMPARE(backups.problem(), QString());
        QCOMPARE(backups.makeDaily(noon), std::nullopt);
        QCOMPARE(home.names().size(), 1);
    }

    void aStateFolderThatIsAFileIsTold()
    {
        const BackupHome home;
        home.state.write(u"quillon"_s, "a file");
        const QStringList before = home.files();
        QVERIFY(home.backups().makeDaily(noon).has_value());
        QCOMPARE(home.files(), before);
    }

    void aDirectoryThatIsNotThereIsMade()
    {
        const BackupHome home;
        FaultyCalls calls(0);
        home.backups(calls).make(noon);
        QCOMPARE(home.names().size(), 1);
    }

    void aBackupThatIsKilledLeavesNothingForLong()
    {
        constexpr int kills = 60;
        constexpr quint32 longestLifeUs = 40'000;
        const BackupHome home;
        QByteArray log;
        for (int i = 0; i < 4000; ++i) {
            log += twoReceptions;
        }
        home.directory.write(u"RDSLog.log"_s, log);
        const QStringList before = home.files();
        const QString path = home.backups().make(noon);
        QRandomGenerator random(19480512);
        for (int i = 0; i < kills; ++i) {
            Child child([&] {
                Backups backups = home.backups();
                for (;;) {
                    backups.makeAs(path, noon);
                }
            });
            ::usleep(random.bounded(longestLifeUs));
            QVERIFY(child.kill());
            QCOMPARE(home.files(), before);
            QCOMPARE(readZip(path, ZipReading::Whole).problem, QString());
        }
        home.backups().make(at(u"23/11/2026 12:00:00"_s));
        QCOMPARE(home.names(), (QStringList {u"2026-11-22 120000.zip"_s, u"2026-11-23 120000.zip"_s}));
    }
};

QTEST_GUILESS_MAIN(TestBackupFaults)
#include "tst_backupfaults.moc"
