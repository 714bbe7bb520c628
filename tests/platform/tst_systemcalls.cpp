#include "platform/files.h"
#include "platform/runtimeerror.h"
#include "support/testfiles.h"

#include <QFile>
#include <QTest>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>
#include <vector>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

// What stands between the program and the operating system while a test watches. The two functions below take
// the place of the C library's for this program and for the libraries that it uses.
struct Watch
{
    std::function<int(int)> sync = {};
    std::function<ssize_t(int, void *, std::size_t)> read = {};
};

Watch &watch()
{
    static Watch current;
    return current;
}

class Watching
{
public:
    explicit Watching(Watch calls) { watch() = std::move(calls); }
    Watching(const Watching &) = delete;
    Watching &operator=(const Watching &) = delete;
    ~Watching() { watch() = {}; }
};

int failedWith(int code)
{
    errno = code;
    return -1;
}

int realSync(int file)
{
    return static_cast<int>(::syscall(SYS_fsync, file));
}

ssize_t realRead(int file, void *data, std::size_t size)
{
    return ::syscall(SYS_read, file, data, size);
}

bool isDirectory(int file)
{
    struct stat status
    {
    };
    return ::fstat(file, &status) == 0 && S_ISDIR(status.st_mode);
}

// Reads as a disk of which this many bytes are readable, in steps of at most `step`.
class FailingDisk
{
public:
    FailingDisk(qsizetype readable, qsizetype step, int code)
        : m_left(readable)
        , m_step(step)
        , m_code(code)
    {
    }
    ssize_t operator()(int file, void *data, std::size_t size)
    {
        if (m_left == 0) {
            return failedWith(m_code);
        }
        const ssize_t count =
            realRead(file, data, std::min(size, static_cast<std::size_t>(std::min(m_left, m_step))));
        m_left -= std::max(count, ssize_t(0));
        return count;
    }

private:
    qsizetype m_left;
    qsizetype m_step;
    int m_code;
};

} // namespace

extern "C" int fsync(int file)
{
    return watch().sync ? watch().sync(file) : realSync(file);
}

extern "C" ssize_t read(int file, void *data, std::size_t size)
{
    return watch().read ? watch().read(file, data, size) : realRead(file, data, size);
}

/// What reaches the operating system, and what its answers are taken for.
class TestSystemCalls : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFileIsSyncedBeforeItsNameAndTheDirectoryAfter()
    {
        const TestDirectory home;
        home.write(u"log"_s, "old");
        struct Synced
        {
            bool directory;
            QByteArray then;

            bool operator==(const Synced &) const = default;
        };
        std::vector<Synced> synced;
        const Watching watching({.sync = [&](int file) {
            synced.push_back({isDirectory(file), home.read(u"log"_s)});
            return realSync(file);
        }});
        writeFile(home.file(u"log"_s), "new");
        QCOMPARE(synced, (std::vector<Synced> {{false, "old"}, {true, "new"}}));
    }

    void aSyncThatFailsIsAFailure_data()
    {
        QTest::addColumn<bool>("ofDirectory");
        QTest::addColumn<QByteArray>("left");
        QTest::newRow("of the file") << false << "old"_ba;
        QTest::newRow("of the directory") << true << "new"_ba;
    }

    void aSyncThatFailsIsAFailure()
    {
        QFETCH(bool, ofDirectory);
        QFETCH(QByteArray, left);
        const TestDirectory home;
        home.write(u"log"_s, "old");
        const Watching watching({.sync = [ofDirectory](int file) {
            return isDirectory(file) == ofDirectory ? failedWith(ENOSPC) : realSync(file);
        }});
        try {
            writeFile(home.file(u"log"_s), "new");
            QFAIL("nothing was thrown");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.name(), ErrorName::DiskFull);
        }
        QCOMPARE(home.read(u"log"_s), left);
        QCOMPARE(home.names(), QStringList(u"log"_s));
    }

    void aReadThatFailsIsNotTheEndOfTheFile_data()
    {
        QTest::addColumn<qsizetype>("readable");
        QTest::addColumn<qsizetype>("step");
        for (const qsizetype readable : {0, 1, 4095, 4096, 50'000, 99'999, 100'000}) {
            for (const qsizetype step : {qsizetype(777), qsizetype(1'000'000)}) {
                QTest::addRow("%lld bytes in steps of %lld", qlonglong(readable), qlonglong(step))
                    << readable << step;
            }
        }
    }

    void aReadThatFailsIsNotTheEndOfTheFile()
    {
        QFETCH(qsizetype, readable);
        QFETCH(qsizetype, step);
        const TestDirectory home;
        home.write(u"log"_s, QByteArray(100'000, 'x'));
        const Watching watching({.read = FailingDisk(readable, step, EACCES)});
        try {
            const qsizetype size = readFile(home.file(u"log"_s)).size();
            QFAIL(qPrintable(u"%1 bytes were taken for the file"_s.arg(size)));
        } catch (const RuntimeError &error) {
            QCOMPARE(error.name(), ErrorName::PermissionDenied);
            QVERIFY(error.doing().contains(home.file(u"log"_s)));
        }
    }

    void shortAndInterruptedReadsGoOn()
    {
        const TestDirectory home;
        QByteArray content;
        for (int i = 0; i < 20'000; ++i) {
            content += QByteArray::number(i);
        }
        home.write(u"log"_s, content);
        int calls = 0;
        const Watching watching({.read = [&calls](int file, void *data, std::size_t size) {
            ++calls;
            return calls % 3 == 0 ? failedWith(EINTR)
                                  : realRead(file, data, std::min(size, std::size_t(999)));
        }});
        QCOMPARE(readFile(home.file(u"log"_s)), content);
        QVERIFY(calls > 100);
    }

    // Files that grow, and those that the system makes up, are larger than they say.
    void aFileThatSaysNoSizeIsReadWhole()
    {
        const QByteArray environment = readFile(u"/proc/self/environ"_s);
        QVERIFY(environment.contains("PATH="));
        const TestDirectory home;
        home.write(u"log"_s, "one");
        bool grown = false;
        const Watching watching({.read = [&](int file, void *data, std::size_t size) {
            if (!std::exchange(grown, true)) {
                home.write(u"log"_s, QByteArray(100'000, 'y'));
            }
            return realRead(file, data, size);
        }});
        QCOMPARE(readFile(home.file(u"log"_s)), QByteArray(100'000, 'y'));
    }
};

QTEST_GUILESS_MAIN(TestSystemCalls)
#include "tst_systemcalls.moc"
