#include "backup/restoring.h"
#include "backuphome.h"
#include "core/logbookfile.h"
#include "document/logdocument.h"

using namespace quillon;
using namespace quillon::test;

namespace {

Logbook logOf(const QByteArray &lines)
{
    Logbook log;
    readLogbook(log, lines, english(), u"test"_s);
    return log;
}

TransmitterList sitesOf(const QByteArray &lines)
{
    TransmitterList sites;
    readTransmitters(sites, lines, CodePage(), u"test"_s);
    return sites;
}

const QByteArray a = logLine("A001", "01/01/2026 00:00:00", "88.0", "ONE");
const QByteArray b = logLine("B002", "02/01/2026 00:00:00", "89.0", "TWO");
const QByteArray c = logLine("C003", "03/01/2026 00:00:00", "90.0", "THREE");

// What an archive of these files gives.
QString problemOf(const QByteArray &archive)
{
    const TestDirectory directory;
    directory.write(u"a.zip"_s, archive);
    return readZip(directory.file(u"a.zip"_s), ZipReading::Whole).problem;
}

} // namespace

class TestRestoring : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneLogBecomesTheOther_data()
    {
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::newRow("the same") << a + b << a + b;
        QTest::newRow("one more since") << a + b + c << a + b;
        QTest::newRow("one deleted since") << a + c << a + b + c;
        QTest::newRow("all others") << a << b + c;
        QTest::newRow("from nothing") << QByteArray() << a + b;
        QTest::newRow("to nothing") << a + b << QByteArray();
    }
    void oneLogBecomesTheOther()
    {
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        const Logbook before = logOf(from);
        const Logbook wanted = logOf(to);
        const LogChange change = logDifference(before, wanted);
        QCOMPARE(change.isEmpty(), from == to);
        Logbook log = before;
        log.apply(change);
        QVERIFY(std::ranges::equal(log, wanted));
        log.apply(change.inverse());
        QVERIFY(std::ranges::equal(log, before));
    }

    void theSitesBecomeTheOthers()
    {
        const TransmitterList before = sitesOf("X|D|1|2||\r\nY|D|3|4||\r\nZ|D|5|6||\r\n");
        const TransmitterList wanted = sitesOf("X|D|1|2||\r\nY|D|3|9||\r\n");
        TransmitterList sites = before;
        const SiteChanges change = siteDifference(before, wanted);
        sites.apply(change);
        QVERIFY(std::ranges::equal(sites, wanted));
        QVERIFY(!sites.find(u"Z", u"D"));
        sites.apply(change.inverse());
        QVERIFY(std::ranges::equal(sites, before));
        QCOMPARE(sites.find(u"Z", u"D"), std::optional(2));
    }

    void theDifferenceIsToldInWords()
    {
        QCOMPARE(comparedToNow(88, 100), u"12 fewer"_s);
        QCOMPARE(comparedToNow(101, 100), u"1 more"_s);
        QCOMPARE(comparedToNow(100, 100), u"as many"_s);
        QCOMPARE(comparedToNow(std::nullopt, 100), QString());
    }

    void aDocumentIsRestoredInOneStep()
    {
        BackupHome home;
        home.directory.write(u"RDSLog.log"_s, a + b);
        const QByteArray oldSites = home.directory.read(u"tx.lst"_s);
        const QString path = home.backups().make(at(u"22/11/2026 05:00:00"_s));
        LogDocument document(home.config, english(), FileCalls::real());
        (void)document.loadLogbook();
        (void)document.loadSites();
        std::vector<DocumentChange> told;
        connect(&document, &LogDocument::changed, this,
            [&](const DocumentChange &what) { told.push_back(what); });
        LogEntry more = document.log().entry(0);
        more.rdsName = u"MORE"_s;
        Change added {u"Add"_s, LogChange::addition(more), {}};
        added.sites.push_back(*document.sites().addition({u"New"_s, u"F"_s, u"1"_s, u"2"_s, {}}));
        document.commit(added);
        Change edited {u"Update"_s, {}, {}};
        edited.log.setField(0, document.log().entry(0), LogField::RdsName, u"EDITED"_s);
        document.commit(edited);
        const QByteArray newLog = home.directory.read(u"RDSLog.log"_s);
        const QByteArray newSites = home.directory.read(u"tx.lst"_s);
        QVERIFY(newLog != a + b && newSites != oldSites);

        const BackedUpLog kept = readBackup(path, u"RDSLog.log"_s, english());
        document.commit({u"Restore"_s, logDifference(document.log(), kept.log),
            siteDifference(document.sites(), *kept.sites)});
        QCOMPARE(home.directory.read(u"RDSLog.log"_s), a + b);
        QCOMPARE(home.directory.read(u"tx.lst"_s), oldSites);
        // Every number whose entry is another one is told.
        QCOMPARE(told.back().entries, (std::vector<qint32> {0, 1, 2}));
        QCOMPARE(told.back().kind, DocumentChange::Kind::Restored);

        document.undo();
        QCOMPARE(home.directory.read(u"RDSLog.log"_s), newLog);
        QCOMPARE(home.directory.read(u"tx.lst"_s), newSites);
        document.redo();
        QCOMPARE(home.directory.read(u"RDSLog.log"_s), a + b);
        document.undo();
        document.undo();
        QCOMPARE(document.log().entry(0).rdsName, u"ONE"_s);
    }

    void asManyReceptionsAsBeforeAreRestored()
    {
        BackupHome home;
        home.directory.write(u"RDSLog.log"_s, a + b);
        LogDocument document(home.config, english(), FileCalls::real());
        (void)document.loadLogbook();
        document.commit({u"Restore"_s, logDifference(document.log(), logOf(a + c)), {}});
        QCOMPARE(home.directory.read(u"RDSLog.log"_s), a + c);
        document.undo();
        QCOMPARE(home.directory.read(u"RDSLog.log"_s), a + b);
    }

    void theHookComesBeforeEveryWriting()
    {
        BackupHome home;
        LogDocument document(home.config, english(), FileCalls::real());
        (void)document.loadLogbook();
        QByteArrayList seen;
        document.beforeWriting([&] { seen += home.directory.read(u"RDSLog.log"_s); });
        Change change {u"Update"_s, {}, {}};
        change.log.setField(0, document.log().entry(0), LogField::RdsName, u"EDITED"_s);
        document.commit(change);
        QCOMPARE(seen, QByteArrayList {twoReceptions});
        document.undo();
        QCOMPARE(seen.size(), 2);
    }

    void aBrokenArchiveIsToldInWords()
    {
        const BackupHome home;
        const QString path = home.backups().make(at(u"22/11/2026 05:00:00"_s));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray whole = file.readAll();
        QCOMPARE(problemOf(whole), QString());
        QCOMPARE(problemOf({}).isEmpty(), false);
        QCOMPARE(problemOf("text"), u"Not a zip archive"_s);
        for (qsizetype size = 0; size < whole.size(); ++size) {
            QVERIFY2(!problemOf(whole.first(size)).isEmpty(), qPrintable(QString::number(size)));
        }
        QByteArray bent = whole;
        // Within the packed logbook.
        bent[60] = static_cast<char>(bent[60] ^ 0x55);
        QVERIFY(!problemOf(bent).isEmpty());
        const TestDirectory directory;
        directory.write(u"a.zip"_s, bent);
        const QString error =
            errorOf([&] { (void)readBackup(directory.file(u"a.zip"_s), u"RDSLog.log"_s, english()); });
        QVERIFY2(error.startsWith(u"Run-time error: "_s), qPrintable(error));
        QVERIFY(error.contains(directory.file(u"a.zip"_s)));
    }

    void anArchiveThatUnpacksToTooMuchIsRefused()
    {
        const QByteArray piece(static_cast<qsizetype>(largestArchive / 2), 'x');
        const QByteArray bomb =
            zipBytes({{u"RDSLog.log"_s, piece}, {u"tx.lst"_s, piece}, {u"LOGBOOK.INI"_s, "x"}}, {}, {});
        QVERIFY(bomb.size() < largestArchive / 50);
        QCOMPARE(problemOf(bomb), u"it holds more than 128 MiB"_s);
        // What is beyond is not even unpacked.
        const TestDirectory directory;
        directory.write(u"a.zip"_s, bomb);
        const ZipContent content = readZip(directory.file(u"a.zip"_s), ZipReading::Whole);
        QCOMPARE(content.members.size(), std::size_t {2});
    }

    void anArchiveOfTooManyFilesIsRefused()
    {
        std::vector<ZipMember> many;
        for (int i = 0; i <= mostZipMembers; ++i) {
            many.push_back({QString::number(i), {}});
        }
        QCOMPARE(problemOf(zipBytes(many, {}, {})), u"it holds 101 files"_s);
    }

    void aFileThatIsBrokenIsToldAndNothingOfItComesIn()
    {
        const QByteArray name = "tx.lst";
        QByteArray archive = zipBytes(
            {{QString::fromLatin1(name), "Brocken|D|51.8|10.6|100|\r\n"}, {u"country.lst"_s, "D\r\n"}}, {},
            {});
        constexpr qsizetype headOfAFile = 30;
        archive[archive.indexOf("PK\3\4") + headOfAFile + name.size() + 2] ^= 1;
        const TestDirectory directory;
        directory.write(u"a.zip"_s, archive);
        const ZipContent content = readZip(directory.file(u"a.zip"_s), ZipReading::Whole);
        QVERIFY(!content.problem.isEmpty());
        QVERIFY(content.members.empty());
    }

    void aFilePackedInAnUnknownWayIsTold()
    {
        QByteArray archive = zipBytes({{u"tx.lst"_s, "Brocken|D|51.8|10.6|100|\r\n"}}, {}, {});
        constexpr char unknownMethod = 77;
        archive[archive.indexOf("PK\3\4") + 8] = unknownMethod;
        archive[archive.indexOf("PK\1\2") + 10] = unknownMethod;
        const QString problem = problemOf(archive);
        QVERIFY2(problem.contains(u"ompression method"_s), qPrintable(problem));
    }

    void anArchiveWithoutALogbookIsRefused()
    {
        const TestDirectory directory;
        directory.write(u"a.zip"_s, zipBytes({{u"tx.lst"_s, {}}}, {}, {}));
        QCOMPARE(errorOf([&] { (void)readBackup(directory.file(u"a.zip"_s), u"RDSLog.log"_s, english()); }),
            u"Run-time error: File not found\nReading the backup %1: it holds no logbook"_s.arg(
                directory.file(u"a.zip"_s)));
    }

    void withoutSitesTheSitesStay()
    {
        const TestDirectory directory;
        directory.write(u"a.zip"_s, zipBytes({{u"My.log"_s, a}}, {}, {}));
        const BackedUpLog kept = readBackup(directory.file(u"a.zip"_s), u"my.LOG"_s, english());
        QCOMPARE(kept.log.count(), 1);
        QVERIFY(!kept.sites);
    }
};

QTEST_GUILESS_MAIN(TestRestoring)
#include "tst_restoring.moc"
