#include "platform/files.h"
#include "platform/runtimeerror.h"
#include "support/faultycalls.h"
#include "support/testfiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

mode_t modeOf(const QString &path)
{
    struct stat status
    {
    };
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
}

void setMode(const QString &path, mode_t mode)
{
    QCOMPARE(::chmod(QFile::encodeName(path).constData(), mode), 0);
}

template<typename Work>
std::optional<ErrorName> errorOf(const Work &work)
{
    try {
        work();
    } catch (const RuntimeError &error) {
        return error.name();
    }
    return std::nullopt;
}

QByteArrayList arrays(const QList<QByteArrayView> &views)
{
    QByteArrayList list;
    for (const QByteArrayView view : views) {
        list += view.toByteArray();
    }
    return list;
}

} // namespace

class TestFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsAFileWhateverItsCase()
    {
        const TestDirectory home;
        QVERIFY(!findFile(home.path(), u"LOGBOOK.INI"_s));
        QCOMPARE(resolveFile(home.path(), u"LOGBOOK.INI"_s), home.file(u"LOGBOOK.INI"_s));
        home.write(u"Logbook.Ini"_s, "x");
        QCOMPARE(findFile(home.path(), u"LOGBOOK.INI"_s), std::optional(home.file(u"Logbook.Ini"_s)));
        QCOMPARE(findFile(home.path(), u"logbook.ini"_s), std::optional(home.file(u"Logbook.Ini"_s)));
        QCOMPARE(resolveFile(home.path(), u"logbook.INI"_s), home.file(u"Logbook.Ini"_s));
        QVERIFY(!findFile(home.path(), u"LOGBOOK.IN"_s));
        QVERIFY(!findFile(home.path(), u"LOGBOOK.INIX"_s));
    }

    void prefersTheExactSpelling()
    {
        const TestDirectory home;
        home.write(u"TX.LST"_s, "1");
        home.write(u"Tx.Lst"_s, "2");
        home.write(u"tx.lst"_s, "3");
        QCOMPARE(findFile(home.path(), u"tx.lst"_s), std::optional(home.file(u"tx.lst"_s)));
        QCOMPARE(findFile(home.path(), u"TX.LST"_s), std::optional(home.file(u"TX.LST"_s)));
        QCOMPARE(findFile(home.path(), u"Tx.Lst"_s), std::optional(home.file(u"Tx.Lst"_s)));
    }

    void anIndexFindsTheSame()
    {
        const TestDirectory home;
        for (const QString &name : {u"a.ini"_s, u"Logbook.Ini"_s, u"TX.LST"_s, u"tx.lst"_s, u"z.ini"_s}) {
            home.write(name, "x");
        }
        const FileIndex index(home.path());
        for (const QString &name :
            {u"A.INI"_s, u"LOGBOOK.INI"_s, u"TX.LST"_s, u"tx.lst"_s, u"Tx.Lst"_s, u"Z.ini"_s, u"new.ini"_s}) {
            QCOMPARE(index.resolve(name), resolveFile(home.path(), name));
        }
    }

    void findsFilesOnly()
    {
        const TestDirectory home;
        home.write(u"tx.lst/inside"_s, "x");
        QVERIFY(!findFile(home.path(), u"tx.lst"_s));
        QVERIFY(QFile::link(home.file(u"nowhere"_s), home.file(u"LOGBOOK.INI"_s)));
        QVERIFY(!findFile(home.path(), u"LOGBOOK.INI"_s));
        QVERIFY(!findFile(home.path(), u"logbook.ini"_s));
        home.write(u"nowhere"_s, "x");
        QCOMPARE(findFile(home.path(), u"logbook.ini"_s), std::optional(home.file(u"LOGBOOK.INI"_s)));
        QVERIFY(!findFile(home.file(u"no directory"_s), u"tx.lst"_s));
    }

    void writesAndReadsWhole()
    {
        const TestDirectory home;
        QByteArray bytes("a\0b\r\n\xFF", 6);
        for (int i = 0; i < 3; ++i) {
            writeFile(home.file(u"f"_s), bytes);
            QCOMPARE(home.read(u"f"_s), bytes);
            QCOMPARE(readFile(home.file(u"f"_s)), bytes);
            QCOMPARE(home.names(), QStringList(u"f"_s));
            bytes = i == 0 ? QByteArray(3'000'000, 'x') : QByteArray();
        }
        QCOMPARE(home.read(u"f"_s), ""_ba);
    }

    void writesNamesThatAreHard()
    {
        const TestDirectory home;
        for (const QString &name : {u"Köln 100%1 log"_s, u".hidden"_s, u"-f"_s, u"a\nb"_s}) {
            writeFile(home.file(name), "x");
            QCOMPARE(home.names(), QStringList(name));
            QVERIFY(QFile::remove(home.file(name)));
        }
    }

    void keepsTheModeBits()
    {
        const TestDirectory home;
        for (const mode_t mode : {mode_t(0600), mode_t(0644), mode_t(0664), mode_t(0755), mode_t(0400)}) {
            home.write(u"f"_s, "old");
            setMode(home.file(u"f"_s), mode);
            writeFile(home.file(u"f"_s), "new");
            QCOMPARE(modeOf(home.file(u"f"_s)), mode);
            QCOMPARE(home.read(u"f"_s), "new"_ba);
            QVERIFY(QFile::remove(home.file(u"f"_s)));
        }
    }

    void aNewFileObeysTheUmask()
    {
        const TestDirectory home;
        const mode_t before = ::umask(027);
        writeFile(home.file(u"f"_s), "x");
        ::umask(before);
        QCOMPARE(modeOf(home.file(u"f"_s)), mode_t(0640));
    }

    void writesThroughASymbolicLink()
    {
        const TestDirectory home;
        home.write(u"real/log"_s, "old");
        home.write(u"linked/keep"_s, "");
        QVERIFY(QFile::link(u"../real/log"_s, home.file(u"linked/log"_s)));
        QVERIFY(QFile::link(home.file(u"linked/log"_s), home.file(u"log"_s)));
        writeFile(home.file(u"log"_s), "new");
        QVERIFY(QFileInfo(home.file(u"log"_s)).isSymLink());
        QVERIFY(QFileInfo(home.file(u"linked/log"_s)).isSymLink());
        QVERIFY(!QFileInfo(home.file(u"real/log"_s)).isSymLink());
        QCOMPARE(home.read(u"real/log"_s), "new"_ba);
        QCOMPARE(QDir(home.file(u"real"_s)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
            QStringList(u"log"_s));
    }

    void writesThroughALinkToAFileThatIsNotThereYet()
    {
        const TestDirectory home;
        QVERIFY(QFile::link(home.file(u"new"_s), home.file(u"log"_s)));
        writeFile(home.file(u"log"_s), "x");
        QVERIFY(QFileInfo(home.file(u"log"_s)).isSymLink());
        QCOMPARE(home.read(u"new"_s), "x"_ba);
    }

    void refusesALoopOfLinks()
    {
        const TestDirectory home;
        QVERIFY(QFile::link(home.file(u"b"_s), home.file(u"a"_s)));
        QVERIFY(QFile::link(home.file(u"a"_s), home.file(u"b"_s)));
        QVERIFY(errorOf([&] { writeFile(home.file(u"a"_s), "x"); }).has_value());
        QCOMPARE(home.names(), (QStringList {u"a"_s, u"b"_s}));
    }

    void tellsWhatCannotBeWritten()
    {
        const TestDirectory home;
        home.write(u"folder/keep"_s, "x");
        home.write(u"file"_s, "x");
        const QString missing = home.file(u"no/such/log"_s);
        try {
            writeFile(missing, "x");
            QFAIL("nothing was thrown");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.text(), QString(u"Run-time error: Path not found\nWriting "_s + missing));
        }
        QVERIFY(errorOf([&] { writeFile(home.file(u"folder"_s), "x"); }).has_value());
        QVERIFY(errorOf([&] { writeFile(home.file(u"file/below"_s), "x"); }).has_value());
        QCOMPARE(home.names(), (QStringList {u"file"_s, u"folder"_s}));
        QCOMPARE(home.read(u"file"_s), "x"_ba);
        QCOMPARE(home.read(u"folder/keep"_s), "x"_ba);
    }

    void tellsWhatCannotBeRead()
    {
        const TestDirectory home;
        QCOMPARE(errorOf([&] { Q_UNUSED(readFile(home.file(u"none"_s))) }),
            std::optional(ErrorName::FileNotFound));
        QVERIFY(errorOf([&] { Q_UNUSED(readFile(home.path())) }).has_value());
    }

    void splitsLines_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArrayList>("lines");
        QTest::newRow("empty") << ""_ba << QByteArrayList();
        QTest::newRow("CR LF") << "a\r\nb\r\n"_ba << QByteArrayList {"a", "b"};
        QTest::newRow("LF") << "a\nb\n"_ba << QByteArrayList {"a", "b"};
        QTest::newRow("mixed") << "a\nb\r\nc\n"_ba << QByteArrayList {"a", "b", "c"};
        QTest::newRow("last line unended") << "a\r\nb"_ba << QByteArrayList {"a", "b"};
        QTest::newRow("empty lines") << "\r\n\n\r\n"_ba << QByteArrayList {"", "", ""};
        QTest::newRow("CR inside") << "a\rb\r\r\n"_ba << QByteArrayList {"a\rb\r"};
        QTest::newRow("CR at the end") << "a\r"_ba << QByteArrayList {"a\r"};
        QTest::newRow("zero") << QByteArray("a\0b\n", 4) << QByteArrayList {QByteArray("a\0b", 3)};
    }

    void splitsLines()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArrayList, lines);
        QCOMPARE(arrays(splitLines(QByteArrayView(text))), lines);
        const QString asText = QString::fromLatin1(text);
        QByteArrayList ofText;
        for (const QStringView line : splitLines(QStringView(asText))) {
            ofText += line.toLatin1();
        }
        QCOMPARE(ofText, lines);
    }

    void aBackupTakesTheNextFreeSecond()
    {
        const TestDirectory home;
        home.write(u"RDSLog.log"_s, "one");
        const DateTime now = *fromCivil({2010, 12, 31, 23, 59, 58});
        QCOMPARE(
            backupFile(home.file(u"RDSLog.log"_s), home.path(), now), home.file(u"20101231 235958.bak"_s));
        home.write(u"RDSLog.log"_s, "two");
        QCOMPARE(
            backupFile(home.file(u"RDSLog.log"_s), home.path(), now), home.file(u"20101231 235959.bak"_s));
        home.write(u"RDSLog.log"_s, "three");
        QCOMPARE(
            backupFile(home.file(u"RDSLog.log"_s), home.path(), now), home.file(u"20110101 000000.bak"_s));
        QCOMPARE(home.read(u"20101231 235958.bak"_s), "one"_ba);
        QCOMPARE(home.read(u"20101231 235959.bak"_s), "two"_ba);
        QCOMPARE(home.read(u"20110101 000000.bak"_s), "three"_ba);
        QCOMPARE(home.names().size(), 4);
    }

    void copiesWhole()
    {
        const TestDirectory home;
        home.write(u"from"_s, "content");
        home.write(u"to"_s, "something longer than that");
        copyFile(home.file(u"from"_s), home.file(u"to"_s));
        QCOMPARE(home.read(u"to"_s), "content"_ba);
        QVERIFY(errorOf([&] { copyFile(home.file(u"none"_s), home.file(u"to"_s)); }).has_value());
        QCOMPARE(home.read(u"to"_s), "content"_ba);
    }

    void appendsAndCreates()
    {
        const TestDirectory home;
        appendToFile(home.file(u"f"_s), "a\r\n");
        appendToFile(home.file(u"f"_s), "b\r\n");
        QCOMPARE(home.read(u"f"_s), "a\r\nb\r\n"_ba);
        QVERIFY(errorOf([&] { appendToFile(home.file(u"no/f"_s), "x"); }).has_value());
    }

    void whatIsAddedIsOnTheDiskOrTold()
    {
        for (const bool isNew : {true, false}) {
            bool succeeded = false;
            for (int failing = 1; !succeeded; ++failing) {
                QVERIFY(failing < 20);
                const TestDirectory home;
                if (!isNew) {
                    home.write(u"f"_s, "a\r\n");
                }
                FaultyCalls calls(failing, ENOSPC);
                calls.writeAtMost(2);
                const auto error = errorOf([&] { appendToFile(home.file(u"f"_s), "bcde\r\n", calls); });
                succeeded = !error;
                QCOMPARE(error.value_or(ErrorName::DiskFull), ErrorName::DiskFull);
                QCOMPARE(calls.failed(), !succeeded);
                QCOMPARE(calls.open(), 0);
                if (succeeded) {
                    QCOMPARE(home.read(u"f"_s), isNew ? "bcde\r\n"_ba : "a\r\nbcde\r\n"_ba);
                    // Opened, written three times, synced, closed; a new name synced as well.
                    QCOMPARE(calls.count(), isNew ? 7 : 6);
                }
            }
        }
    }

    void theStateTellsEveryChange()
    {
        const TestDirectory home;
        const QString path = home.file(u"f"_s);
        QVERIFY(!fileState(path));
        home.write(u"f"_s, "abc");
        const auto first = fileState(path);
        QVERIFY(first.has_value());
        QCOMPARE(first->size, 3);
        QVERIFY(fileState(path) == first);
        QTest::qWait(20);
        home.write(u"f"_s, "abd");
        QVERIFY(fileState(path) != first);
        const auto second = fileState(path);
        QTest::qWait(20);
        writeFile(path, "abd");
        QVERIFY(fileState(path) != second);
        const auto third = fileState(path);
        QTest::qWait(20);
        // A program that puts the old times back is found out as well.
        struct stat status
        {
        };
        QCOMPARE(::stat(QFile::encodeName(path).constData(), &status), 0);
        home.write(u"f"_s, "xyz");
        const std::array<timespec, 2> times {status.st_atim, status.st_mtim};
        QCOMPARE(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times.data(), 0), 0);
        QCOMPARE(fileState(path)->modifiedNs, third->modifiedNs);
        QVERIFY(fileState(path) != third);
    }

    void whatAKilledWriteLeftIsRemovedAndNothingElse()
    {
        const TestDirectory home;
        home.write(u"RDSLog.log"_s, "old");
        home.write(u".RDSLog.log.new"_s, "half");
        home.write(u".other.new"_s, "other");
        home.write(u"RDSLog.log.new"_s, "mine");
        removeLeftover(home.file(u"RDSLog.log"_s));
        QCOMPARE(home.names(), (QStringList {u".other.new"_s, u"RDSLog.log"_s, u"RDSLog.log.new"_s}));
        removeLeftover(home.file(u"RDSLog.log"_s));
        QCOMPARE(home.names().size(), 3);
    }

    void whatKilledWritesOfManyFilesLeftIsRemovedAndNothingElse()
    {
        const TestDirectory home;
        for (const QString &name : {u".page_1.htm.new"_s, u".page_gone.htm.new"_s, u".page_1.htm"_s,
                 u".other.new"_s, u"page_1.htm"_s, u"page_2.htm.new"_s}) {
            home.write(name, "x");
        }
        removeLeftovers(home.path(), u"page"_s);
        QCOMPARE(home.names(),
            (QStringList {u".other.new"_s, u".page_1.htm"_s, u"page_1.htm"_s, u"page_2.htm.new"_s}));
    }

    void whatKilledCopiesLeftIsRemovedAndNothingElse()
    {
        const TestDirectory home;
        const QStringList kept {u".20261122 234911.bak"_s, u".2026112 234911.bak.new"_s,
            u".a0261122 234911.bak.new"_s, u"20261122 234911.bak"_s, u"20261122 234911.bak.new"_s};
        for (const QString &name : kept) {
            home.write(name, "x");
        }
        home.write(u".20261122 234911.bak.new"_s, "half");
        home.write(u".20250101 000000.bak.new"_s, "half");
        removeCopyLeftovers(home.path());
        const QStringList left = home.names();
        QCOMPARE(QSet<QString>(left.begin(), left.end()), QSet<QString>(kept.begin(), kept.end()));
    }

    void aLeftoverDoesNotHinderTheNextWrite()
    {
        const TestDirectory home;
        home.write(u"log"_s, "old");
        home.write(u".log.new"_s, "half");
        writeFile(home.file(u"log"_s), "new");
        QCOMPARE(home.names(), QStringList(u"log"_s));
        QCOMPARE(home.read(u"log"_s), "new"_ba);
    }

    void theLeftoverBesideTheEndOfALinkIsRemoved()
    {
        const TestDirectory home;
        home.write(u"real/log"_s, "old");
        home.write(u"real/.log.new"_s, "half");
        QVERIFY(QFile::link(home.file(u"real/log"_s), home.file(u"log"_s)));
        removeLeftover(home.file(u"log"_s));
        QVERIFY(!QFile::exists(home.file(u"real/.log.new"_s)));
        QCOMPARE(home.read(u"log"_s), "old"_ba);
    }
};

QTEST_GUILESS_MAIN(TestFiles)
#include "tst_files.moc"
