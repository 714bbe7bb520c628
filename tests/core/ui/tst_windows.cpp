#include "geo/ui/dialog.h"
#include "stats/ui/logstats.h"
#include "support/mainwindow.h"
#include "support/opened.h"
#include "ui/chartcontrol.h"
#include "ui/form2.h"
#include "ui/frmsplash.h"
#include "ui/scratchpad.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

const QByteArray entry = "D3C3|12/06/2010 18:22:05|Es|87.6|Bilbao|E||RNE_1|10|812.4|||\r\n";

void press(const QWidget *window, const QString &button)
{
    QTest::mouseClick(window->findChild<QPushButton *>(button), Qt::LeftButton);
}

void settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

class TestWindows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCommandOpensItsWindowOnce_data();
    void aCommandOpensItsWindowOnce();
    void theSetupShowsTheSettingsAndKeepsWhatIsTyped();
    void savingTheSetupChangesTitleAndGrid();
    void closingTheSetupChangesNothing();
    void aNewLogbookNameCountsFromTheNextSave();
    void aLogbookOfTheNewNameIsCopiedFirst();
    void anEmptyLogbookNameIsToldAtTheNextSave();
    void aNewUnitCountsFromTheNextMeasuring();
    void theConverterSendsItsPosition();
    void theStatisticsDrawAndSave();
    void theScratchPadShowsTheKeptNote();
    void theScratchPadIsSavedAndCancelled();
    void theAboutWindowOpensItsLink();
    void theAboutWindowTellsWhereTheFilesAre();
    void theAboutWindowsLinkIsOpenedByTheKeyboard();
    void theAboutWindowClosesOnAnyKey();
    void theAboutWindowStaysForTabAndModifiers();
    void theScratchPadRefreshesTheTitle();
    void theProgramEndsWithTheMainWindow();
};

void TestWindows::aCommandOpensItsWindowOnce_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("window");
    QTest::newRow("converter") << u"menuToolsConverter"_s << u"Dialog"_s;
    QTest::newRow("statistics") << u"menuStats"_s << u"logStats"_s;
    QTest::newRow("collection") << u"menuStatsCollection"_s << u"collection"_s;
    QTest::newRow("setup") << u"menuSetup"_s << u"Form2"_s;
    QTest::newRow("scratch pad") << u"Command12"_s << u"ScratchPad"_s;
    QTest::newRow("about") << u"menuAbout"_s << u"frmSplash"_s;
    QTest::newRow("Quick Add") << u"Command14"_s << u"Dialog1"_s;
}

void TestWindows::aCommandOpensItsWindowOnce()
{
    QFETCH(QString, command);
    QFETCH(QString, window);
    MainWindow main;
    main.start(entry);
    settle();
    const auto open = [&] {
        if (command.startsWith(u"Command"_s)) {
            main.click(command);
        } else {
            main.trigger(command);
        }
    };
    open();
    const QPointer<QWidget> first = main.find<QWidget>(window);
    QVERIFY(first->isVisible());
    QVERIFY(!static_cast<QDialog *>(first.data())->isModal());
    open();
    QCOMPARE(main.form().findChildren<QWidget *>(window).size(), 1);
    QVERIFY(first && first->isVisible());
    QVERIFY(QTest::qWaitForWindowActive(first));
    first->close();
    settle();
    QVERIFY(!first);
    open();
    QVERIFY(main.find<QWidget>(window)->isVisible());
    QTest::keyClick(main.find<QWidget>(window), Qt::Key_Escape);
    settle();
    QCOMPARE(main.form().findChildren<QWidget *>(window).size(), 0);
    QCOMPARE(main.answers.takeTexts(), QStringList());
    QCOMPARE(main.logbook(), entry);
}

