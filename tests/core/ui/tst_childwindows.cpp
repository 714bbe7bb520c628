#include "core/ui/importingwindow.h"
#include "support/accessibility.h"

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

/// The windows beside the main one: for the eye, for the keyboard and for assistive tools.
class TestChildWindows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void everyControlHasAnAccessibleName_data() { windows(); }
    void everyControlHasAnAccessibleName();
    void noTwoMnemonicsAreAlike_data() { windows(); }
    void noTwoMnemonicsAreAlike();
    void everyControlIsReachedByTheTabKey_data() { windows(); }
    void everyControlIsReachedByTheTabKey();
    void nothingIsCutOff_data() { windows(); }
    void nothingIsCutOff();
    void eachFitsASmallScreen_data() { windows(); }
    void eachFitsASmallScreen();

private:
    static void windows();
    QWidget &opened();

    std::unique_ptr<ImportingWindow> m_main;
};

void TestChildWindows::windows()
{
    QTest::addColumn<QString>("window");
    QTest::addColumn<QString>("command");
    QTest::newRow("Quick Add") << u"Dialog1"_s << u"Command14"_s;
    QTest::newRow("Scratch Pad") << u"ScratchPad"_s << u"Command12"_s;
    QTest::newRow("Converter") << u"Dialog"_s << u"menuToolsConverter"_s;
    QTest::newRow("Setup") << u"Form2"_s << u"menuSetup"_s;
    QTest::newRow("About") << u"frmSplash"_s << u"menuAbout"_s;
    QTest::newRow("Statistics") << u"logStats"_s << u"menuStats"_s;
    QTest::newRow("Backups") << u"fileBackups"_s << u"menuFileBackups"_s;
    QTest::newRow("Import") << u"importFile"_s << u"menuImportFile"_s;
    QTest::newRow("Collection") << u"collection"_s << u"menuStatsCollection"_s;
    QTest::newRow("RDS Spy") << u"importRDSSpy"_s << u"menuImportRDSSpyLog"_s;
    QTest::newRow("RDSDX") << u"rdsdxlist"_s << u"menuImportRDSDXLogCnv"_s;
}

void TestChildWindows::init()
{
    m_main = std::make_unique<ImportingWindow>();
    m_main->spy(u"20100612-182205 D3C3 RNE_1.rds"_s);
    m_main->directory.write(u"dx/20100612.log"_s, {});
    m_main->start(oldEntry);
}

void TestChildWindows::cleanup()
{
    m_main.reset();
}

QWidget &TestChildWindows::opened()
{
    QFETCH(QString, window);
    QFETCH(QString, command);
    ImportingWindow::settle();
    m_main->answers.type(u"12/06/2010"_s);
    if (command.startsWith(u"Command")) {
        m_main->click(command);
    } else {
        m_main->trigger(command);
    }
    auto *opened = m_main->find<QWidget>(window);
    opened->activateWindow();
    if (!QTest::qWaitForWindowActive(opened)) {
        qFatal("the window does not become active");
    }
    return *opened;
}

void TestChildWindows::everyControlHasAnAccessibleName()
{
    const QWidget &window = opened();
    QVERIFY(!controlsOf(window).isEmpty());
    QCOMPARE(withoutName(window).join(u' '), QString());
    QVERIFY(!window.windowTitle().isEmpty());
}

void TestChildWindows::noTwoMnemonicsAreAlike()
{
    QCOMPARE(claimedTwice(captionsOf(opened())).join(u' '), QString());
}

void TestChildWindows::everyControlIsReachedByTheTabKey()
{
    QCOMPARE(notReached(opened()).join(u' '), QString());
}

void TestChildWindows::nothingIsCutOff()
{
    QCOMPARE(cutOff(opened()).join(u' '), QString());
}

void TestChildWindows::eachFitsASmallScreen()
{
    const QSize size = opened().size();
    QVERIFY2(size.width() <= 1024, qPrintable(QString::number(size.width())));
    QVERIFY2(size.height() <= 700, qPrintable(QString::number(size.height())));
}

QTEST_MAIN(TestChildWindows)
#include "tst_childwindows.moc"
