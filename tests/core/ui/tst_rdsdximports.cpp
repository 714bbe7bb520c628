#include "core/ui/importingwindow.h"
#include "ui/resultlist.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPointer>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

const QByteArray rdsdxHeader = "  Freq PI   PS       Time    ITU Station|Remarks\r\n";
const QByteArray rdsdxLines = "  98.1 C2A2 NARODNI  1610 05 HRV NARODNI, Biokovo|\r\n"
                              "       5202 RAI R2   1612 47 I   RAI R2,Martina Franca|fading\r\n"
                              " 101.3 5279 VIRGIN   1615 38 I   VIRGIN,Monte,Limbara|stereo|more\r\n"_ba;
// With two commas the transmitter of the line before counts, although that line is left out.
const QByteArray rdsdxEntries = "C2A2|12/06/2010 16:10:05||98.1| Biokovo|HRV||NARODNI|||||\r\n"
                                "5279|12/06/2010 16:15:38||101.3|Martina Franca|I|stereo|VIRGIN|||||\r\n"_ba;

// A name that is not UTF-8 can be given in bytes only.
bool writeAt(const QByteArray &path, const QByteArray &content)
{
    QFile file;
    const int opened = ::open(path.constData(), O_CREAT | O_WRONLY, 0600);
    return file.open(opened, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle)
        && file.write(content) == content.size();
}

} // namespace

class TestRdsdxImports : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QVERIFY(!QGuiApplication::overrideCursor()); }

    void theMenuOpensOneRdsdxWindow();
    void aMissingRdsdxFileIsNotFound();
    void anImportThatIsNotWantedIsCancelled();
    void theBackupIsMadeFirst();
    void withoutALogbookThereIsNoBackup();
    void rdsdxReceptionsAreAppended();
    void aListedFileIsImportedHoweverItsNameIsEncoded_data();
    void aListedFileIsImportedHoweverItsNameIsEncoded();
    void aHeaderAloneImportsNothing();
    void aFailingLineLeavesTheOldLogbookAndABackup_data();
    void aFailingLineLeavesTheOldLogbookAndABackup();
    void theQuestionStartsTheAutomaticSearch();
    void aFailingSearchDoesNotOfferTheImportAgain();
    void aFailingSaveIsTold();
    void anImportThatIsNotSavedIsShownAndNotOfferedAgain();
};

void TestRdsdxImports::theMenuOpensOneRdsdxWindow()
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

void TestRdsdxImports::aMissingRdsdxFileIsNotFound()
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

void TestRdsdxImports::anImportThatIsNotWantedIsCancelled()
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

void TestRdsdxImports::theBackupIsMadeFirst()
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

void TestRdsdxImports::withoutALogbookThereIsNoBackup()
{
    ImportingWindow window;
    window.directory.write(u"dx/20100612.txt"_s, rdsdxHeader + rdsdxLines);
    window.start();
    window.answers.press(QMessageBox::Yes);
    ImportingWindow::press(window.openDx(), u"OKButton"_s);
    QCOMPARE(window.copies(), QStringList());
    QCOMPARE(window.logbook(), rdsdxEntries);
}

void TestRdsdxImports::rdsdxReceptionsAreAppended()
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
    // Beside it, what the log had not before.
    QVERIFY2(window.text("news").startsWith(u"2 new PI codes, "_s), qPrintable(window.text("news")));
    QVERIFY(window.find<QLabel>("news")->isVisible());
    QCOMPARE(window.logbook(), oldEntry + rdsdxEntries);
    QCOMPARE(window.piCodes(), (QStringList {u"C2A2"_s, u"5279"_s, u"D3C3"_s}));
    QCOMPARE(window.copies().size(), 1);
    QCOMPARE(window.directory.read(window.copies().first()), oldEntry);
    QTRY_VERIFY(!dialog);
}

void TestRdsdxImports::aListedFileIsImportedHoweverItsNameIsEncoded_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("UTF-8") << "20100612 Caf\xC3\xA9.txt"_ba;
    QTest::newRow("UTF-8, decomposed") << "20100612 Cafe\xCC\x81.txt"_ba;
    QTest::newRow("code page") << "20100612 Caf\xE9.txt"_ba;
}