void TestWindows::theSetupShowsTheSettingsAndKeepsWhatIsTyped()
{
    MainWindow main;
    main.directory.write(u"LOGBOOK.INI"_s, "OMID=77\r\n");
    main.start(entry);
    main.trigger("menuSetup");
    auto *omid = main.find<Form2>("Form2")->findChild<QLineEdit *>(u"omid"_s);
    QCOMPARE(omid->text(), u"77"_s);
    omid->setText(u"88"_s);
    main.trigger("menuSetup");
    QCOMPARE(omid->text(), u"88"_s);
    QCOMPARE(main.form().findChildren<Form2 *>().size(), 1);
    press(main.find<Form2>("Form2"), u"Command2"_s);
    settle();
    main.trigger("menuSetup");
    QCOMPARE(main.find<Form2>("Form2")->findChild<QLineEdit *>(u"omid"_s)->text(), u"77"_s);
}

void TestWindows::savingTheSetupChangesTitleAndGrid()
{
    MainWindow main;
    main.start(entry + "F201|11/06/2010 18:22:05|Es|87.6|Paris|F||FIP|10||||\r\n");
    main.clickRow(1);
    main.click("Command15");
    main.clickHeading(1);
    main.trigger("menuSetup");
    const QPointer<Form2> setup = main.find<Form2>("Form2");
    setup->findChild<QLineEdit *>(u"Text1"_s)->setText(u"DL1ABC"_s);
    press(setup, u"Command1"_s);
    settle();
    QVERIFY(!setup);
    QCOMPARE(main.form().windowTitle(), u"Quillon - DL1ABC"_s);
    QCOMPARE(main.piCodes(), (QStringList {u"delete"_s, u"D3C3"_s}));
    QCOMPARE(main.grid().row(), 2);
    QCOMPARE(main.answers.takeTexts(), QStringList());
}

void TestWindows::closingTheSetupChangesNothing()
{
    MainWindow main;
    const QByteArray ini = "LOG_BOOK_CALLSIGN=DL1ABC\n\"an item\", another\n";
    main.directory.write(u"LOGBOOK.INI"_s, ini);
    main.start(entry);
    main.trigger("menuSetup");
    main.find<Form2>("Form2")->findChild<QLineEdit *>(u"Text1"_s)->setText(u"other"_s);
    press(main.find<Form2>("Form2"), u"Command2"_s);
    QCOMPARE(main.directory.read(u"LOGBOOK.INI"_s), ini);
    QCOMPARE(main.form().windowTitle(), u"Quillon - DL1ABC"_s);
    QCOMPARE(main.logbook(), entry);
}

void TestWindows::aNewLogbookNameCountsFromTheNextSave()
{
    MainWindow main;
    main.start(entry);
    main.trigger("menuSetup");
    auto *setup = main.find<Form2>("Form2");
    setup->findChild<QLineEdit *>(u"Text2"_s)->setText(u"new.log"_s);
    press(setup, u"Command1"_s);
    QCOMPARE(main.directory.names(), (QStringList {u"LOGBOOK.INI"_s, u"RDSLog.log"_s}));
    QCOMPARE(main.piCodes(), QStringList {u"D3C3"_s});
    main.clickRow(1);
    main.type("Text6", u"20"_s);
    main.click("Command3");
    QCOMPARE(main.directory.read(u"new.log"_s),
        "D3C3|12/06/2010 18:22:05|Es|87.6|Bilbao|E||RNE_1|20|812.4|||\r\n"_ba);
    QCOMPARE(main.logbook(), entry);
    QCOMPARE(main.copies(), QStringList());
}

void TestWindows::aLogbookOfTheNewNameIsCopiedFirst()
{
    const QByteArray other = "F201|11/06/2010 18:22:05|Es|87.6|Paris|F||FIP|10||||\r\n";
    MainWindow main;
    main.directory.write(u"New.log"_s, other);
    main.start(entry);
    main.trigger("menuSetup");
    auto *setup = main.find<Form2>("Form2");
    setup->findChild<QLineEdit *>(u"Text2"_s)->setText(u"new.LOG"_s);
    press(setup, u"Command1"_s);
    QCOMPARE(main.directory.read(u"New.log"_s), other);
    QCOMPARE(main.copies(), QStringList());
    main.clickRow(1);
    main.click("Command3");
    QCOMPARE(main.directory.read(u"New.log"_s), entry);
    QCOMPARE(main.copies().size(), 1);
    QCOMPARE(main.directory.read(main.copies().first()), other);
    QVERIFY(main.text("status").contains(main.copies().first()));
    QCOMPARE(main.logbook(), entry);
}

