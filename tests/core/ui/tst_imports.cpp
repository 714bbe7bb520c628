#include "core/ui/importingwindow.h"
#include "ui/resultlist.h"

#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

class TestImports : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QVERIFY(!QGuiApplication::overrideCursor()); }

    void theMenuOpensOneRdsSpyWindow();
    void rdsSpyReceptionsGoThroughAdd();
    void theEntryFormIsAsAfterAdd();
    void aNameInUtf8IsWrittenInTheCodePage();
    void whatTheLogHadNotIsTold();
    void markedReceptionsAreLeftOut();
    void whatAddRefusesIsToldAndTheRestIsAdded();
    void aWrongOffsetIsStoredAndStopsTheImport();
    void aFailureHalfWayKeepsWhatWasImported();
    void aFirstReceptionThatIsNotSavedIsNotImportedAgain();
    void aLastReceptionThatIsNotSavedIsSavedByTheNextImport();
    void receptionsThatAddRefusesDoNotHideThatOneIsNotSaved();
    void cancelStopsAndTellsTheStatus();
    void theMainWindowIsOutOfReachMeanwhile();
    void aMissingFolderIsToldInTheStatus();
};

void TestImports::theMenuOpensOneRdsSpyWindow()
{
    ImportingWindow window("TIME_OFFSET=-2\r\n");
    window.start();
    window.spy(u"2010-06-12 18-22-05 D3C3 RADIO 1.txt"_s);
    auto *dialog = window.openSpy(u"12/06/2010"_s);
    QVERIFY(dialog->isVisible());
    QVERIFY(!dialog->isModal());
    QCOMPARE(dialog->windowTitle(), u"Import RDS Spy Logs"_s);
    QCOMPARE(dialog->findChild<QLineEdit *>(u"Text1"_s)->text(), u"87.5"_s);
    QCOMPARE(dialog->findChild<QLineEdit *>(u"Text2"_s)->text(), u"-2"_s);
    QCOMPARE(dialog->findChild<ResultList *>(u"List1"_s)->text(0), u"2010/06/12 18:22:05\tD3C3\tRADIO 1"_s);
    QCOMPARE(window.answers.seen().first().title, u"Select Import date"_s);
    QCOMPARE(window.answers.seen().first().input, dateText(localNow()));
    QCOMPARE(window.answers.takeTexts(), QStringList {u"Enter date of logs to import?"_s});

    QCOMPARE(window.openSpy(u"13/06/2010"_s), dialog);
    QCOMPARE(window.form().findChildren<importRDSSpy *>().size(), 1);
    QCOMPARE(dialog->findChild<ResultList *>(u"List1"_s)->count(), 0);
    ImportingWindow::press(dialog, u"Command4"_s);
    QVERIFY(!dialog->isVisible());
}

void TestImports::rdsSpyReceptionsGoThroughAdd()
{
    ImportingWindow window("TIME_OFFSET=0\r\n");
    window.spy(u"2010-06-12 00-30-00 D3C3 RADIO 1.txt"_s);
    window.spy(u"2010-06-12 23-59-59 f201 FIP.txt"_s);
    window.spy(u"2010-06-13 00-00-00 F201 FIP.txt"_s);
    window.start(oldEntry, "Bilbao|E|43.2630|-2.9350|812.4|\r\n");
    const QPointer<importRDSSpy> dialog = window.openSpy(u"12/06/2010"_s);
    auto *frequency = dialog->findChild<QLineEdit *>(u"Text1"_s);
    frequency->selectAll();
    QTest::keyClicks(frequency, u"99.4"_s);
    auto *offset = dialog->findChild<QLineEdit *>(u"Text2"_s);
    offset->selectAll();
    QTest::keyClicks(offset, u"-1"_s);
    ImportingWindow::press(dialog, u"Command3"_s);

    QCOMPARE(window.answers.takeTexts(), (QStringList {u"Enter date of logs to import?"_s, u"Imported"_s}));
    QTRY_VERIFY(!dialog);
    QCOMPARE(window.logbook(),
        oldEntry
            + "D3C3|11/06/2010 23:30:00||99.4||TBD||RADIO 1|||||\r\n"
              "f201|12/06/2010 22:59:59||99.4||TBD||FIP|||||\r\n"_ba);
    QCOMPARE(window.transmitterFile(), "Bilbao|E|43.2630|-2.9350|812.4|\r\n"_ba);
    QVERIFY(window.directory.read(u"LOGBOOK.INI"_s).endsWith("TIME_OFFSET=-1\r\n"));
    QCOMPARE(window.piCodes(), (QStringList {u"D3C3"_s, u"D3C3"_s, u"f201"_s}));
    QCOMPARE(window.row(1), u"11/06/2010 23:30:00|D3C3|99.4|RADIO 1|TBD|||||||"_s);
    QCOMPARE(window.copies(), QStringList());
    QVERIFY(!window.find<QProgressBar>("progress")->isVisible());
}

