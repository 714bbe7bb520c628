#include "import/ui/importrdsspy.h"
#include "import/ui/rdsdxlist.h"
#include "support/mainwindow.h"
#include "ui/resultlist.h"

#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

const QByteArray oldEntry =
    "D3C3|12/06/2010 18:22:05|Tropo|100.5|Bilbao|E||RNE_1|10|812.4|fml=sent#|4711|\r\n";
const QByteArray rdsdxHeader = "  Freq PI   PS       Time    ITU Station|Remarks\r\n";
const QByteArray rdsdxLines = "  98.1 C2A2 NARODNI  1610 05 HRV NARODNI, Biokovo|\r\n"
                              "       5202 RAI R2   1612 47 I   RAI R2,Martina Franca|fading\r\n"
                              " 101.3 5279 VIRGIN   1615 38 I   VIRGIN,Monte,Limbara|stereo|more\r\n"_ba;
// With two commas the transmitter of the line before counts, although that line is left out.
const QByteArray rdsdxEntries = "C2A2|12/06/2010 16:10:05||98.1| Biokovo|HRV||NARODNI|||||\r\n"
                                "5279|12/06/2010 16:15:38||101.3|Martina Franca|I|stereo|VIRGIN|||||\r\n"_ba;

// A main window that knows both folders of the outside programs.
class ImportingWindow : public MainWindow
{
public:
    explicit ImportingWindow(const QByteArray &settings = {})
    {
        directory.write(u"LOGBOOK.INI"_s,
            "RDSSPY_LOGS=" + directory.file(u"spy"_s).toLocal8Bit()
                + "\r\nRDSDX_LOG=" + directory.file(u"dx"_s).toLocal8Bit() + "\r\n" + settings);
    }
    void spy(const QString &name) { directory.write(u"spy/"_s + name, {}); }
    // Opens the RDS Spy import on that day.
    importRDSSpy *openSpy(const QString &day)
    {
        settle();
        answers.type(day);
        trigger("menuImportRDSSpyLog");
        return find<importRDSSpy>("importRDSSpy");
    }
    rdsdxlist *openDx()
    {
        settle();
        trigger("menuImportRDSDXLogCnv");
        return find<rdsdxlist>("rdsdxlist");
    }
    // What was closed is gone.
    static void settle() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
    static void press(const QWidget *dialog, const QString &button)
    {
        QTest::mouseClick(dialog->findChild<QPushButton *>(button), Qt::LeftButton);
    }
};

} // namespace

class TestImports : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QVERIFY(!QGuiApplication::overrideCursor()); }

    void theMenuOpensOneRdsSpyWindow();
    void theMenuOpensOneRdsdxWindow();
    void rdsSpyReceptionsGoThroughAdd();
    void theEntryFormIsAsAfterAdd();
    void markedReceptionsAreLeftOut();
    void whatAddRefusesIsToldAndTheRestIsAdded();
    void aWrongOffsetIsStoredAndStopsTheImport();
    void aFailureHalfWayKeepsWhatWasImported();
    void theProgressBarShowsTheImport();
    void aMissingRdsdxFileIsNotFound();
    void anImportThatIsNotWantedIsCancelled();
    void theBackupIsMadeFirst();
    void withoutALogbookThereIsNoBackup();
    void rdsdxReceptionsAreAppended();
    void aHeaderAloneImportsNothing();
    void aFailingLineLeavesTheOldLogbookAndABackup_data();
    void aFailingLineLeavesTheOldLogbookAndABackup();
    void theQuestionStartsTheAutomaticSearch();
    void aFailingSearchDoesNotOfferTheImportAgain();
    void aFailingSaveIsTold();
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

