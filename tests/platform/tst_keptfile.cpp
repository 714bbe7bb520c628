#include "platform/keptfile.h"
#include "platform/runtimeerror.h"
#include "support/faultycalls.h"
#include "support/testfiles.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

class TestKeptFile : public QObject
{
    Q_OBJECT

    // The content of the one dated copy in the directory.
    static QByteArray copyIn(const TestDirectory &home)
    {
        const QStringList copies = home.names().filter(u".bak"_s);
        return copies.size() == 1 ? home.read(copies.first()) : "not one copy"_ba;
    }

private Q_SLOTS:
    void aNewFileNeedsNoCopy()
    {
        const TestDirectory home;
        KeptFile kept;
        QVERIFY(!kept.save(home.file(u"log"_s), home.path(), "one"));
        QVERIFY(!kept.save(home.file(u"log"_s), home.path(), "two"));
        QCOMPARE(home.names(), QStringList(u"log"_s));
        QCOMPARE(home.read(u"log"_s), "two"_ba);
    }

    void aFileReadWholeNeedsNoCopy()
    {
        const TestDirectory home;
        home.write(u"log"_s, "old");
        KeptFile kept;
        kept.readWhole(home.file(u"log"_s), *fileState(home.file(u"log"_s)));
        QVERIFY(!kept.save(home.file(u"log"_s), home.path(), "new"));
        QCOMPARE(home.names(), QStringList(u"log"_s));
    }

    void aFileThatWasNotReadIsCopiedOnce()
    {
        const TestDirectory home;
        home.write(u"log"_s, "old");
        KeptFile kept;
        const auto copy = kept.save(home.file(u"log"_s), home.path(), "new");
        QVERIFY(copy.has_value());
        static const QRegularExpression dated(u"^\\d{8} \\d{6}\\.bak$"_s);
        QVERIFY(dated.match(QFileInfo(*copy).fileName()).hasMatch());
        QVERIFY(!kept.save(home.file(u"log"_s), home.path(), "newer"));
        QCOMPARE(copyIn(home), "old"_ba);
        QCOMPARE(home.read(u"log"_s), "newer"_ba);
        QCOMPARE(home.names().size(), 2);
    }

    void aFileThatAnotherProgramChangedIsCopied()
    {
        const TestDirectory home;
        KeptFile kept;
        QVERIFY(!kept.save(home.file(u"log"_s), home.path(), "one"));
        QTest::qWait(20);
        home.write(u"log"_s, "ONE");
        QVERIFY(kept.save(home.file(u"log"_s), home.path(), "two").has_value());
        QCOMPARE(copyIn(home), "ONE"_ba);
    }

    void aFileThatChangedWhileItWasReadIsCopied()
    {
        const TestDirectory home;
        home.write(u"log"_s, "old");
        const FileState before = *fileState(home.file(u"log"_s));
        QTest::qWait(20);
        home.write(u"log"_s, "old and more");
        KeptFile kept;
        kept.readWhole(home.file(u"log"_s), before);
        QVERIFY(kept.save(home.file(u"log"_s), home.path(), "new").has_value());
        QCOMPARE(copyIn(home), "old and more"_ba);
    }

    void aFileUnderAnotherNameIsCopied()
    {
        const TestDirectory home;
        home.write(u"other"_s, "of others");
        KeptFile kept;
        QVERIFY(!kept.save(home.file(u"log"_s), home.path(), "one"));
        QVERIFY(kept.save(home.file(u"other"_s), home.path(), "two").has_value());
        QCOMPARE(copyIn(home), "of others"_ba);
        QCOMPARE(home.read(u"log"_s), "one"_ba);
        QCOMPARE(home.read(u"other"_s), "two"_ba);
    }

    void aRemovedFileIsWrittenAnew()
    {
        const TestDirectory home;
        KeptFile kept;
        QVERIFY(!kept.save(home.file(u"log"_s), home.path(), "one"));
        QVERIFY(QFile::remove(home.file(u"log"_s)));
        QVERIFY(!kept.save(home.file(u"log"_s), home.path(), "two"));
        QCOMPARE(home.read(u"log"_s), "two"_ba);
    }