void TestImports::theEntryFormIsAsAfterAdd()
{
    ImportingWindow window;
    window.spy(u"2010-06-12 18-22-05 D3C3 RADIO 1.txt"_s);
    const QByteArray loaded = QByteArray(oldEntry).replace("|E||RNE_1", "|E|heard well|RNE_1");
    window.start(loaded, "Bilbao|E|43.2630|-2.9350|812.4|\r\n");
    window.clickRow(1);
    QCOMPARE(window.yellow().size(), 12);
    ImportingWindow::press(window.openSpy(u"12/06/2010"_s), u"Command3"_s);
    // Only the propagation of the loaded entry stays.
    QCOMPARE(window.logbook(), loaded + "D3C3|12/06/2010 18:22:05|Tropo|87.5||TBD||RADIO 1|||||\r\n");
    QCOMPARE(window.form().selected(), -1);
    for (const char *name : {"Text5", "Text6", "Text7", "Text10", "uid", "Text3"}) {
        QCOMPARE(window.text(name), u""_s);
    }
    QCOMPARE(window.text("Combo3"), u"TBD"_s);
    QCOMPARE(window.text("Text2"), u"12/06/2010 18:22:05"_s);
    QCOMPARE(window.text("Text8"), u"RADIO 1"_s);
    QCOMPARE(window.yellow(), QStringList());
    QVERIFY(!window.enabled("Command1"));
    QCOMPARE(window.caption("Command2"), u"New"_s);
    QVERIFY(window.isRowVisible(2));
}

void TestImports::aNameInUtf8IsWrittenInTheCodePage()
{
    ImportingWindow window;
    window.spy(u"2010-06-12 18-22-05 F201 Caf\u00E9.txt"_s);
    window.start(oldEntry);
    auto *dialog = window.openSpy(u"12/06/2010"_s);
    QCOMPARE(dialog->findChild<ResultList *>(u"List1"_s)->text(0), u"2010/06/12 18:22:05\tF201\tCaf\u00E9"_s);
    ImportingWindow::press(dialog, u"Command3"_s);
    QCOMPARE(window.row(2), u"12/06/2010 18:22:05|F201|87.5|Caf\u00E9|TBD|||||||"_s);
    QCOMPARE(window.logbook(), oldEntry + "F201|12/06/2010 18:22:05||87.5||TBD||Caf\xE9|||||\r\n"_ba);
}

void TestImports::whatTheLogHadNotIsTold()
{
    ImportingWindow window;
    window.spy(u"2010-06-12 18-30-00 D3C3 RNE_1.txt"_s);
    window.spy(u"2010-06-13 18-30-00 D3C3 RNE_1.txt"_s);
    window.spy(u"2010-06-13 18-31-00 F201 FIP.txt"_s);
    window.spy(u"2010-06-13 18-32-00 F202 FIP.txt"_s);
    window.start(oldEntry);
    const auto *news = window.find<QLabel>("news");
    ImportingWindow::press(window.openSpy(u"12/06/2010"_s), u"Command3"_s);
    QVERIFY(news->isHidden());
    ImportingWindow::press(window.openSpy(u"13/06/2010"_s), u"Command3"_s);
    QCOMPARE(window.form().log().count(), 5);
    QCOMPARE(window.text("news"), u"2 new PI codes"_s);
    QVERIFY(news->isVisible());
    // Until the next change.
    window.trigger("menuEditUndo");
    QVERIFY(news->isHidden());
    ImportingWindow::press(window.openSpy(u"13/06/2010"_s), u"Command3"_s);
    QCOMPARE(window.text("news"), u"2 new PI codes"_s);
}

