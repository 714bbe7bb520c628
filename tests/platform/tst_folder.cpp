#include "platform/folder.h"
#include "platform/runtimeerror.h"
#include "support/testfiles.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <fcntl.h>
#include <unistd.h>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

class TestFolder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesAreSortedAndOfTheEndingInAnyCase()
    {
        const TestDirectory directory;
        for (const char *name : {"b.txt", "a.TXT", "c.Txt", "d.log", "txt", "e.txt.bak", "B.txt"}) {
            directory.write(QString::fromLatin1(name), "");
        }
        QCOMPARE(fileNames(directory.path(), u".txt"_s, CodePage()),
            QStringList({u"B.txt"_s, u"a.TXT"_s, u"b.txt"_s, u"c.Txt"_s}));
    }

    void foldersAndHiddenFilesAreLeftOut()
    {
        const TestDirectory directory;
        directory.write(u"a.txt"_s, "");
        directory.write(u".hidden.txt"_s, "");
        QVERIFY(QDir(directory.path()).mkdir(u"folder.txt"_s));
        QVERIFY(QFile::link(directory.file(u"folder.txt"_s), directory.file(u"link to a folder.txt"_s)));
        QVERIFY(QFile::link(directory.file(u"a.txt"_s), directory.file(u"link to a file.txt"_s)));
        QVERIFY(QFile::link(directory.file(u"gone"_s), directory.file(u"link to nothing.txt"_s)));
        QCOMPARE(fileNames(directory.path(), u".txt"_s, CodePage()),
            QStringList({u"a.txt"_s, u"link to a file.txt"_s}));
    }

    void namesComeInEveryEncoding_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("UTF-8") << QByteArray("Caf\xC3\xA9.txt");
        QTest::newRow("UTF-8, decomposed") << QByteArray("Cafe\xCC\x81.txt");
        QTest::newRow("code page") << QByteArray("Caf\xE9.txt");
    }

    void namesComeInEveryEncoding()
    {
        QFETCH(QByteArray, bytes);
        const TestDirectory directory;
        const QByteArray path = QFile::encodeName(directory.path()) + '/' + bytes;
        const int file = ::open(path.constData(), O_CREAT | O_WRONLY, 0600);
        QVERIFY(file >= 0);
        ::close(file);
        QCOMPARE(fileNames(directory.path(), u".txt"_s, CodePage()), QStringList({u"Caf\u00E9.txt"_s}));
        QCOMPARE(listedFile(directory.path(), u"Caf\u00E9.txt"_s, CodePage()), path);
        QCOMPARE(::unlink(path.constData()), 0);
    }

    void ofFilesThatAreListedTheSameTheOneInUtf8IsTaken()
    {
        const TestDirectory directory;
        const QByteArray folder = QFile::encodeName(directory.path()) + '/';
        const QByteArrayList paths {
            folder + "Caf\xE9.txt", folder + "Caf\xC3\xA9.txt", folder + "Cafe\xCC\x81.txt"};
        for (const QByteArray &path : paths) {
            const int file = ::open(path.constData(), O_CREAT | O_WRONLY, 0600);
            QVERIFY(file >= 0);
            ::close(file);
        }
        const auto listed = [&] { return listedFile(directory.path(), u"Caf\u00E9.txt"_s, CodePage()); };
        QCOMPARE(listed(), paths[1]);
        QCOMPARE(::unlink(paths[1].constData()), 0);
        QCOMPARE(listed(), paths[2]);
        QCOMPARE(::unlink(paths[2].constData()), 0);
        QCOMPARE(listed(), paths[0]);
        QCOMPARE(::unlink(paths[0].constData()), 0);
        QCOMPARE(listed(), std::nullopt);
    }

    void aFolderThatIsMissingHoldsNothing()
    {
        const TestDirectory directory;
        directory.write(u"file"_s, "");
        QCOMPARE(fileNames(directory.file(u"none"_s), u".txt"_s, CodePage()), QStringList());
        QCOMPARE(fileNames(directory.file(u"file"_s), u".txt"_s, CodePage()), QStringList());
        QCOMPARE(fileNames(QString(), u".txt"_s, CodePage()), QStringList());
    }

    void aFolderThatCannotBeReadIsToldByItsPath()
    {
        const TestDirectory directory;
        const QString loop = directory.file(u"loop"_s);
        QVERIFY(QFile::link(loop, loop));
        try {
            (void)fileNames(loop, u".txt"_s, CodePage());
            QFAIL("no error");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.name(), ErrorName::DeviceError);
            QVERIFY(error.text().contains(u"Listing the folder "_s + loop));
        }
    }
};

QTEST_GUILESS_MAIN(TestFolder)
#include "tst_folder.moc"