    void eachOfSeveralFilesIsCopiedOnce()
    {
        const TestDirectory home;
        home.write(u"a"_s, "of a");
        home.write(u"b"_s, "of b");
        KeptFile kept;
        QVERIFY(kept.save(home.file(u"a"_s), home.path(), "one").has_value());
        QVERIFY(kept.save(home.file(u"b"_s), home.path(), "two").has_value());
        QVERIFY(!kept.save(home.file(u"a"_s), home.path(), "three").has_value());
        QVERIFY(!kept.save(home.file(u"b"_s), home.path(), "four").has_value());
        QCOMPARE(home.names().filter(u".bak"_s).size(), 2);
        QCOMPARE(home.read(u"a"_s), "three"_ba);
        QCOMPARE(home.read(u"b"_s), "four"_ba);
    }

    void aFailedWriteMakesNoSecondCopy()
    {
        class NoRoom : public FileCalls
        {
        public:
            // The copy is made with the first rename.
            int rename(const QByteArray &from, const QByteArray &to) override
            {
                if (to.endsWith(".bak")) {
                    return FileCalls::rename(from, to);
                }
                errno = ENOSPC;
                return -1;
            }
        };
        const TestDirectory home;
        home.write(u"log"_s, "old");
        NoRoom calls;
        KeptFile kept(calls);
        for (int i = 0; i < 3; ++i) {
            QVERIFY_THROWS_EXCEPTION(RuntimeError, kept.save(home.file(u"log"_s), home.path(), "new"));
        }
        QCOMPARE(copyIn(home), "old"_ba);
        QCOMPARE(home.read(u"log"_s), "old"_ba);
    }

    void aFileWhoseDirectoryIsNotSyncedIsKnown()
    {
        class NoSync : public FileCalls
        {
        public:
            int syncDirectory(const QByteArray &) override
            {
                errno = EIO;
                return -1;
            }
        };
        const TestDirectory home;
        NoSync calls;
        KeptFile kept(calls);
        for (const char *content : {"one", "two", "three"}) {
            QVERIFY_THROWS_EXCEPTION(RuntimeError, kept.save(home.file(u"log"_s), home.path(), content));
            QCOMPARE(home.read(u"log"_s), QByteArray(content));
        }
        QCOMPARE(home.names(), QStringList(u"log"_s));
    }

    void everyCallMayFail()
    {
        bool succeeded = false;
        for (int failing = 1; !succeeded; ++failing) {
            QVERIFY(failing < 100);
            const TestDirectory home;
            home.write(u"log"_s, "old");
            FaultyCalls calls(failing, ENOSPC);
            KeptFile kept(calls);
            try {
                QVERIFY(kept.save(home.file(u"log"_s), home.path(), "new").has_value());
                succeeded = true;
            } catch (const RuntimeError &error) {
                QCOMPARE(error.name(), ErrorName::DiskFull);
            }
            const qsizetype copies = home.names().filter(u".bak"_s).size();
            const QByteArray now = home.read(u"log"_s);
            QVERIFY(now == "old" || (now == "new" && copyIn(home) == "old"));
            for (const QString &name : home.names()) {
                QVERIFY2(name == u"log" || name.endsWith(u".bak"), qPrintable(name));
            }
            calls.heal();
            // The disk has room again: the next save works, and the old content is still there.
            const bool copied = kept.save(home.file(u"log"_s), home.path(), "newer").has_value();
            QCOMPARE(home.names().filter(u".bak"_s).size(), copies + (copied ? 1 : 0));
            QCOMPARE(home.read(u"log"_s), "newer"_ba);
            bool oldIsKept = false;
            for (const QString &name : home.names().filter(u".bak"_s)) {
                oldIsKept = oldIsKept || home.read(name) == "old";
            }
            QVERIFY(oldIsKept);
        }
    }
};

QTEST_GUILESS_MAIN(TestKeptFile)
#include "tst_keptfile.moc"
