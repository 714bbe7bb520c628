#include "platform/applicationdirectory.h"
#include "platform/files.h"
#include "platform/folderlock.h"
#include "platform/runtimeerror.h"
#include "support/faultycalls.h"
#include "support/testfiles.h"

#include <QDir>
#include <QTest>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

class TestApplicationDirectory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theOrderOfTheChoice()
    {
        const TestDirectory program;
        DirectoryChoice choice {u"/a/option"_s, u"/a/variable"_s, program.path(), u"/a/data"_s};
        program.write(u"Logbook.Ini"_s, "x");
        QCOMPARE(applicationDirectory(choice), u"/a/option"_s);
        choice.option.clear();
        QCOMPARE(applicationDirectory(choice), u"/a/variable"_s);
        choice.variable.clear();
        QCOMPARE(applicationDirectory(choice), program.path());
        QVERIFY(QFile::remove(program.file(u"Logbook.Ini"_s)));
        QCOMPARE(applicationDirectory(choice), u"/a/data/quillon"_s);
    }

    void theResultIsAbsoluteWithoutASlashAtItsEnd()
    {
        const QString here = QDir::currentPath();
        QCOMPARE(applicationDirectory({u"logs/"_s, {}, {}, {}}), QString(here + u"/logs"_s));
        QCOMPARE(applicationDirectory({{}, u"/a/../b//"_s, {}, {}}), u"/b"_s);
        QCOMPARE(applicationDirectory({u"."_s, {}, {}, {}}), here);
    }

    void theProcessSaysWhatItKnows()
    {
        qputenv("QUILLON_DIR", "/some/where");
        qputenv("XDG_DATA_HOME", "/my/data");
        const DirectoryChoice choice = directoryChoiceOfProcess(u"given"_s);
        qunsetenv("QUILLON_DIR");
        qunsetenv("XDG_DATA_HOME");
        QCOMPARE(choice.option, u"given"_s);
        QCOMPARE(choice.variable, u"/some/where"_s);
        QCOMPARE(choice.programDirectory, QCoreApplication::applicationDirPath());
        QCOMPARE(choice.dataHome, u"/my/data"_s);
    }

    void aNewDirectoryGetsTheSuppliedFiles()
    {
        const TestDirectory supplied;
        supplied.write(u"country.lst"_s, "D\r\nAUT\r\n");
        supplied.write(u"page.htm"_s, "<html>");
        const TestDirectory home;
        const QString directory = home.file(u"deep/down"_s);
        prepareApplicationDirectory(directory, supplied.path(), CodePage());
        QCOMPARE(QDir(directory).entryList(QDir::Files, QDir::Name),
            (QStringList {u"country.lst"_s, u"page.htm"_s}));
        QCOMPARE(home.read(u"deep/down/country.lst"_s), "D\r\nAUT\r\n"_ba);
        QCOMPARE(home.read(u"deep/down/page.htm"_s), "<html>"_ba);
    }

    void theCopiedPagesNameTheCodePageOfTheExports_data()
    {
        QTest::addColumn<int>("codePage");
        for (const int codePage : {1250, 1251, 1252, 1253, 1254, 1257}) {
            QTest::addRow("%d", codePage) << codePage;
        }
    }

    void theCopiedPagesNameTheCodePageOfTheExports()
    {
        QFETCH(int, codePage);
        const QString supplied = QStringLiteral(QUILLON_SUPPLIED);
        const TestDirectory home;
        prepareApplicationDirectory(home.file(u"log"_s), supplied, CodePage(codePage));
        const QByteArray name = "windows-" + QByteArray::number(codePage);
        const QStringList files = QDir(supplied).entryList(QDir::Files);
        QVERIFY(files.size() >= 5);
        int changed = 0;
        for (const QString &file : files) {
            // Nothing but that name, where the file has one, is other than supplied.
            QByteArray expected = readFile(filePath(supplied, file));
            const bool isTemplate = file.endsWith(u".template");
            const QByteArray before =
                isTemplate ? "<head>\n<meta charset=\""_ba : "<meta name=\"kml-charset\" content=\""_ba;
            if (isTemplate || file == u"quillon_mapview.htm") {
                const QByteArray western = before + "windows-1252\"";
                QCOMPARE(expected.count(western), 1);
                expected.replace(western, QByteArray(before + name + '"'));
                ++changed;
            }
            QVERIFY2(home.read(u"log/"_s + file) == expected, qPrintable(file));
        }
        QCOMPARE(changed, 3);
    }

    void aDirectoryThatCannotBeFilledIsGone()
    {
        const TestDirectory supplied;
        supplied.write(u"a.lst"_s, "one");
        supplied.write(u"b.lst"_s, "two");
        bool succeeded = false;
        for (int failing = 1; !succeeded; ++failing) {
            QVERIFY(failing < 100);
            const TestDirectory home;
            FaultyCalls calls(failing, ENOSPC);
            try {
                prepareApplicationDirectory(home.file(u"log"_s), supplied.path(), CodePage(), calls);
                succeeded = true;
                QVERIFY(failing > 2);
            } catch (const RuntimeError &error) {
                QCOMPARE(error.name(), ErrorName::DiskFull);
                // Only the very last call finds it whole in its place.
                if (home.names() != QStringList(u"log"_s)) {
                    QCOMPARE(home.names(), QStringList());
                }
                // The next start tries anew.
                prepareApplicationDirectory(home.file(u"log"_s), supplied.path(), CodePage());
            }
            QCOMPARE(home.read(u"log/a.lst"_s), "one"_ba);
            QCOMPARE(home.read(u"log/b.lst"_s), "two"_ba);
        }
    }

    void whatAKilledStartHasLeftIsRemoved()
    {
        const TestDirectory supplied;
        supplied.write(u"country.lst"_s, "D\r\n");
        const TestDirectory home;
        home.write(u".quillon-Abc123/new/country.lst"_s, "D\r\n");
        home.write(u".quillon-Abc123/new/.tx.lst.new"_s, "half");
        QVERIFY(QDir(home.path()).mkpath(u".quillon-empty1"_s));
        home.write(u".quillon-longer7/new/a"_s, "of somebody else");
        home.write(u".quillon-mine12/notes"_s, "of somebody else");
        home.write(u".quillon-atwork/new/country.lst"_s, "D");
        const FolderLock lock(home.file(u".quillon-atwork"_s));
        for (int start = 0; start < 2; ++start) {
            prepareApplicationDirectory(
                home.file(u"log"_s), supplied.path(), CodePage(1252), FileCalls::real());
            QVERIFY(!QFileInfo::exists(home.file(u".quillon-Abc123"_s)));
            QVERIFY(!QFileInfo::exists(home.file(u".quillon-empty1"_s)));
            QVERIFY(QFileInfo::exists(home.file(u".quillon-longer7/new/a"_s)));
            QVERIFY(QFileInfo::exists(home.file(u".quillon-mine12/notes"_s)));
            QCOMPARE(home.read(u".quillon-atwork/new/country.lst"_s), "D"_ba);
            // And once more beside a folder that is there.
            QVERIFY(QDir(home.path()).mkpath(u".quillon-empty1"_s));
        }
    }

    void anExistingDirectoryGetsNothing()
    {
        const TestDirectory supplied;
        supplied.write(u"country.lst"_s, "D\r\n");
        const TestDirectory home;
        prepareApplicationDirectory(home.path(), supplied.path(), CodePage());
        QCOMPARE(home.names(), QStringList());
    }

    void aFileInItsPlaceIsRefused()
    {
        const TestDirectory home;
        home.write(u"quillon"_s, "mine");
        for (const QString &path : {u"quillon"_s, u"quillon/below"_s}) {
            try {
                prepareApplicationDirectory(home.file(path), home.path(), CodePage());
                QFAIL("nothing was thrown");
            } catch (const RuntimeError &error) {
                QCOMPARE(error.name(), ErrorName::PathNotFound);
                QVERIFY(error.doing().contains(home.file(path)));
            }
        }
        QCOMPARE(home.read(u"quillon"_s), "mine"_ba);
    }
};

QTEST_GUILESS_MAIN(TestApplicationDirectory)
#include "tst_applicationdirectory.moc"