void TestImports::markedReceptionsAreLeftOut()
{
    ImportingWindow window;
    window.spy(u"2010-06-12 18-22-05 1111 A.txt"_s);
    window.spy(u"2010-06-12 18-22-06 2222 B.txt"_s);
    window.start();
    auto *dialog = window.openSpy(u"2010-06-12"_s);
    ImportingWindow::press(dialog, u"Command2"_s);
    dialog->findChild<ResultList *>(u"List1"_s)->setListIndex(1);
    ImportingWindow::press(dialog, u"Command5"_s);
    ImportingWindow::press(dialog, u"Command3"_s);
    QCOMPARE(window.logbook(), "2222|12/06/2010 18:22:06||87.5||TBD||B|||||\r\n"_ba);
}

void TestImports::whatAddRefusesIsToldAndTheRestIsAdded()
{
    ImportingWindow window;
    // Two blanks after the time: neither PI code nor name.
    window.spy(u"2010-06-12 18-22-05  .txt"_s);
    window.spy(u"2010-06-12 18-22-06 2222 B.txt"_s);
    window.start(oldEntry);
    ImportingWindow::press(window.openSpy(u"12/06/2010"_s), u"Command3"_s);
    QCOMPARE(window.answers.takeTexts(),
        (QStringList {u"Enter date of logs to import?"_s,
            u"PI Code and RDS Name Empty\n2010/06/12 18:22:05"_s, u"Imported"_s}));
    QCOMPARE(window.text("status"), u"RDS Spy import: 1 imported, 1 refused"_s);
    QCOMPARE(window.logbook(), oldEntry + "2222|12/06/2010 18:22:06||87.5||TBD||B|||||\r\n");

    auto *dialog = window.openSpy(u"12/06/2010"_s);
    dialog->findChild<QLineEdit *>(u"Text1"_s)->clear();
    ImportingWindow::press(dialog, u"Command3"_s);
    QCOMPARE(window.answers.takeTexts(),
        (QStringList {u"Enter date of logs to import?"_s, u"Frequency Empty\n2010/06/12 18:22:05"_s,
            u"Frequency Empty\n2010/06/12 18:22:06 2222 B"_s, u"Imported"_s}));
    QCOMPARE(window.text("status"), u"RDS Spy import: 0 imported, 2 refused"_s);
    QCOMPARE(window.form().log().count(), 2);
}

void TestImports::aWrongOffsetIsStoredAndStopsTheImport()
{
    ImportingWindow window;
    window.spy(u"2010-06-12 18-22-05 1111 A.txt"_s);
    window.start(oldEntry);
    auto *dialog = window.openSpy(u"12/06/2010"_s);
    dialog->findChild<QLineEdit *>(u"Text2"_s)->setText(u"two"_s);
    ImportingWindow::press(dialog, u"Command3"_s);
    const QStringList texts = window.answers.takeTexts();
    QCOMPARE(texts.size(), 2);
    QVERIFY2(texts.last().startsWith(u"Run-time error: Type mismatch\n"_s), qPrintable(texts.last()));
    QVERIFY2(texts.last().contains(u"two"_s), qPrintable(texts.last()));
    QVERIFY(window.directory.read(u"LOGBOOK.INI"_s).endsWith("TIME_OFFSET=two\r\n"));
    QCOMPARE(window.logbook(), oldEntry);
    QVERIFY(dialog->isVisible());
    QVERIFY(dialog->findChild<QPushButton *>(u"Command3"_s)->isEnabled());
}

