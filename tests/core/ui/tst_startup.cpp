#include "platform/applicationdirectory.h"
#include "support/combos.h"
#include "support/mainwindow.h"
#include "ui/frmsplash.h"
#include "ui/version.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

class TestStartup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptyDirectoryGetsTheDefaultConfigurationAndNothingElse();
    void theTitleShowsTheCallsign();
    void aConfigurationWithoutACallsignLeavesThePlainTitle();
    void theConfigurationIsFoundInAnyCase_data();
    void theConfigurationIsFoundInAnyCase();
    void anExistingDirectoryGetsNoSuppliedFile();
    void aNewDirectoryGetsTheSuppliedFiles();
    void thePropagationModesAreListedAndNoneIsChosen();
    void theCountriesAreListedInFileOrderWithoutBlankLines();
    void theCountriesTellTheirNames();
    void theVersionLabelTellsMajorMinorRevision();
    void theHiddenLabelsTellTheDirectories();
    void theFormIsInBrowseState();
    void theOlderLayoutIsReadAndWrittenInTheCurrentOne();
    void aLogbookOfAnotherNameIsLoaded();
    void theLogbookIsFoundInAnyCaseAndKeepsIt();
    void startingAndEndingChangesNoFile();
    void theSplashIsShownWhileLoading();
    void theSplashIsGoneAfterStart();
    void theSplashShowsTheVersion();
    void theSplashClosesOn_data();
    void theSplashClosesOn();
    void exitClosesTheWindow();
};

void TestStartup::anEmptyDirectoryGetsTheDefaultConfigurationAndNothingElse()
{
    MainWindow window;
    window.start();
    QCOMPARE(window.directory.names(), QStringList {u"LOGBOOK.INI"_s});
    QCOMPARE(window.directory.read(u"LOGBOOK.INI"_s), "LOG_BOOK_CALLSIGN=NOCALL\r\n"_ba);
    QCOMPARE(window.form().windowTitle(), u"Quillon - NOCALL"_s);
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.text("status"), u""_s);
}

void TestStartup::theTitleShowsTheCallsign()
{
    MainWindow window;
    window.directory.write(u"LOGBOOK.INI"_s, "LOG_BOOK_CALLSIGN=Jos\xE9| DX\r\n");
    window.start();
    QCOMPARE(window.form().windowTitle(), u"Quillon - José, DX"_s);
}

void TestStartup::aConfigurationWithoutACallsignLeavesThePlainTitle()
{
    MainWindow window;
    window.directory.write(u"LOGBOOK.INI"_s, "AS_MILES=FALSE\r\n");
    window.start();
    QCOMPARE(window.form().windowTitle(), u"Quillon"_s);
    QCOMPARE(window.directory.read(u"LOGBOOK.INI"_s), "AS_MILES=FALSE\r\n"_ba);
}

void TestStartup::theConfigurationIsFoundInAnyCase_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"LOGBOOK.INI", "logbook.ini", "Logbook.Ini", "LogBook.INI"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void TestStartup::theConfigurationIsFoundInAnyCase()
{
    QFETCH(QString, name);
    MainWindow window;
    window.directory.write(name, "LOG_BOOK_CALLSIGN=DK1XY\r\nOMID=77\r\n");
    window.start();
    QCOMPARE(window.form().windowTitle(), u"Quillon - DK1XY"_s);
    QCOMPARE(window.form().config().settings().omid, u"77"_s);
    QCOMPARE(window.directory.names(), QStringList {name});
    window.form().config().changeConfig(u"OMID="_s, u"78"_s);
    QCOMPARE(window.directory.names(), QStringList {name});
    QCOMPARE(window.directory.read(name), "LOG_BOOK_CALLSIGN=DK1XY\r\nOMID=78\r\n"_ba);
}

void TestStartup::anExistingDirectoryGetsNoSuppliedFile()
{
    TestDirectory supplied;
    supplied.write(u"country.lst"_s, "D\r\n");
    MainWindow window;
    prepareApplicationDirectory(window.directory.path(), supplied.path(), CodePage());
    window.start();
    QCOMPARE(window.directory.names(), QStringList {u"LOGBOOK.INI"_s});
    QCOMPARE(window.find<QComboBox>("Combo3")->count(), 0);
}

void TestStartup::aNewDirectoryGetsTheSuppliedFiles()
{
    TestDirectory supplied;
    supplied.write(u"country.lst"_s, "D\r\nE\r\n");
    TestDirectory parent;
    const QString path = parent.file(u"new/quillon"_s);
    prepareApplicationDirectory(path, supplied.path(), CodePage());
    DialogAnswers answers;
    Form1 form({path, supplied.path(), Regional::fromEnvironment()});
    form.Form_Load();
    QCOMPARE(itemsOf(*form.findChild<QComboBox *>(u"Combo3"_s)), (QStringList {u"D"_s, u"E"_s}));
    QCOMPARE(parent.read(u"new/quillon/LOGBOOK.INI"_s), "LOG_BOOK_CALLSIGN=NOCALL\r\n"_ba);
    QCOMPARE(answers.takeTexts(), QStringList());
}