void TestImports::theMenuOpensOneRdsdxWindow()
{
    ImportingWindow window;
    window.directory.write(u"dx/20100612.txt"_s, rdsdxHeader);
    window.directory.write(u"dx/20100611.TXT"_s, rdsdxHeader);
    window.directory.write(u"dx/notes.doc"_s, {});
    window.start();
    auto *dialog = window.openDx();
    QVERIFY(dialog->isVisible());
    QVERIFY(!dialog->isModal());
    QCOMPARE(dialog->windowTitle(), u"RDSDX Loggings"_s);
    const auto *list = dialog->findChild<ResultList *>(u"List1"_s);
    QCOMPARE(list->count(), 2);
    QCOMPARE(list->text(0), u"20100611.TXT"_s);
    QCOMPARE(list->listIndex(), 1);
    window.directory.write(u"dx/20100613.txt"_s, rdsdxHeader);
    QCOMPARE(window.openDx(), dialog);
    QCOMPARE(window.form().findChildren<rdsdxlist *>().size(), 1);
    QCOMPARE(list->count(), 3);
    ImportingWindow::press(dialog, u"CancelButton"_s);
    QVERIFY(!dialog->isVisible());
    QCOMPARE(window.answers.takeTexts(), QStringList());
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
    window.start(oldEntry, "Bilbao|E|43.2630|-2.9350|812.4|\r\n");
    window.clickRow(1);
    QCOMPARE(window.yellow().size(), 12);
    ImportingWindow::press(window.openSpy(u"12/06/2010"_s), u"Command3"_s);
    for (const char *name : {"Text5", "Text6", "Text7", "Text10"}) {
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
        (QStringList {u"Enter date of logs to import?"_s, u"PI Code and RDS Name Empty"_s, u"Imported"_s}));
    QCOMPARE(window.logbook(), oldEntry + "2222|12/06/2010 18:22:06||87.5||TBD||B|||||\r\n");

    auto *dialog = window.openSpy(u"12/06/2010"_s);
    dialog->findChild<QLineEdit *>(u"Text1"_s)->clear();
    ImportingWindow::press(dialog, u"Command3"_s);
    QCOMPARE(window.answers.takeTexts(),
        (QStringList {
            u"Enter date of logs to import?"_s, u"Frequency Empty"_s, u"Frequency Empty"_s, u"Imported"_s}));
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
    window.calls.failSync = 0;
    window.form().saveLogbook();
    QCOMPARE(window.logbook(), oldEntry + twoImported + "1112|12/06/2010 18:22:02||87.5||TBD||A|||||\r\n");
}

void TestImports::theProgressBarShowsTheImport()
{
    ImportingWindow window;
    for (int second = 0; second < 3; ++second) {
        window.spy(u"2010-06-12 18-22-0%1 111%1 A.txt"_s.arg(second));
    }
    window.start();
    auto *dialog = window.openSpy(u"12/06/2010"_s);
    const auto *bar = window.find<QProgressBar>("progress");
    QStringList shown;
    connect(dialog, &importRDSSpy::progress, dialog,
        [&] { shown += bar->isVisible() ? bar->text() : u"hidden"_s; });
    ImportingWindow::press(dialog, u"Command3"_s);
    QCOMPARE(shown, (QStringList {u"Importing 1 of 3"_s, u"Importing 2 of 3"_s, u"Importing 3 of 3"_s}));
    QTRY_VERIFY(!bar->isVisible());
}

void TestImports::aMissingRdsdxFileIsNotFound()
{
    ImportingWindow window;
    window.directory.write(u"dx/20100612.txt"_s, rdsdxHeader + rdsdxLines);
    window.start(oldEntry);
    const QPointer<rdsdxlist> dialog = window.openDx();
    QVERIFY(QFile::remove(window.directory.file(u"dx/20100612.txt"_s)));
    ImportingWindow::press(dialog, u"OKButton"_s);
    QCOMPARE(window.answers.takeTexts(),
        QStringList {window.directory.file(u"dx/20100612.txt"_s) + u" Not Found"_s});
    QCOMPARE(window.logbook(), oldEntry);
    QCOMPARE(window.copies(), QStringList());
    QTRY_VERIFY(!dialog);
}

void TestImports::anImportThatIsNotWantedIsCancelled()
{
    ImportingWindow window;
    window.directory.write(u"dx/20100612.txt"_s, rdsdxHeader + rdsdxLines);
    window.start(oldEntry);
    window.answers.press(QMessageBox::No);
    ImportingWindow::press(window.openDx(), u"OKButton"_s);
    const SeenDialog question = window.answers.seen().first();
    QCOMPARE(question.title, u"Import RDSDX Log"_s);
    QCOMPARE(question.icon, QMessageBox::Information);
    QCOMPARE(question.defaultButton, QMessageBox::No);
    QCOMPARE(window.answers.takeTexts(),
        (QStringList {
            u"Import "_s + window.directory.file(u"dx/20100612.txt"_s) + u'?', u"Import cancelled"_s}));
    QCOMPARE(window.logbook(), oldEntry);
    QCOMPARE(window.form().log().count(), 1);
    QCOMPARE(window.copies(), QStringList());
}