void TestWindows::anEmptyLogbookNameIsToldAtTheNextSave()
{
    MainWindow main;
    main.start(entry);
    main.trigger("menuSetup");
    auto *setup = main.find<Form2>("Form2");
    setup->findChild<QLineEdit *>(u"Text2"_s)->clear();
    press(setup, u"Command1"_s);
    const QStringList before = main.directory.names();
    main.clickRow(1);
    main.type("Text6", u"20"_s);
    main.click("Command3");
    const QStringList texts = main.answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts.first().startsWith(u"Run-time error: "_s), qPrintable(texts.first()));
    QVERIFY2(texts.first().contains(main.directory.path()), qPrintable(texts.first()));
    QCOMPARE(main.directory.names(), before);
    QCOMPARE(main.logbook(), entry);
    QCOMPARE(main.form().log().entry(0).power, u"20"_s);
}

void TestWindows::aNewUnitCountsFromTheNextMeasuring()
{
    MainWindow main;
    main.directory.write(u"LOGBOOK.INI"_s, "HOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\nAS_MILES=FALSE\r\n");
    main.start(entry, "Bilbao|E|43.263|-2.935|1|\r\n");
    main.trigger("menuSetup");
    auto *setup = main.find<Form2>("Form2");
    setup->findChild<QAbstractButton *>(u"Option2"_s)->click();
    press(setup, u"Command1"_s);
    QCOMPARE(main.grid().text(1, GridColumn::Dist), u"812.4"_s);
    QCOMPARE(main.logbook(), entry);
    main.click("Command10");
    QCOMPARE(main.grid().text(1, GridColumn::Dist), u"584.3"_s);
    QCOMPARE(main.transmitterFile(), "Bilbao|E|43.263|-2.935|584.3|\r\n"_ba);
}

void TestWindows::theConverterSendsItsPosition()
{
    MainWindow main;
    main.start(entry);
    main.click("Command2");
    main.fill({u"Text9"_s, u"88.2"_s, u"Text1"_s, u"F201"_s, u"Combo3"_s, u"F"_s, u"Text5"_s, u"Paris"_s});
    main.trigger("menuToolsConverter");
    auto *converter = main.find<Dialog>("Dialog");
    converter->findChild<QLineEdit *>(u"Text7"_s)->setText(u"JN18DU"_s);
    press(converter, u"Command2"_s);
    const QString latitude = converter->findChild<QLineEdit *>(u"Text12"_s)->text();
    const QString longitude = converter->findChild<QLineEdit *>(u"Text9"_s)->text();
    press(converter, u"Command4"_s);
    QVERIFY(converter->isVisible());
    QCOMPARE(main.text("Text7"), latitude);
    QCOMPARE(main.text("Text10"), longitude);
    main.click("Command1");
    const QString line = u"Paris|F|"_s + latitude + u'|' + longitude + u"||\r\n"_s;
    QCOMPARE(main.transmitterFile(), line.toLatin1());

    // Any text is sent as it stands.
    main.click("Command2");
    converter->findChild<QLineEdit *>(u"Text12"_s)->setText(u"1,5"_s);
    converter->findChild<QLineEdit *>(u"Text9"_s)->clear();
    press(converter, u"Command4"_s);
    QCOMPARE(main.text("Text7"), u"1,5"_s);
    QCOMPARE(main.text("Text10"), u""_s);
    press(converter, u"CancelButton"_s);
    QVERIFY(!converter->isVisible());
}