void TestImports::aFailureHalfWayKeepsWhatWasImported()
{
    ImportingWindow window;
    for (int second = 0; second < 5; ++second) {
        window.spy(u"2010-06-12 18-22-0%1 111%1 A.txt"_s.arg(second));
    }
    window.start(oldEntry);
    auto *dialog = window.openSpy(u"12/06/2010"_s);
    connect(dialog, &importRDSSpy::progress, dialog,
        [&window](int done) { window.calls.failSync = done == 2 ? ENOSPC : 0; });
    ImportingWindow::press(dialog, u"Command3"_s);
    const QStringList texts = window.answers.takeTexts();
    QCOMPARE(texts.size(), 2);
    QVERIFY2(texts.last().startsWith(u"Run-time error: Disk full\n"_s), qPrintable(texts.last()));
    const QByteArray twoImported = "1110|12/06/2010 18:22:00||87.5||TBD||A|||||\r\n"
                                   "1111|12/06/2010 18:22:01||87.5||TBD||A|||||\r\n"_ba;
    QCOMPARE(window.logbook(), oldEntry + twoImported);
    QVERIFY(dialog->isVisible());

    // What the file missed is written by the next save.
    QVERIFY2(texts.last().endsWith(
                 u"\nIt is in the log, and not selected any more: Import or the next save writes it.\n"
                 u"The 2 before it are in the log, and not selected any more."_s),
        qPrintable(texts.last()));
    window.calls.failSync = 0;
    window.form().saveLogbook();
    const QByteArray threeImported = twoImported + "1112|12/06/2010 18:22:02||87.5||TBD||A|||||\r\n";
    QCOMPARE(window.logbook(), oldEntry + threeImported);

    // Import goes on with the rest.
    disconnect(dialog, &importRDSSpy::progress, dialog, nullptr);
    ImportingWindow::press(dialog, u"Command3"_s);
    QCOMPARE(window.answers.takeTexts(), QStringList {u"Imported"_s});
    QCOMPARE(window.logbook(),
        oldEntry + threeImported
            + "1113|12/06/2010 18:22:03||87.5||TBD||A|||||\r\n"
              "1114|12/06/2010 18:22:04||87.5||TBD||A|||||\r\n");
}

void TestImports::aFirstReceptionThatIsNotSavedIsNotImportedAgain()
{
    ImportingWindow window;
    window.spy(u"2010-06-12 18-22-05 1111 A.txt"_s);
    window.spy(u"2010-06-12 18-22-06 2222 B.txt"_s);
    window.start(oldEntry);
    auto *dialog = window.openSpy(u"12/06/2010"_s);
    const auto diskFull = connect(dialog, &importRDSSpy::importing, dialog,
        [&window](bool runs) { window.calls.failSync = runs ? ENOSPC : 0; });
    ImportingWindow::press(dialog, u"Command3"_s);
    disconnect(diskFull);
    const auto *list = dialog->findChild<ResultList *>(u"List1"_s);
    QCOMPARE(list->text(0), u"*2010/06/12 18:22:05\t1111\tA"_s);
    QCOMPARE(list->text(1), u"2010/06/12 18:22:06\t2222\tB"_s);
    ImportingWindow::press(dialog, u"Command3"_s);
    QCOMPARE(window.logbook(),
        oldEntry
            + "1111|12/06/2010 18:22:05||87.5||TBD||A|||||\r\n"
              "2222|12/06/2010 18:22:06||87.5||TBD||B|||||\r\n");
}

void TestImports::aLastReceptionThatIsNotSavedIsSavedByTheNextImport()
{
    ImportingWindow window;
    window.spy(u"2010-06-12 18-22-05 1111 A.txt"_s);
    window.spy(u"2010-06-12 18-22-06 2222 B.txt"_s);
    window.start(oldEntry);
    const QPointer<importRDSSpy> dialog = window.openSpy(u"12/06/2010"_s);
    (void)window.answers.takeTexts();
    // The disk is full from the first reception on; the offset can be stored all the same.
    bool full = false;
    connect(dialog, &importRDSSpy::progress, dialog, [&] {
        full = true;
        window.calls.failSync = ENOSPC;
    });
    connect(dialog, &importRDSSpy::importing, dialog,
        [&](bool runs) { window.calls.failSync = runs && full ? ENOSPC : 0; });
    const QByteArray first = oldEntry + "1111|12/06/2010 18:22:05||87.5||TBD||A|||||\r\n";
    // From the second attempt on nothing is selected: it is not said to be imported as long as it is not
    // saved.
    for (int attempt = 0; attempt < 3; ++attempt) {
        ImportingWindow::press(dialog, u"Command3"_s);
        const QStringList texts = window.answers.takeTexts();
        QCOMPARE(texts.size(), 1);
        QVERIFY2(texts.first().startsWith(u"Run-time error: Disk full\n"_s), qPrintable(texts.first()));
        QCOMPARE(window.logbook(), first);
        QVERIFY(dialog->isVisible());
    }
    full = false;
    ImportingWindow::press(dialog, u"Command3"_s);
    QCOMPARE(window.answers.takeTexts(), QStringList {u"Imported"_s});
    QCOMPARE(window.logbook(), first + "2222|12/06/2010 18:22:06||87.5||TBD||B|||||\r\n");
    QTRY_VERIFY(!dialog);
}