void TestImports::theBackupIsMadeFirst()
{
    ImportingWindow window;
    // The header is missing, so that the reading fails at once.
    window.directory.write(u"dx/20100612.txt"_s, "");
    window.start(oldEntry);
    window.answers.press(QMessageBox::Yes);
    const DateTime before = localNow();
    ImportingWindow::press(window.openDx(), u"OKButton"_s);
    QVERIFY(window.answers.takeTexts().last().startsWith(u"Run-time error: Input past end of file\n"_s));
    QCOMPARE(window.copies().size(), 1);
    const QString name = window.copies().first();
    QCOMPARE(window.directory.read(name), oldEntry);
    QVERIFY2(name >= formatted(before, u"yyyymmdd hhnnss", {}) + u".bak"_s
            && name <= formatted(localNow(), u"yyyymmdd hhnnss", {}) + u".bak"_s,
        qPrintable(name));
}

void TestImports::withoutALogbookThereIsNoBackup()
{
    ImportingWindow window;
    window.directory.write(u"dx/20100612.txt"_s, rdsdxHeader + rdsdxLines);
    window.start();
    window.answers.press(QMessageBox::Yes);
    ImportingWindow::press(window.openDx(), u"OKButton"_s);
    QCOMPARE(window.copies(), QStringList());
    QCOMPARE(window.logbook(), rdsdxEntries);
}

void TestImports::rdsdxReceptionsAreAppended()
{
    ImportingWindow window;
    window.directory.write(u"dx/20100612.txt"_s, rdsdxHeader + rdsdxLines);
    window.start(oldEntry);
    window.answers.press(QMessageBox::Yes);
    window.answers.press(QMessageBox::Ok);
    window.answers.press(QMessageBox::No);
    const QPointer<rdsdxlist> dialog = window.openDx();
    ImportingWindow::press(dialog, u"OKButton"_s);
    QCOMPARE(window.answers.seen().size(), 3);
    const SeenDialog question = window.answers.seen().last();
    QCOMPARE(question.title, u"Import RDSDX Log"_s);
    QCOMPARE(question.icon, QMessageBox::Information);
    QCOMPARE(question.defaultButton, QMessageBox::No);
    QCOMPARE(window.answers.takeTexts().mid(1),
        (QStringList {u"Imported 2 logs"_s, u"Perform FMList Auto Search?"_s}));
    QCOMPARE(window.text("status"),
        u"No Frequency for        5202 RAI R2   1612 47 I   RAI R2,Martina Franca|fading"_s);
    QCOMPARE(window.logbook(), oldEntry + rdsdxEntries);
    QCOMPARE(window.piCodes(), (QStringList {u"C2A2"_s, u"5279"_s, u"D3C3"_s}));
    QCOMPARE(window.copies().size(), 1);
    QCOMPARE(window.directory.read(window.copies().first()), oldEntry);
    QTRY_VERIFY(!dialog);
}

void TestImports::aHeaderAloneImportsNothing()
{
    ImportingWindow window;
    window.directory.write(u"dx/20100612.txt"_s, rdsdxHeader);
    // The older layout: that the logbook was written shows.
    window.start("D3C3|12/06/2010 18:22:05|Es|87.6|Bilbao|E||RNE_1|10||\r\n");
    window.answers.press(QMessageBox::Yes);
    ImportingWindow::press(window.openDx(), u"OKButton"_s);
    QCOMPARE(window.answers.takeTexts().mid(1),
        (QStringList {u"Imported 0 logs"_s, u"Perform FMList Auto Search?"_s}));
    QCOMPARE(window.logbook(), "D3C3|12/06/2010 18:22:05|Es|87.6|Bilbao|E||RNE_1|10||||\r\n"_ba);
}

void TestImports::aFailingLineLeavesTheOldLogbookAndABackup_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("error");
    QTest::newRow("no bar") << u"20100612.txt"_s << " 101.3 5279 VIRGIN   1615 38 I   VIRGIN,Monte"_ba
                            << u"Subscript out of range"_s;
    QTest::newRow("no time") << u"20100612.txt"_s << " 101.3 5279 VIRGIN   16x5 38 I   VIRGIN,Monte|"_ba
                             << u"Type mismatch"_s;
    QTest::newRow("no day") << u"20100631.txt"_s << " 101.3 5279 VIRGIN   1615 38 I   VIRGIN,Monte|"_ba
                            << u"Type mismatch"_s;
}