void TestRdsdxImports::aListedFileIsImportedHoweverItsNameIsEncoded()
{
    QFETCH(QByteArray, bytes);
    ImportingWindow window;
    window.directory.write(u"dx/20100611.txt"_s, rdsdxHeader);
    const QByteArray path = QFile::encodeName(window.directory.file(u"dx/"_s)) + bytes;
    QVERIFY(writeAt(path, rdsdxHeader + rdsdxLines));
    window.start();
    window.answers.press(QMessageBox::Yes);
    auto *dialog = window.openDx();
    QCOMPARE(dialog->findChild<ResultList *>(u"List1"_s)->text(1), u"20100612 Caf\u00E9.txt"_s);
    ImportingWindow::press(dialog, u"OKButton"_s);
    QCOMPARE(::unlink(path.constData()), 0);
    QCOMPARE(window.answers.takeTexts().first(2),
        (QStringList {u"Import "_s + window.directory.file(u"dx/20100612 Caf\u00E9.txt"_s) + u'?',
            u"Imported 2 logs"_s}));
    QCOMPARE(window.logbook(), rdsdxEntries);
}

void TestRdsdxImports::aHeaderAloneImportsNothing()
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

void TestRdsdxImports::aFailingLineLeavesTheOldLogbookAndABackup_data()
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

void TestRdsdxImports::aFailingLineLeavesTheOldLogbookAndABackup()
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
    QCOMPARE(window.copies().size(), 1);
    QCOMPARE(window.directory.read(window.copies().first()), oldEntry);
    if (file == u"20100612.txt"_s) {
        QVERIFY2(texts.last().contains(u", line 5: "_s) && texts.last().contains(QString::fromLatin1(line)),
            qPrintable(texts.last()));
        QCOMPARE(window.form().log().count(), 3);
        QCOMPARE(window.piCodes(), (QStringList {u"C2A2"_s, u"5279"_s, u"D3C3"_s}));
        QVERIFY(texts.last().endsWith(u"\nReceptions of the file that are in the log in memory: 2"_s));
    } else {
        QCOMPARE(window.form().log().count(), 1);
        QVERIFY(texts.last().endsWith(u"\nReceptions of the file that are in the log in memory: 0"_s));
    }
    // The window is back, so that another file can be chosen.
    QVERIFY(dialog->isVisible());
}

void TestRdsdxImports::theQuestionStartsTheAutomaticSearch()
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

void TestRdsdxImports::aFailingSearchDoesNotOfferTheImportAgain()
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

void TestRdsdxImports::aFailingSaveIsTold()
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

void TestRdsdxImports::anImportThatIsNotSavedIsShownAndNotOfferedAgain()
{
    ImportingWindow window;
    window.directory.write(u"dx/20100612.txt"_s, rdsdxHeader + rdsdxLines);
    window.start();
    window.answers.doing([&window](QWidget *box) {
        window.calls.failSync = ENOSPC;
        QTest::mouseClick(qobject_cast<QMessageBox *>(box)->button(QMessageBox::Yes), Qt::LeftButton);
    });
    const QPointer<rdsdxlist> dialog = window.openDx();
    ImportingWindow::press(dialog, u"OKButton"_s);
    const QStringList texts = window.answers.takeTexts();
    QCOMPARE(texts.size(), 2);
    QVERIFY2(texts.last().startsWith(u"Run-time error: Disk full\n"_s), qPrintable(texts.last()));
    QVERIFY2(texts.last().endsWith(u"\nReceptions of the file that are in the log in memory: 2"_s),
        qPrintable(texts.last()));
    QCOMPARE(window.piCodes(), (QStringList {u"C2A2"_s, u"5279"_s}));
    QVERIFY(!dialog || !dialog->isVisible());
    window.calls.failSync = 0;
    window.form().saveLogbook();
    QCOMPARE(window.logbook(), rdsdxEntries);
}

QTEST_MAIN(TestRdsdxImports)
#include "tst_rdsdximports.moc"
