#include "backuphome.h"

#include <QProcess>

using namespace quillon;
using namespace quillon::test;

class TestBackups : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_home = std::make_unique<BackupHome>(); }

    void theFirstChangeOfADayIsPrecededByABackup()
    {
        Backups backups = m_home->backups();
        QCOMPARE(backups.makeDaily(at(u"22/11/2026 05:06:07"_s)), std::nullopt);
        QCOMPARE(m_home->names(), QStringList(u"2026-11-22 050607.zip"_s));
        QCOMPARE(backups.makeDaily(at(u"22/11/2026 23:59:59"_s)), std::nullopt);
        // Nor does a second run of the program make another one.
        QCOMPARE(m_home->backups().makeDaily(at(u"22/11/2026 12:00:00"_s)), std::nullopt);
        QCOMPARE(m_home->names().size(), 1);
        QCOMPARE(backups.makeDaily(at(u"23/11/2026 00:00:00"_s)), std::nullopt);
        QCOMPARE(m_home->names(), (QStringList {u"2026-11-22 050607.zip"_s, u"2026-11-23 000000.zip"_s}));
    }

    void theArchiveHoldsTheFilesAsTheyWere()
    {
        m_home->directory.write(u"stations.lst"_s, "own");
        m_home->directory.write(u"other.txt"_s, "no");
        const QString path = m_home->backups().make(at(u"22/11/2026 05:06:07"_s));
        const ZipContent content = readZip(path, ZipReading::Whole);
        QCOMPARE(content.problem, QString());
        QStringList names;
        for (const ZipMember &member : content.members) {
            names += member.name;
            QCOMPARE(member.bytes, m_home->directory.read(member.name));
        }
        QCOMPARE(names,
            (QStringList {
                u"RDSLog.log"_s, u"tx.lst"_s, u"country.lst"_s, u"stations.lst"_s, u"LOGBOOK.INI"_s}));
    }

    void anotherProgramReadsIt()
    {
        const QString path = m_home->backups().make(at(u"22/11/2026 05:06:07"_s));
        QProcess python;
        python.start(u"python3"_s,
            {u"-c"_s,
                u"import sys, zipfile\n"
                "z = zipfile.ZipFile(sys.argv[1])\n"
                "print(z.testzip(), z.namelist(), z.infolist()[0].date_time, len(z.read('RDSLog.log')))\n"_s,
                path});
        QVERIFY(python.waitForFinished());
        QCOMPARE(QString::fromUtf8(python.readAllStandardOutput()),
            u"None ['RDSLog.log', 'tx.lst', 'country.lst', 'LOGBOOK.INI'] (2026, 11, 22, 5, 6, 6) %1\n"_s.arg(
                twoReceptions.size()));
    }

    void eachApplicationDirectoryHasItsFolder()
    {
        m_home->directory.write(u"a/log/tx.lst"_s, {});
        m_home->directory.write(u"b/log/tx.lst"_s, {});
        const auto folderOf = [&](const QString &directory) {
            const Config config(m_home->directory.file(directory));
            return Backups(m_home->state.path(), config).folder();
        };
        QCOMPARE(folderOf(u"a/log"_s), folderOf(u"a/../a/log"_s));
        QVERIFY(folderOf(u"a/log"_s) != folderOf(u"b/log"_s));
        for (const QString &directory : {u"a/log"_s, u"b/log"_s}) {
            QVERIFY(QFileInfo(folderOf(directory)).fileName().startsWith(u"log-"_s));
        }
    }

    void eachLogbookHasItsBackups()
    {
        m_home->directory.write(u"Other.log"_s, twoReceptions);
        Backups backups = m_home->backups();
        QCOMPARE(backups.makeDaily(at(u"22/11/2026 05:00:00"_s)), std::nullopt);
        m_home->config.changeConfig(u"LOGBOOK_FILENAME="_s, u"Other.log"_s);
        QCOMPARE(backups.makeDaily(at(u"22/11/2026 06:00:00"_s)), std::nullopt);
        QCOMPARE(m_home->backups().makeDaily(at(u"22/11/2026 07:00:00"_s)), std::nullopt);
        QCOMPARE(m_home->names(), (QStringList {u"2026-11-22 050000.zip"_s, u"2026-11-22 060000.zip"_s}));
        const std::vector<Backup> list = backups.list();
        QCOMPARE(list[0].logbook, u"Other.log"_s);
        QCOMPARE(list[1].logbook, u"RDSLog.log"_s);
        QVERIFY(backups.isOfPresent(list[0]));
        QVERIFY(!backups.isOfPresent(list[1]));
        const QString error =
            errorOf([&] { (void)readBackup(list[1].path, logbookName(m_home->config), english()); });
        QVERIFY2(error.endsWith(u": it holds the logbook RDSLog.log, and the present one is Other.log"_s),
            qPrintable(error));
    }

    void theLastOfAMonthStaysOfEachLogbook()
    {
        m_home->directory.write(u"Other.log"_s, twoReceptions);
        Backups backups = m_home->backups();
        backups.make(at(u"03/02/2026 10:00:00"_s));
        backups.make(at(u"04/02/2026 10:00:00"_s));
        m_home->config.changeConfig(u"LOGBOOK_FILENAME="_s, u"Other.log"_s);
        backups.make(at(u"05/02/2026 10:00:00"_s));
        QCOMPARE(backups.makeDaily(at(u"22/11/2026 05:00:00"_s)), std::nullopt);
        QCOMPARE(m_home->names(),
            (QStringList {
                u"2026-02-04 100000.zip"_s, u"2026-02-05 100000.zip"_s, u"2026-11-22 050000.zip"_s}));
    }

    void aLogbookNamedLikeAnotherFileStandsOnce()
    {
        m_home->config.changeConfig(u"LOGBOOK_FILENAME="_s, u"Country.lst"_s);
        const QString path = m_home->backups().make(at(u"22/11/2026 05:00:00"_s));
        QStringList names;
        for (const ZipMember &member : readZip(path, ZipReading::Whole).members) {
            names += member.name;
        }
        QCOMPARE(names, (QStringList {u"country.lst"_s, u"tx.lst"_s, u"LOGBOOK.INI"_s}));
    }

    void aLargeListOfStationsIsLeftOut()
    {
        QFile stations(m_home->directory.file(u"stations.lst"_s));
        QVERIFY(stations.open(QIODevice::ReadWrite) && stations.resize(largestLog + 1));
        const QString path = m_home->backups().make(at(u"22/11/2026 05:00:00"_s));
        const ZipContent content = readZip(path, ZipReading::Whole);
        QVERIFY2(content.comment.contains(u"Left out, as it is larger than 8 MiB: stations.lst"_s),
            qPrintable(content.comment));
        QCOMPARE(content.members.size(), std::size_t(4));
        QVERIFY(stations.resize(largestStationList));
        // Nor does it count for the limit.
        QFile log(m_home->directory.file(u"RDSLog.log"_s));
        QVERIFY(log.open(QIODevice::ReadWrite) && log.resize(largestLog - 1000));
        log.close();
        const ZipContent larger =
            readZip(m_home->backups().make(at(u"23/11/2026 05:00:00"_s)), ZipReading::Whole);
        QCOMPARE(larger.problem, QString());
        QCOMPARE(larger.members.size(), std::size_t(5));
    }

    void theFolderIsThatOfTheState()
    {
        const QByteArray before = qgetenv("XDG_STATE_HOME");
        const bool wasSet = qEnvironmentVariableIsSet("XDG_STATE_HOME");
        qputenv("XDG_STATE_HOME", "/some/state");
        QCOMPARE(backupRoot(), u"/some/state/quillon/backups"_s);
        qputenv("XDG_STATE_HOME", "relative");
        QCOMPARE(backupRoot(), QDir::homePath() + u"/.local/state/quillon/backups"_s);
        qunsetenv("XDG_STATE_HOME");
        QCOMPARE(backupRoot(), QDir::homePath() + u"/.local/state/quillon/backups"_s);
        if (wasSet) {
            qputenv("XDG_STATE_HOME", before);
        }
    }

    void withoutAFolderNoneIsMade()
    {
        Backups backups(QString(), m_home->config);
        QCOMPARE(backups.makeDaily(at(u"22/11/2026 05:00:00"_s)), std::nullopt);
        QVERIFY(backups.list().empty());
        QVERIFY(!errorOf([&] { backups.make(at(u"22/11/2026 05:00:00"_s)); }).isEmpty());
        QCOMPARE(m_home->state.names(), QStringList());
    }

    void anEmptyStartIsNotBackedUp()
    {
        QFile::remove(m_home->directory.file(u"RDSLog.log"_s));
        QFile::remove(m_home->directory.file(u"tx.lst"_s));
        QCOMPARE(m_home->backups().makeDaily(at(u"22/11/2026 05:00:00"_s)), std::nullopt);
        QCOMPARE(m_home->state.names(), QStringList());
    }

    void thirtyDaysAreKeptAndTheLastOfEachMonth()
    {
        std::vector<DateTime> made;
        const DateTime now = at(u"22/11/2026 05:00:00"_s);
        made.reserve(120);
        for (int day = 0; day < 120; ++day) {
            made.push_back({now.seconds - day * secondsPerDay});
        }
        const std::vector<DateTime> gone = outdated(made, now);
        QStringList kept;
        for (const DateTime moment : made) {
            if (std::ranges::find(gone, moment) == gone.end()) {
                kept += dateText(moment);
            }
        }
        QCOMPARE(kept.size(), 30 + 3);
        QCOMPARE(kept[29], u"24/10/2026"_s);
        QCOMPARE(kept.mid(30), (QStringList {u"30/09/2026"_s, u"31/08/2026"_s, u"31/07/2026"_s}));
    }

    void theLastOfAMonthNeedNotBeItsLastDay()
    {
        const std::vector<DateTime> made {at(u"03/02/2026 10:00:00"_s), at(u"17/02/2026 09:00:00"_s),
            at(u"17/02/2026 21:00:00"_s), at(u"17/02/2025 21:00:00"_s), at(u"24/12/2026 00:00:00"_s)};
        QCOMPARE(outdated(made, at(u"22/11/2026 05:00:00"_s)),
            (std::vector<DateTime> {at(u"17/02/2026 09:00:00"_s), at(u"03/02/2026 10:00:00"_s)}));
    }

    void whatIsOutdatedGoesAndNothingElse()
    {
        for (const QString &name :
            {u"2026-02-03 100000.zip"_s, u"2026-02-17 100000.zip"_s, u"2026-02-30 100000.zip"_s,
                u"mine.zip"_s, u"2026-02-01 100000.zip.txt"_s, u".2026-02-03 100000.zip.new"_s}) {
            m_home->put(name, "x");
        }
        QCOMPARE(m_home->backups().makeDaily(at(u"22/11/2026 05:00:00"_s)), std::nullopt);
        QCOMPARE(m_home->names(),
            (QStringList {u"2026-02-01 100000.zip.txt"_s, u"2026-02-17 100000.zip"_s,
                u"2026-02-30 100000.zip"_s, u"2026-11-22 050000.zip"_s, u"mine.zip"_s}));
    }

    void twoOfOneSecondStandBesideEachOther()
    {
        Backups backups = m_home->backups();
        backups.make(at(u"22/11/2026 05:00:00"_s));
        backups.make(at(u"22/11/2026 05:00:00"_s));
        QCOMPARE(m_home->names(), (QStringList {u"2026-11-22 050000.zip"_s, u"2026-11-22 050001.zip"_s}));
    }

    void theListSaysWhatIsThere()
    {
        Backups backups = m_home->backups();
        backups.make(at(u"21/11/2026 05:00:00"_s));
        m_home->directory.write(u"RDSLog.log"_s, twoReceptions + twoReceptions);
        backups.make(at(u"22/11/2026 05:00:00"_s));
        m_home->put(u"2026-11-20 000000.zip"_s, "no archive");
        m_home->put(u"2026-11-19 000000.zip"_s);
        const std::vector<Backup> list = backups.list();
        QCOMPARE(list.size(), std::size_t(4));
        QCOMPARE(generalText(list[0].made), u"22/11/2026 05:00:00"_s);
        QCOMPARE(list[0].receptions, std::optional(4));
        QCOMPARE(list[1].receptions, std::optional(2));
        QCOMPARE(list[1].problem, QString());
        QCOMPARE(list[2].receptions, std::nullopt);
        QCOMPARE(list[2].problem, u"Not a zip archive"_s);
        QVERIFY(!list[3].problem.isEmpty());
    }

    void anUnknownLayoutIsBackedUpWithoutACount()
    {
        m_home->directory.write(u"RDSLog.log"_s, "what is this\r\n");
        Backups backups = m_home->backups();
        const QString path = backups.make(at(u"21/11/2026 05:00:00"_s));
        QCOMPARE(backups.list().front().receptions, std::nullopt);
        QCOMPARE(backups.list().front().problem, QString());
        QVERIFY(errorOf([&] {
            (void)readBackup(path, u"RDSLog.log"_s, english());
        }).contains(u"unknown layout"_s));
    }

    void aLogThatIsTooLargeIsToldAndLeftAlone()
    {
        QFile large(m_home->directory.file(u"RDSLog.log"_s));
        QVERIFY(large.open(QIODevice::ReadWrite) && large.resize(largestLog + 1));
        large.close();
        const auto failure = m_home->backups().makeDaily(at(u"22/11/2026 05:00:00"_s));
        QVERIFY(failure && failure->contains(u"larger than 64 MiB"_s));
        QCOMPARE(m_home->names(), QStringList());
    }

private:
    std::unique_ptr<BackupHome> m_home;
};

QTEST_GUILESS_MAIN(TestBackups)
#include "tst_backups.moc"