void TestImports::aFailingLineLeavesTheOldLogbookAndABackup()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, line);
    QFETCH(QString, error);
    ImportingWindow window;
    window.directory.write(u"dx/"_s + file, rdsdxHeader + rdsdxLines + line + "\r\n");
    window.start(oldEntry);
    window.answers.press(QMessageBox::Yes);
    auto *dialog = window.openDx();
    ImportingWindow::press(dialog, u"OKButton"_s);
    const QStringList texts = window.answers.takeTexts();
    QCOMPARE(texts.size(), 2);
    QVERIFY2(texts.last().startsWith(u"Run-time error: "_s + error + u'\n'), qPrintable(texts.last()));
    QVERIFY2(texts.last().contains(window.directory.file(u"dx/"_s + file)), qPrintable(texts.last()));
    QCOMPARE(window.logbook(), oldEntry);
    if (file == u"20100612.txt"_s) {
        QVERIFY2(texts.last().contains(u"5"_s) && texts.last().contains(QString::fromLatin1(line)),
            qPrintable(texts.last()));
        QCOMPARE(window.copies().size(), 1);
        QCOMPARE(window.directory.read(window.copies().first()), oldEntry);
        QCOMPARE(window.form().log().count(), 3);
    } else {
        QCOMPARE(window.form().log().count(), 1);
    }
    // The window is back, so that another file can be chosen.
    QVERIFY(dialog->isVisible());
}

void TestImports::theQuestionStartsTheAutomaticSearch()
{
    ImportingWindow window("FMLIST_URL=http://127.0.0.1:9\r\n");
    window.directory.write(u"dx/20100612.txt"_s, rdsdxHeader + rdsdxLines);
    window.start(oldEntry);
    window.answers.press(QMessageBox::Yes);
    window.answers.press(QMessageBox::Ok);
    window.answers.press(QMessageBox::Yes);
    bool marked = false;
    window.answers.doing([&](QWidget *box) {
        marked = window.find<QLabel>("proclogs")->isVisible();
        QTest::keyClick(box, Qt::Key_Escape);
    });
    ImportingWindow::press(window.openDx(), u"OKButton"_s);
    QCOMPARE(window.answers.takeTexts().last(),
        u"Logs from what day do you want Quillon to automatically find a match for from FMList?"_s);
    QVERIFY(marked);
    QVERIFY(!window.find<QLabel>("proclogs")->isVisible());
}

void TestImports::aFailingSearchDoesNotOfferTheImportAgain()
{
    ImportingWindow window("FMLIST_URL=http://127.0.0.1:9\r\n");
    window.directory.write(u"dx/20100612.txt"_s, rdsdxHeader + rdsdxLines);
    window.start(oldEntry);
    window.answers.press(QMessageBox::Yes);
    window.answers.press(QMessageBox::Ok);
    window.answers.press(QMessageBox::Yes);
    window.answers.type(u"some day"_s);
    const QPointer<rdsdxlist> dialog = window.openDx();
    ImportingWindow::press(dialog, u"OKButton"_s);
    QVERIFY(window.answers.takeTexts().last().startsWith(u"Run-time error: Type mismatch\n"_s));
    QVERIFY(!dialog || !dialog->isVisible());
    QCOMPARE(window.logbook(), oldEntry + rdsdxEntries);
}

void TestImports::aFailingSaveIsTold()
{
    ImportingWindow window;
    window.directory.write(u"dx/20100612.txt"_s, rdsdxHeader + rdsdxLines);
    window.start(oldEntry);
    window.answers.doing([&window](QWidget *box) {
        window.calls.failRename = EIO;
        QTest::mouseClick(qobject_cast<QMessageBox *>(box)->button(QMessageBox::Yes), Qt::LeftButton);
    });
    ImportingWindow::press(window.openDx(), u"OKButton"_s);
    QVERIFY(window.answers.takeTexts().last().startsWith(u"Run-time error: Device"_s));
    QCOMPARE(window.logbook(), oldEntry);
    QCOMPARE(window.directory.names(), (QStringList {u"LOGBOOK.INI"_s, u"RDSLog.log"_s, u"dx"_s}));
}

QTEST_MAIN(TestImports)
#include "tst_imports.moc"