void TestStartup::thePropagationModesAreListedAndNoneIsChosen()
{
    MainWindow window;
    window.start();
    QCOMPARE(itemsOf(*window.find<QComboBox>("Combo2")),
        (QStringList {u"Es"_s, u"Tropo"_s, u"MS"_s, u"TEP"_s, u"Aur"_s, u"F2"_s, u"FAI"_s}));
    QCOMPARE(window.text("Combo2"), u""_s);
}

void TestStartup::theCountriesAreListedInFileOrderWithoutBlankLines()
{
    MainWindow window;
    window.start({}, {}, "\r\nF\r\n\r\nD\r\n A \r\nTBD");
    QCOMPARE(itemsOf(*window.find<QComboBox>("Combo3")), (QStringList {u"F"_s, u"D"_s, u" A "_s, u"TBD"_s}));
    QCOMPARE(window.text("Combo3"), u""_s);
    QCOMPARE(window.directory.read(u"country.lst"_s), "\r\nF\r\n\r\nD\r\n A \r\nTBD"_ba);
}

void TestStartup::theCountriesTellTheirNames()
{
    MainWindow window;
    window.start({}, {}, "D\r\nE\r\nNowhere\r\n");
    const auto *combo = window.find<QComboBox>("Combo3");
    QCOMPARE(combo->itemData(0, Qt::ToolTipRole).toString(), u"Germany"_s);
    QCOMPARE(combo->itemData(1, Qt::ToolTipRole).toString(), u"Spain"_s);
    QCOMPARE(combo->itemData(2, Qt::ToolTipRole).toString(), u""_s);
}

void TestStartup::theVersionLabelTellsMajorMinorRevision()
{
    MainWindow window;
    window.start();
    QVERIFY(QRegularExpression(u"^Quillon V\\d+\\.\\d+\\.\\d+$"_s).match(window.text("version")).hasMatch());
    QCOMPARE(window.text("version"), versionLabel());
}

void TestStartup::theHiddenLabelsTellTheDirectories()
{
    MainWindow window;
    window.start();
    QCOMPARE(window.text("applicationDir"), window.directory.path());
    QCOMPARE(window.text("mapDir"), u"C:\\Program Files\\Peak Systems\\UI-View32\\MAPS"_s);
    for (const char *name : {"applicationDir", "mapDir", "proclogs", "progress"}) {
        QVERIFY2(!window.find<QWidget>(name)->isVisible(), name);
    }
    QCOMPARE(window.text("proclogs"), u"PROCESSING LOGS PLEASE WAIT..."_s);
}

void TestStartup::theFormIsInBrowseState()
{
    MainWindow window;
    window.start();
    for (const char *name : {"Text2", "Text3", "Text6", "Text7", "Text10", "Combo1", "Combo2", "Command1",
             "Command3", "Command9", "Command15", "Command5", "Command11"}) {
        QVERIFY2(!window.enabled(name), name);
    }
    for (const char *name : {"Text1", "Text9", "Text8", "Combo3", "Text5", "uid", "Command2", "Command4",
             "Command6", "Command7", "Command8", "Command13", "Command14"}) {
        QVERIFY2(window.enabled(name), name);
    }
    QCOMPARE(window.caption("Command2"), u"New"_s);
    QCOMPARE(window.form().selected(), -1);
    QCOMPARE(window.yellow(), QStringList());
}

void TestStartup::theOlderLayoutIsReadAndWrittenInTheCurrentOne()
{
    MainWindow window;
    window.start("D3C3|12/06/2010 18:22:05|Es|87.6|Bilbao|E|oneCRLFtwo|RNE_1|10|1500.2|\r\n");
    QCOMPARE(window.row(1), u"12/06/2010 18:22:05|D3C3|87.6|RNE_1|E|Bilbao|1500.2|10|one two|Es||"_s);
    window.form().saveLogbook();
    QCOMPARE(
        window.logbook(), "D3C3|12/06/2010 18:22:05|Es|87.6|Bilbao|E|oneCRLFtwo|RNE_1|10|1500.2|||\r\n"_ba);
    QCOMPARE(window.copies(), QStringList());
}

void TestStartup::aLogbookOfAnotherNameIsLoaded()
{
    MainWindow window;
    window.directory.write(u"LOGBOOK.INI"_s, "LOGBOOK_FILENAME=2010.txt\r\n");
    window.directory.write(u"2010.txt"_s, logLine("D3C3", "12/06/2010 18:22:05", "87.6", "RNE_1"));
    window.start(logLine("FFFF", "12/06/2010 18:22:05", "87.6", "OTHER"));
    QCOMPARE(window.piCodes(), QStringList {u"D3C3"_s});
}

