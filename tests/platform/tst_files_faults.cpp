#include "platform/files.h"
#include "platform/runtimeerror.h"
#include "support/faultycalls.h"
#include "support/testfiles.h"

#include <QDir>
#include <QTest>

#include <csignal>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

ErrorName nameOf(int code)
{
    return systemError(code, {}).name();
}

int openFiles()
{
    return static_cast<int>(QDir(u"/proc/self/fd"_s).entryList(QDir::AllEntries | QDir::System).size());
}

// The exit code of `work`, run in a process of its own.
int exitCodeOf(const std::function<int()> &work)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(work());
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// A file system that takes nothing, with a word of something else still standing in errno.
class NothingTaken : public FileCalls
{
public:
    ssize_t write(int, QByteArrayView) override
    {
        errno = EINTR;
        return 0;
    }
};

} // namespace

class TestFilesFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWriteThatTakesNothingIsAFullDisk()
    {
        NothingTaken calls;
        const TestDirectory home;
        home.write(u"a.log"_s, "old");
        try {
            writeFile(home.file(u"a.log"_s), "new", calls);
            QFAIL("nothing was thrown");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.name(), nameOf(ENOSPC));
        }
        QCOMPARE(home.read(u"a.log"_s), "old"_ba);
    }

    void everyCallMayFail_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<qsizetype>("writeAtMost");
        QTest::addColumn<int>("noNameless");
        QTest::addColumn<bool>("existing");
        QTest::addColumn<bool>("leftover");
        for (const int code : {ENOSPC, EIO, EDQUOT, EACCES}) {
            for (const bool existing : {true, false}) {
                for (const bool leftover : {true, false}) {
                    const auto row = [&](const char *what, qsizetype most, int refusal) {
                        QTest::addRow("%s, errno %d, %s, %s", what, code, existing ? "rewritten" : "new",
                            leftover ? "with a leftover" : "clean")
                            << code << most << refusal << existing << leftover;
                    };
                    row("whole writes", 0, 0);
                    row("short writes", 3, 0);
                    row("no nameless files", 0, EOPNOTSUPP);
                    row("nameless files unknown", 3, EISDIR);
                    row("nameless files invalid", 0, EINVAL);
                }
            }
        }
    }

    void everyCallMayFail()
    {
        QFETCH(int, code);
        QFETCH(qsizetype, writeAtMost);
        QFETCH(int, noNameless);
        QFETCH(bool, existing);
        QFETCH(bool, leftover);
        const QByteArray content = "the new content\r\n"_ba;
        const int before = openFiles();
        bool succeeded = false;
        for (int failing = 1; !succeeded; ++failing) {
            QVERIFY(failing < 100);
            const TestDirectory home;
            if (existing) {
                home.write(u"log"_s, "old");
            }
            if (leftover) {
                home.write(u".log.new"_s, "half");
            }
            FaultyCalls calls(failing, code);
            calls.writeAtMost(writeAtMost);
            if (noNameless != 0) {
                calls.refuseNameless(noNameless);
            }
            try {
                writeFile(home.file(u"log"_s), content, calls);
                succeeded = true;
                QVERIFY(!calls.failed());
            } catch (const RuntimeError &error) {
                QVERIFY(calls.failed());
                QCOMPARE(error.name(), nameOf(code));
                QVERIFY(error.doing().contains(home.file(u"log"_s)));
            }
            QCOMPARE(calls.open(), 0);
            QCOMPARE(openFiles(), before);
            const QByteArray expected = calls.renamed() ? content : existing ? "old"_ba : QByteArray();
            QCOMPARE(home.read(u"log"_s), expected);
            QStringList names = home.names();
            if (leftover && !calls.renamed()) {
                // What lay there before may still do so, but never becomes more.
                names.removeAll(u".log.new"_s);
            }
            QCOMPARE(names, calls.renamed() || existing ? QStringList(u"log"_s) : QStringList());
        }
    }

    void aWriteOfNothingIsAFullDisk()
    {
        class Stuck : public FileCalls
        {
        public:
            ssize_t write(int, QByteArrayView) override { return 0; }
        };
        const TestDirectory home;
        home.write(u"log"_s, "old");
        Stuck calls;
        try {
            writeFile(home.file(u"log"_s), "new", calls);
            QFAIL("nothing was thrown");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.name(), ErrorName::DiskFull);
        }
        QCOMPARE(home.read(u"log"_s), "old"_ba);
        QCOMPARE(home.names(), QStringList(u"log"_s));
    }

    void anInterruptedWriteGoesOn()
    {
        const TestDirectory home;
        class Interrupted : public FileCalls
        {
        public:
            ssize_t write(int file, QByteArrayView bytes) override
            {
                if (++m_count % 2 == 1) {
                    errno = EINTR;
                    return -1;
                }
                return FileCalls::write(file, bytes.first(1));
            }

        private:
            int m_count = 0;
        };
        Interrupted calls;
        writeFile(home.file(u"log"_s), "content", calls);
        QCOMPARE(home.read(u"log"_s), "content"_ba);
    }

    void aFailingBackupLeavesNothing()
    {
        bool succeeded = false;
        for (int failing = 1; !succeeded; ++failing) {
            QVERIFY(failing < 100);
            const TestDirectory home;
            home.write(u"log"_s, "old");
            FaultyCalls calls(failing, ENOSPC);
            try {
                Q_UNUSED(backupFile(home.file(u"log"_s), home.path(), DateTime {}, calls))
                succeeded = true;
            } catch (const RuntimeError &error) {
                QCOMPARE(error.name(), ErrorName::DiskFull);
            }
            QCOMPARE(home.read(u"log"_s), "old"_ba);
            const QStringList copied {u"19700101 000000.bak"_s, u"log"_s};
            QCOMPARE(home.names(), calls.renamed() ? copied : QStringList(u"log"_s));
        }
    }

    // A limit on the size of files is what a full disk looks like to a process: a short write, then a
    // refusal.
    void aFullDiskKeepsTheOldFile()
    {
        const TestDirectory home;
        home.write(u"log"_s, "old");
        const QString path = home.file(u"log"_s);
        const int code = exitCodeOf([&] {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit {rlim_t(65'536), rlim_t(65'536)};
            if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) {
                return 10;
            }
            try {
                writeFile(path, QByteArray(1'000'000, 'x'));
            } catch (const RuntimeError &error) {
                return error.doing().contains(path) ? 0 : 11;
            }
            return 12;
        });
        QCOMPARE(code, 0);
        QCOMPARE(home.read(u"log"_s), "old"_ba);
        QCOMPARE(home.names(), QStringList(u"log"_s));
    }

    void aDirectoryThatCannotBeSyncedIsNoFailure_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<bool>("works");
        QTest::newRow("invalid") << EINVAL << true;
        QTest::newRow("not supported") << ENOTSUP << true;
        QTest::newRow("input/output error") << EIO << false;
    }

    void aDirectoryThatCannotBeSyncedIsNoFailure()
    {
        class NoSync : public FileCalls
        {
        public:
            explicit NoSync(int code)
                : m_code(code)
            {
            }
            int syncDirectory(const QByteArray &) override
            {
                errno = m_code;
                return -1;
            }

        private:
            int m_code;
        };
        QFETCH(int, code);
        QFETCH(bool, works);
        const TestDirectory home;
        NoSync calls(code);
        bool told = false;
        try {
            writeFile(home.file(u"log"_s), "new", calls);
        } catch (const RuntimeError &) {
            told = true;
        }
        QCOMPARE(told, !works);
        QCOMPARE(home.read(u"log"_s), "new"_ba);
        QCOMPARE(home.names(), QStringList(u"log"_s));
    }

    void aFileThatMayNotBeWrittenIsNotReplaced()
    {
        const TestDirectory home;
        home.write(u"log"_s, "old");
        const QString path = home.file(u"log"_s);
        QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadOther));
        // The directory itself lets everybody write.
        QVERIFY(::chmod(QFile::encodeName(home.path()).constData(), 0777) == 0);
        const int code = exitCodeOf([&] {
            constexpr uid_t nobody = 65534;
            if (::getuid() == 0 && ::setuid(nobody) != 0) {
                return 10;
            }
            try {
                writeFile(home.file(u"other"_s), "new");
                writeFile(path, "new");
            } catch (const RuntimeError &error) {
                return error.name() == ErrorName::PermissionDenied && error.doing().contains(path) ? 0 : 11;
            }
            return 12;
        });
        QCOMPARE(code, 0);
        QCOMPARE(home.read(u"log"_s), "old"_ba);
        QCOMPARE(home.names(), (QStringList {u"log"_s, u"other"_s}));
    }

    void aDirectoryThatMayNotBeWrittenKeepsTheOldFile()
    {
        const TestDirectory home;
        home.write(u"log"_s, "old");
        const QString path = home.file(u"log"_s);
        QVERIFY(QFile::setPermissions(
            home.path(), QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther));
        const int code = exitCodeOf([&] {
            constexpr uid_t nobody = 65534;
            if (::getuid() == 0 && ::setuid(nobody) != 0) {
                return 10;
            }
            try {
                writeFile(path, "new");
            } catch (const RuntimeError &error) {
                return error.name() == ErrorName::PermissionDenied ? 0 : 11;
            }
            return 12;
        });
        QVERIFY(QFile::setPermissions(home.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QCOMPARE(code, 0);
        QCOMPARE(home.read(u"log"_s), "old"_ba);
        QCOMPARE(home.names(), QStringList(u"log"_s));
    }
};

QTEST_GUILESS_MAIN(TestFilesFaults)
#include "tst_files_faults.moc"
