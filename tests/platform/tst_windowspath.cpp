#include "platform/windowspath.h"
#include "support/testfiles.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

class TestWindowsPath : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_directory = std::make_unique<TestDirectory>();
        QDir root(m_directory->path());
        QVERIFY(root.mkpath(u"prefix/dosdevices"_s));
        QVERIFY(root.mkpath(u"prefix/drive_c/RDSSpy/Logs"_s));
        QVERIFY(root.mkpath(u"prefix/drive_c/Program Files"_s));
        QVERIFY(root.mkpath(u"prefix/dosdevices/unc/Server/Share"_s));
        QVERIFY(root.mkpath(u"media/Loggings"_s));
        QVERIFY(QFile::link(u"../drive_c"_s, root.filePath(u"prefix/dosdevices/c:"_s)));
        QVERIFY(QFile::link(root.filePath(u"media"_s), root.filePath(u"prefix/dosdevices/e:"_s)));
        QVERIFY(QFile::link(u"/"_s, root.filePath(u"prefix/dosdevices/z:"_s)));
        QVERIFY(QFile::link(u"../nowhere"_s, root.filePath(u"prefix/dosdevices/x:"_s)));
        m_places = {root.filePath(u"prefix"_s), root.filePath(u"home"_s)};
    }

    void findsDirectories_data()
    {
        QTest::addColumn<QString>("setting");
        QTest::addColumn<QString>("path"); // "@" stands for the directory of the test
        QTest::newRow("as spelled") << u"C:\\RDSSpy"_s << u"@/prefix/drive_c/RDSSpy"_s;
        QTest::newRow("other case") << u"c:\\rdsspy\\LOGS"_s << u"@/prefix/drive_c/RDSSpy/Logs"_s;
        QTest::newRow("blank in a part") << u"C:\\program files"_s << u"@/prefix/drive_c/Program Files"_s;
        QTest::newRow("backslash at the end") << u"C:\\RDSSpy\\"_s << u"@/prefix/drive_c/RDSSpy"_s;
        QTest::newRow("slashes") << u"C:/RDSSpy/Logs"_s << u"@/prefix/drive_c/RDSSpy/Logs"_s;
        QTest::newRow("doubled backslash") << u"C:\\RDSSpy\\\\Logs"_s << u"@/prefix/drive_c/RDSSpy/Logs"_s;
        QTest::newRow("dots") << u"C:\\RDSSpy\\.\\Logs\\.."_s << u"@/prefix/drive_c/RDSSpy"_s;
        QTest::newRow("never above the drive") << u"C:\\..\\..\\RDSSpy"_s << u"@/prefix/drive_c/RDSSpy"_s;
        QTest::newRow("drive alone") << u"C:"_s << u"@/prefix/drive_c"_s;
        QTest::newRow("no drive letter") << u"\\RDSSpy"_s << u"@/prefix/drive_c/RDSSpy"_s;
        QTest::newRow("a name alone") << u"rdsspy"_s << u"@/prefix/drive_c/RDSSpy"_s;
        QTest::newRow("blanks around") << u" C:\\RDSSpy "_s << u"@/prefix/drive_c/RDSSpy"_s;
        QTest::newRow("another drive") << u"E:\\loggings"_s << u"@/media/Loggings"_s;
        QTest::newRow("the whole disk") << u"Z:\\"_s << u"/"_s;
        QTest::newRow("network share") << u"\\\\server\\SHARE"_s << u"@/prefix/dosdevices/unc/Server/Share"_s;
        QTest::newRow("missing folder")
            << u"C:\\rdsspy\\Old Logs\\X"_s << u"@/prefix/drive_c/RDSSpy/Old Logs/X"_s;
        QTest::newRow("missing drive") << u"Q:\\RDSSpy"_s << u"@/prefix/dosdevices/q:/RDSSpy"_s;
        QTest::newRow("drive that leads nowhere") << u"X:\\RDSSpy"_s << u"@/prefix/dosdevices/x:/RDSSpy"_s;
        QTest::newRow("path as it stands") << u"/srv/RDSSpy"_s << u"/srv/RDSSpy"_s;
        QTest::newRow("slash at the end") << u"/srv/RDSSpy/"_s << u"/srv/RDSSpy"_s;
        QTest::newRow("root") << u"/"_s << u"/"_s;
        QTest::newRow("home") << u"~/RDSSpy"_s << u"@/home/RDSSpy"_s;
        QTest::newRow("home itself") << u"~"_s << u"@/home"_s;
        QTest::newRow("empty") << u""_s << u""_s;
        QTest::newRow("blank") << u"  "_s << u""_s;
    }

    void findsDirectories()
    {
        QFETCH(QString, setting);
        QFETCH(QString, path);
        QCOMPARE(resolveDirectory(setting, m_places), path.replace(u'@', m_directory->path()));
    }

    void theSpellingOfTheSettingGoesFirst()
    {
        QDir root(m_directory->path());
        QVERIFY(root.mkpath(u"prefix/drive_c/rdsspy"_s));
        QCOMPARE(resolveDirectory(u"C:\\rdsspy"_s, m_places), root.filePath(u"prefix/drive_c/rdsspy"_s));
        QCOMPARE(resolveDirectory(u"C:\\RDSSpy"_s, m_places), root.filePath(u"prefix/drive_c/RDSSpy"_s));
    }

    void withoutAPrefixThePathStillShows()
    {
        const WindowsPlaces places {u"/nonexistent/.wine"_s, u"/nonexistent"_s};
        QCOMPARE(resolveDirectory(u"C:\\RDSSpy"_s, places), u"/nonexistent/.wine/dosdevices/c:/RDSSpy"_s);
    }

    void thePrefixComesFromTheEnvironment()
    {
        qunsetenv("WINEPREFIX");
        QCOMPARE(WindowsPlaces::ofProcess().prefix, QString(QDir::homePath() + u"/.wine"_s));
        qputenv("WINEPREFIX", "/srv/prefix/");
        QCOMPARE(WindowsPlaces::ofProcess().prefix, u"/srv/prefix"_s);
        qunsetenv("WINEPREFIX");
        QCOMPARE(WindowsPlaces::ofProcess().home, QDir::homePath());
    }

private:
    std::unique_ptr<TestDirectory> m_directory;
    WindowsPlaces m_places;
};

QTEST_GUILESS_MAIN(TestWindowsPath)
#include "tst_windowspath.moc"