void TestStartup::theLogbookIsFoundInAnyCaseAndKeepsIt()
{
    MainWindow window;
    const QByteArray line = logLine("D3C3", "12/06/2010 18:22:05", "87.6", "RNE_1");
    window.directory.write(u"rdslog.LOG"_s, line);
    window.start();
    QCOMPARE(window.piCodes(), QStringList {u"D3C3"_s});
    window.form().saveLogbook();
    QCOMPARE(window.directory.names(), (QStringList {u"LOGBOOK.INI"_s, u"rdslog.LOG"_s}));
    QCOMPARE(window.directory.read(u"rdslog.LOG"_s), line);
}

void TestStartup::startingAndEndingChangesNoFile()
{
    const QByteArray log = "D3C3|2010-06-12 18:22|Es|87.6|Bilbao|E||RNE_1|10||||\n";
    const QByteArray transmitters = "Bilbao|E|43.2630|-2.9350|812.4|\n";
    MainWindow window;
    window.directory.write(u"LOGBOOK.INI"_s, "unknown line\nLOG_BOOK_CALLSIGN=DK1XY");
    window.start(log, transmitters, "E\n");
    window.stop();
    QCOMPARE(window.directory.read(u"LOGBOOK.INI"_s), "unknown line\nLOG_BOOK_CALLSIGN=DK1XY"_ba);
    QCOMPARE(window.logbook(), log);
    QCOMPARE(window.transmitterFile(), transmitters);
    QCOMPARE(window.directory.names(),
        (QStringList {u"LOGBOOK.INI"_s, u"RDSLog.log"_s, u"country.lst"_s, u"tx.lst"_s}));
}

void TestStartup::theSplashIsShownWhileLoading()
{
    MainWindow window;
    QString label;
    bool button = true;
    window.answers.doing([&](QWidget *box) {
        const auto *splash = qobject_cast<frmSplash *>(box->parentWidget());
        if (splash && splash->isVisible()) {
            label = splash->findChild<QLabel *>(u"Label1"_s)->text();
            button = splash->findChild<QPushButton *>(u"Command1"_s)->isVisible();
        }
        QTest::keyClick(box, Qt::Key_Escape);
    });
    window.start({}, "a line that is broken\r\n");
    QCOMPARE(window.answers.takeTexts().size(), 1);
    QCOMPARE(label, versionLabel());
    QVERIFY(!button);
}

void TestStartup::theSplashIsGoneAfterStart()
{
    MainWindow window;
    window.start();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(window.form().findChildren<frmSplash *>().size(), 0);
}

void TestStartup::theSplashShowsTheVersion()
{
    MainWindow window;
    window.directory.write(u"LOGBOOK.INI"_s, "PROPAGATION_URL=http://127.0.0.1/muf\r\n");
    window.start();
    window.trigger("menuAbout");
    const auto *splash = window.find<frmSplash>("frmSplash");
    QVERIFY(splash->isVisible());
    QVERIFY(!splash->isModal());
    QCOMPARE(splash->findChild<QLabel *>(u"Label1"_s)->text(), versionLabel());
    QCOMPARE(splash->findChild<QLabel *>(u"Label1"_s)->font().family(), u"Courier New"_s);
    QCOMPARE(splash->findChild<QLabel *>(u"Label2"_s)->text(), u"http://127.0.0.1/muf"_s);
    QVERIFY(!splash->findChild<QLabel *>(u"Image1"_s)->pixmap().isNull());
    QVERIFY(!splash->findChild<QLabel *>(u"Label3"_s)->text().isEmpty());
    QVERIFY(!splash->findChild<QLabel *>(u"Label4"_s)->text().isEmpty());
}

void TestStartup::theSplashClosesOn_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<int>("key");
    QTest::newRow("a letter") << u"frmSplash"_s << int(Qt::Key_A);
    QTest::newRow("escape") << u"frmSplash"_s << int(Qt::Key_Escape);
    QTest::newRow("a letter while the button has the focus") << u"Command1"_s << int(Qt::Key_X);
    QTest::newRow("space on the button") << u"Command1"_s << int(Qt::Key_Space);
    QTest::newRow("a click on the button") << u"Command1"_s << 0;
    QTest::newRow("a click on the frame") << u"Frame1"_s << 0;
    QTest::newRow("a click on the picture") << u"Image1"_s << 0;
}

void TestStartup::theSplashClosesOn()
{
    QFETCH(QString, control);
    QFETCH(int, key);
    MainWindow window;
    window.start();
    window.trigger("menuAbout");
    const QPointer<frmSplash> splash = window.find<frmSplash>("frmSplash");
    QVERIFY(QTest::qWaitForWindowActive(splash));
    auto *target = control == u"frmSplash"_s ? splash.data() : splash->findChild<QWidget *>(control);
    if (key) {
        QTest::keyClick(target, static_cast<Qt::Key>(key));
    } else {
        QTest::mouseClick(target, Qt::LeftButton);
    }
    QVERIFY(!splash || !splash->isVisible());
    QVERIFY(window.form().isVisible());
}

void TestStartup::exitClosesTheWindow()
{
    MainWindow window;
    window.start();
    window.trigger("MenuFileExit");
    QVERIFY(!window.form().isVisible());
}

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