void TestWindows::theStatisticsDrawAndSave()
{
    MainWindow main;
    main.start(entry);
    main.trigger("menuStats");
    auto *stats = main.find<logStats>("logStats");
    QCOMPARE(stats->windowTitle(), u"Stats"_s);
    QVERIFY(!stats->findChild<QPushButton *>(u"Command2"_s)->isEnabled());
    press(stats, u"Command3"_s);
    QVERIFY(stats->findChild<ChartControl *>(u"MSChart1"_s)->isVisible());
    main.answers.accept();
    press(stats, u"Command2"_s);
    const QString proposed = main.directory.file(u"All-All-All.bmp"_s);
    QCOMPARE(main.answers.seen().first().input, proposed);
    QCOMPARE(main.answers.takeTexts(), (QStringList {u"Enter Filename"_s, u"done"_s}));
    QVERIFY(main.directory.read(u"All-All-All.bmp"_s).startsWith("BM"));
}

void TestWindows::theScratchPadShowsTheKeptNote()
{
    MainWindow main;
    main.directory.write(u"LOGBOOK.INI"_s, "SCRATCH_PAD=one| twoCRLFthree\r\n");
    main.start();
    main.click("Command12");
    auto *note = main.find<ScratchPad>("ScratchPad")->findChild<QPlainTextEdit *>(u"Text1"_s);
    QCOMPARE(note->toPlainText(), u"one, two\nthree"_s);
    note->setPlainText(u"typed"_s);
    main.click("Command12");
    QCOMPARE(note->toPlainText(), u"typed"_s);
    note->clear();
    main.click("Command12");
    QCOMPARE(note->toPlainText(), u"one, two\nthree"_s);
    QCOMPARE(main.directory.read(u"LOGBOOK.INI"_s), "SCRATCH_PAD=one| twoCRLFthree\r\n"_ba);
}

void TestWindows::theScratchPadIsSavedAndCancelled()
{
    MainWindow main;
    main.start();
    main.click("Command12");
    auto *pad = main.find<ScratchPad>("ScratchPad");
    pad->findChild<QPlainTextEdit *>(u"Text1"_s)->insertPlainText(u"one\ntwo"_s);
    press(pad, u"OKButton"_s);
    settle();
    const QByteArray ini = "LOG_BOOK_CALLSIGN=NOCALL\r\nSCRATCH_PAD=oneCRLFtwo\r\n";
    QCOMPARE(main.directory.read(u"LOGBOOK.INI"_s), ini);
    main.click("Command12");
    pad = main.find<ScratchPad>("ScratchPad");
    QCOMPARE(pad->findChild<QPlainTextEdit *>(u"Text1"_s)->toPlainText(), u"one\ntwo"_s);
    pad->findChild<QPlainTextEdit *>(u"Text1"_s)->setPlainText(u"three"_s);
    press(pad, u"CancelButton"_s);
    settle();
    QCOMPARE(main.directory.read(u"LOGBOOK.INI"_s), ini);
    main.start();
    main.click("Command12");
    QCOMPARE(main.find<ScratchPad>("ScratchPad")->findChild<QPlainTextEdit *>(u"Text1"_s)->toPlainText(),
        u"one\ntwo"_s);
}

void TestWindows::theAboutWindowOpensItsLink()
{
    Opened opened;
    MainWindow main;
    main.directory.write(u"LOGBOOK.INI"_s, "PROPAGATION_URL=http://127.0.0.1:9/muf?a=b\r\n");
    main.start();
    settle();
    main.trigger("menuAbout");
    const QPointer<frmSplash> about = main.find<frmSplash>("frmSplash");
    QTest::mouseClick(about->findChild<QLabel *>(u"Label2"_s), Qt::LeftButton);
    QCOMPARE(opened.take(), QStringList {u"http://127.0.0.1:9/muf?a=b"_s});
    settle();
    QVERIFY(!about);
    QVERIFY(main.form().isVisible());
}