void TestImports::receptionsThatAddRefusesDoNotHideThatOneIsNotSaved()
{
    ImportingWindow window;
    window.spy(u"2010-06-12 18-22-05 1111 A.txt"_s);
    // Two blanks after the time: neither PI code nor name, and so no save.
    window.spy(u"2010-06-12 18-22-06  .txt"_s);
    window.start(oldEntry);
    const QPointer<importRDSSpy> dialog = window.openSpy(u"12/06/2010"_s);
    (void)window.answers.takeTexts();
    const auto diskFull = connect(dialog, &importRDSSpy::importing, dialog,
        [&window](bool runs) { window.calls.failSync = runs ? ENOSPC : 0; });
    ImportingWindow::press(dialog, u"Command3"_s);
    disconnect(diskFull);
    QCOMPARE(window.answers.takeTexts().size(), 1);
    QCOMPARE(window.logbook(), oldEntry);
    ImportingWindow::press(dialog, u"Command3"_s);
    QCOMPARE(window.answers.takeTexts(),
        (QStringList {u"PI Code and RDS Name Empty\n2010/06/12 18:22:06"_s, u"Imported"_s}));
    QCOMPARE(window.logbook(), oldEntry + "1111|12/06/2010 18:22:05||87.5||TBD||A|||||\r\n");
}

void TestImports::cancelStopsAndTellsTheStatus()
{
    ImportingWindow window;
    for (int second = 0; second < 5; ++second) {
        window.spy(u"2010-06-12 18-22-0%1 111%1 A.txt"_s.arg(second));
    }
    window.start();
    auto *dialog = window.openSpy(u"12/06/2010"_s);
    connect(dialog, &importRDSSpy::progress, dialog, [dialog](int done) {
        if (done == 2) {
            ImportingWindow::press(dialog, u"Command4"_s);
        }
    });
    ImportingWindow::press(dialog, u"Command3"_s);
    QCOMPARE(window.form().log().count(), 2);
    QCOMPARE(
        window.text("status"), u"RDS Spy import stopped: 2 imported, 0 refused, 3 left, 1 already there"_s);
    QVERIFY(dialog->isVisible());
    QVERIFY(!window.find<QProgressBar>("progress")->isVisible());
}

void TestImports::theMainWindowIsOutOfReachMeanwhile()
{
    ImportingWindow window;
    window.spy(u"2010-06-12 18-22-05 1111 A.txt"_s);
    window.spy(u"2010-06-12 18-22-06 2222 B.txt"_s);
    window.start(oldEntry);
    auto *dialog = window.openSpy(u"12/06/2010"_s);
    connect(dialog, &importRDSSpy::progress, dialog, [&window] {
        window.click("Command2");
        QTest::keyClick(&window.form(), Qt::Key_F5);
        window.clickRow(1);
    });
    ImportingWindow::press(dialog, u"Command3"_s);
    QCOMPARE(window.caption("Command2"), u"New"_s);
    QVERIFY(!window.form().findChild<QDialog *>(u"Dialog1"_s));
    QCOMPARE(window.yellow(), QStringList());
    QCOMPARE(window.form().log().count(), 3);
    // And within reach again afterwards.
    window.click("Command2");
    QCOMPARE(window.caption("Command2"), u"Cancel"_s);
}

void TestImports::aMissingFolderIsToldInTheStatus()
{
    ImportingWindow window;
    window.start();
    window.openSpy({});
    QCOMPARE(window.text("status"),
        u"There is no folder %1. Set the RDS Spy directory in the menu Setup, under Directories."_s.arg(
            window.directory.file(u"spy"_s)));
    QCOMPARE(window.find<importRDSSpy>("importRDSSpy")->findChild<ResultList *>(u"List1"_s)->emptyText(),
        window.text("status"));
    const auto *dialog = window.openDx();
    QCOMPARE(dialog->findChild<ResultList *>(u"List1"_s)->emptyText(), window.text("status"));
    QCOMPARE(window.text("status"),
        u"There is no folder %1. Set the RDSDX directory in the menu Setup, under Directories."_s.arg(
            window.directory.file(u"dx"_s)));
}

QTEST_MAIN(TestImports)
#include "tst_imports.moc"