void TestWindows::theAboutWindowTellsWhereTheFilesAre()
{
    Opened opened;
    MainWindow main;
    main.start();
    settle();
    main.trigger("menuAbout");
    const auto *about = main.find<frmSplash>("frmSplash");
    QCOMPARE(about->findChild<QLabel *>(u"directory"_s)->text(),
        QString(u"Your files are in "_s + main.directory.path()));
    press(about, u"openDirectory"_s);
    QCOMPARE(opened.take(), QStringList {main.directory.path()});
}

void TestWindows::theAboutWindowsLinkIsOpenedByTheKeyboard()
{
    Opened opened;
    MainWindow main;
    main.directory.write(u"LOGBOOK.INI"_s, "PROPAGATION_URL=http://127.0.0.1:9/muf\r\n");
    main.start();
    settle();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {
        main.trigger("menuAbout");
        const QPointer<frmSplash> about = main.find<frmSplash>("frmSplash");
        about->activateWindow();
        QTRY_VERIFY(about->isActiveWindow());
        const auto *link = about->findChild<QLabel *>(u"Label2"_s);
        const QColor before = link->palette().color(link->foregroundRole());
        for (int tab = 0; tab < 4 && !link->hasFocus(); ++tab) {
            QTest::keyClick(about->focusWidget(), Qt::Key_Tab);
        }
        QVERIFY(link->hasFocus());
        QVERIFY(link->palette().color(link->foregroundRole()) != before);
        QTest::keyClick(about->focusWidget(), key);
        QCOMPARE(opened.take(), QStringList {u"http://127.0.0.1:9/muf"_s});
        settle();
        QVERIFY(!about);
    }
}

void TestWindows::theAboutWindowClosesOnAnyKey()
{
    MainWindow main;
    main.start();
    settle();
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_F5, Qt::Key_Left, Qt::Key_Return, Qt::Key_Space}) {
        main.trigger("menuAbout");
        const QPointer<frmSplash> about = main.find<frmSplash>("frmSplash");
        about->activateWindow();
        QTRY_VERIFY(about->isActiveWindow());
        QTest::keyClick(about->focusWidget(), key);
        settle();
        QVERIFY2(!about, qPrintable(QVariant::fromValue(key).toString()));
    }
}

void TestWindows::theAboutWindowStaysForTabAndModifiers()
{
    MainWindow main;
    main.start();
    settle();
    main.trigger("menuAbout");
    const QPointer<frmSplash> about = main.find<frmSplash>("frmSplash");
    about->activateWindow();
    QTRY_VERIFY(about->isActiveWindow());
    const QWidget *first = about->focusWidget();
    for (const Qt::Key key : {Qt::Key_Alt, Qt::Key_Shift, Qt::Key_Tab}) {
        QTest::keyClick(about->focusWidget(), key);
        QVERIFY(about->isVisible());
    }
    QVERIFY(about->focusWidget() != first);
}

void TestWindows::theScratchPadRefreshesTheTitle()
{
    MainWindow main;
    main.start(entry);
    main.directory.write(u"LOGBOOK.INI"_s, "LOG_BOOK_CALLSIGN=DL1ABC\r\n");
    main.click("Command12");
    press(main.find<ScratchPad>("ScratchPad"), u"OKButton"_s);
    QCOMPARE(main.form().windowTitle(), u"Quillon - DL1ABC"_s);
}

void TestWindows::theProgramEndsWithTheMainWindow()
{
    QSignalSpy last(qApp, &QGuiApplication::lastWindowClosed);
    MainWindow main;
    main.start(entry);
    for (const char *command : {"menuToolsConverter", "menuStats", "menuSetup", "menuAbout"}) {
        main.trigger(command);
    }
    main.click("Command12");
    QCOMPARE(last.count(), 0);
    QMetaObject::invokeMethod(&main.form(), &QWidget::close, Qt::QueuedConnection);
    QCOMPARE(QApplication::exec(), 0);
    QCOMPARE(last.count(), 1);
    QCOMPARE(main.logbook(), entry);
}

QTEST_MAIN(TestWindows)
#include "tst_windows.moc"
