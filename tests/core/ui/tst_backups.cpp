#include "backup/backupfiles.h"
#include "backup/backups.h"
#include "backup/ziparchive.h"
#include "core/ui/exportingwindow.h"
#include "support/savedialog.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QToolButton>

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

const DateTime lastYear = *fromCivil({2025, 6, 1, 20, 15, 30});

/// A main window whose log is backed up.
class BackedUpWindow : public MainWindow
{
public:
    Opened opened;
    TestDirectory state;

    BackedUpWindow()
    {
        backupFolder = state.path();
        start(entries, sites);
    }
    [[nodiscard]] Backups backups() { return {state.path(), form().config()}; }
    [[nodiscard]] QStringList names()
    {
        return QDir(backups().folder()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    /// Changes the log.
    void add()
    {
        click("Command2");
        fill({u"Text9"_s, u"99.9"_s, u"Text1"_s, u"ABCD"_s, u"Text8"_s, u"NEW"_s, u"Combo2"_s, u"Es"_s,
            u"Combo3"_s, u"F"_s});
        click("Command1");
    }
    /// The lines of the list of backups.
    [[nodiscard]] QStringList lines()
    {
        auto *list = find<ResultList>("backupList");
        QStringList all;
        for (int line = 0; line < list->count(); ++line) {
            all += list->text(line);
        }
        return all;
    }
};

} // namespace

class TestBackupsWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    void theFirstChangeOfTheDayMakesABackup();
    void aFailureIsToldOnceAndTheLogIsSaved();
    void withoutABackupOfTodayASignStays();
    void anOutdatedBackupThatStaysIsTold();
    void theListComparesWithNow();
    void theWindowSaysWhereTheyAreAndCloses();
    void restoringIsOneStep();
    void aDoubleClickAsksToo();
    void theQuestionCanBeAnsweredNo();
    void whatIsTypedIsAskedFor();
    void withoutABackupOfThePresentNothingIsRestored();
    void aBrokenBackupIsToldInWords();
    void aBackupOfTheSameIsNoChange();
    void backUpNowToAnyPlace();
    void theFolderIsOpened();
    void settingsAreAChangeToo();
    void anotherLogbookIsNotRestored();
};

void TestBackupsWindow::settingsAreAChangeToo()
{
    BackedUpWindow window;
    const QByteArray before = window.directory.read(u"LOGBOOK.INI"_s);
    window.form().config().changeConfig(u"SCRATCH_PAD="_s, u"new"_s);
    QCOMPARE(window.names().size(), 1);
    const auto kept = readZip(window.backups().list().front().path, ZipReading::Whole);
    QCOMPARE(kept.members.back().name, u"LOGBOOK.INI"_s);
    QCOMPARE(kept.members.back().bytes, before);
}

void TestBackupsWindow::anotherLogbookIsNotRestored()
{
    BackedUpWindow window;
    const Config config = window.form().config();
    window.directory.write(u"Other.log"_s, entries);
    Config other(window.directory.path());
    other.readConfig();
    other.changeConfig(u"LOGBOOK_FILENAME="_s, u"Other.log"_s);
    Backups(window.state.path(), other).make(lastYear);
    other.changeConfig(u"LOGBOOK_FILENAME="_s, config.settings().logbookFileName);
    window.trigger("menuFileBackups");
    QCOMPARE(window.lines(), QStringList {u"01/06/2025 20:15:30\t4\tof the logbook Other.log"_s});
    window.answers.press(QMessageBox::Ok);
    window.click("backupRestore");
    const QString told = window.answers.takeTexts().join(u'\n');
    QVERIFY2(told.contains(u"it holds the logbook Other.log, and the present one is "_s), qPrintable(told));
    QCOMPARE(window.logbook(), entries);
}

void TestBackupsWindow::theFirstChangeOfTheDayMakesABackup()
{
    BackedUpWindow window;
    QCOMPARE(window.state.names(), QStringList());
    window.add();
    QCOMPARE(window.names().size(), 1);
    const auto kept = readZip(window.backups().list().front().path, ZipReading::Whole);
    QCOMPARE(kept.members.front().bytes, entries);
    QVERIFY(window.logbook() != entries);
    QVERIFY(!window.text("status").contains(u"backup"_s));
    window.add();
    QCOMPARE(window.names().size(), 1);
}

void TestBackupsWindow::aFailureIsToldOnceAndTheLogIsSaved()
{
    BackedUpWindow window;
    window.state.write(QDir(window.state.path()).relativeFilePath(window.backups().folder()), "a file");
    window.add();
    QVERIFY2(window.text("status").startsWith(u"No backup of today: Run-time error: "_s),
        qPrintable(window.text("status")));
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QVERIFY(window.logbook().contains("|NEW|"));
    window.add();
    QVERIFY(!window.text("status").contains(u"backup"_s));
}

void TestBackupsWindow::withoutABackupOfTodayASignStays()
{
    BackedUpWindow window;
    auto *sign = window.find<QToolButton>("noBackup");
    QVERIFY(!sign->isVisible());
    const QString blocked = QDir(window.state.path()).relativeFilePath(window.backups().folder());
    window.state.write(blocked, "a file");
    window.add();
    window.add();
    QVERIFY(!window.text("status").contains(u"backup"_s));
    QVERIFY(sign->isVisible());
    QCOMPARE(sign->text(), u"No backup of today"_s);
    QVERIFY(sign->toolTip().contains(u"Run-time error: "_s));
    sign->click();
    auto *problem = window.find<QLabel>("backupProblem");
    QVERIFY(problem->isVisible());
    QVERIFY2(
        problem->text().startsWith(u"No backup of today: Run-time error: "_s), qPrintable(problem->text()));
    // The next start tries again.
    QVERIFY(QFile::remove(window.backups().folder()));
    window.start();
    window.add();
    QCOMPARE(window.names().size(), 1);
    QVERIFY(!window.find<QToolButton>("noBackup")->isVisible());
    window.trigger("menuFileBackups");
    QVERIFY(!window.find<QLabel>("backupProblem")->isVisible());
}

void TestBackupsWindow::anOutdatedBackupThatStaysIsTold()
{
    BackedUpWindow window;
    const QString folder = QDir(window.state.path()).relativeFilePath(window.backups().folder());
    // Not the last one of its month, and no file that could be removed.
    window.state.write(folder + u"/2020-02-04 120000.zip"_s, "last");
    window.state.write(folder + u"/2020-02-03 120000.zip"_s, "old");
    window.calls.failRemove = EACCES;
    window.add();
    QVERIFY2(window.text("status").startsWith(u"An outdated backup stays: Run-time error: "_s),
        qPrintable(window.text("status")));
    QCOMPARE(window.names().size(), 3);
    QVERIFY(!window.find<QToolButton>("noBackup")->isVisible());
}

void TestBackupsWindow::theListComparesWithNow()
{
    BackedUpWindow window;
    window.backups().make(lastYear);
    window.trigger("menuFileBackups");
    QCOMPARE(window.lines(), QStringList {u"01/06/2025 20:15:30\t4\tas many"_s});
    window.add();
    QCOMPARE(window.lines().size(), 2);
    QCOMPARE(window.lines().last(), u"01/06/2025 20:15:30\t4\t1 fewer"_s);
    // The chosen one stays chosen below a new one.
    auto *list = window.find<ResultList>("backupList");
    QVERIFY(list->text(list->listIndex()).startsWith(u"01/06/2025"_s));
}

void TestBackupsWindow::theWindowSaysWhereTheyAreAndCloses()
{
    BackedUpWindow window;
    window.trigger("menuFileBackups");
    QCOMPARE(window.text("backupFolder"), window.backups().folder());
    QCOMPARE(window.find<ResultList>("backupList")->emptyText(),
        u"No backups yet. The first one of a day is made before the log changes."_s);
    auto *close = window.find<QPushButton>("backupClose");
    QVERIFY(close->window()->isVisible());
    const QPointer<QWidget> shown = close->window();
    close->click();
    QVERIFY(!shown || !shown->isVisible());
}

void TestBackupsWindow::restoringIsOneStep()
{
    BackedUpWindow window;
    window.backups().make(lastYear);
    window.add();
    window.clickRow(2);
    window.type("Text8", u"CHANGED"_s);
    window.click("Command3");
    const QByteArray present = window.logbook();
    QVERIFY(present != entries);
    const qsizetype before = window.names().size();
    window.trigger("menuFileBackups");
    auto *list = window.find<ResultList>("backupList");
    list->setListIndex(list->count() - 1);
    window.answers.press(QMessageBox::Yes);
    window.click("backupRestore");
    const QStringList texts = window.answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts[0].startsWith(u"Bring back the log of 01/06/2025 20:15:30 UTC?\n\n"
                                 "It has 4 receptions, 1 fewer than now, and 3 sites."_s),
        qPrintable(texts[0]));
    QCOMPARE(window.logbook(), entries);
    QCOMPARE(window.grid().rows(), 5);
    QCOMPARE(window.text("status"), u"Done: Restore the Log of 01/06/2025 20:15:30"_s);
    // The present one is in a backup.
    QCOMPARE(window.names().size(), before + 1);
    QCOMPARE(readZip(window.backups().list().front().path, ZipReading::Whole).members.front().bytes, present);
    // The list goes on showing the same one.
    QVERIFY(list->text(list->listIndex()).startsWith(u"01/06/2025"_s));
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), present);
    QCOMPARE(window.transmitterFile(), sites);
    QCOMPARE(window.grid().rows(), 6);
    QCOMPARE(window.answers.takeTexts(), QStringList());
}

void TestBackupsWindow::aDoubleClickAsksToo()
{
    BackedUpWindow window;
    window.backups().make(lastYear);
    window.add();
    window.trigger("menuFileBackups");
    auto *list = window.find<ResultList>("backupList");
    window.answers.press(QMessageBox::No);
    Q_EMIT list->lineActivated(list->count() - 1);
    const QStringList texts = window.answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts[0].startsWith(u"Bring back the log of "_s), qPrintable(texts[0]));
}

void TestBackupsWindow::theQuestionCanBeAnsweredNo()
{
    BackedUpWindow window;
    window.backups().make(lastYear);
    window.add();
    const QByteArray present = window.logbook();
    const QStringList before = window.names();
    window.trigger("menuFileBackups");
    window.find<ResultList>("backupList")->setListIndex(1);
    window.answers.press(QMessageBox::No);
    window.click("backupRestore");
    QCOMPARE(window.logbook(), present);
    QCOMPARE(window.names(), before);
}

void TestBackupsWindow::whatIsTypedIsAskedFor()
{
    BackedUpWindow window;
    window.backups().make(lastYear);
    window.add();
    window.click("Command2");
    window.type("Text9", u"101.1"_s);
    window.trigger("menuFileBackups");
    window.answers.press(QMessageBox::No);
    window.click("backupRestore");
    QVERIFY(window.answers.takeTexts().value(0).contains(u"What is typed in the form is not stored"_s));
    QCOMPARE(window.text("Text9"), u"101.1"_s);
}

void TestBackupsWindow::withoutABackupOfThePresentNothingIsRestored()
{
    BackedUpWindow window;
    window.backups().make(lastYear);
    window.add();
    const QByteArray present = window.logbook();
    window.trigger("menuFileBackups");
    window.find<ResultList>("backupList")->setListIndex(1);
    window.answers.press(QMessageBox::Yes);
    window.calls.failWrite = ENOSPC;
    window.click("backupRestore");
    QVERIFY(window.answers.takeTexts().last().startsWith(u"Run-time error: Disk full"_s));
    QCOMPARE(window.logbook(), present);
    QCOMPARE(window.grid().rows(), 6);
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestBackupsWindow::aBrokenBackupIsToldInWords()
{
    BackedUpWindow window;
    const QString path = window.backups().make(lastYear);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.resize(file.size() / 2));
    file.close();
    window.trigger("menuFileBackups");
    QVERIFY2(window.lines().first().startsWith(u"01/06/2025 20:15:30\t\tcannot be read: "_s),
        qPrintable(window.lines().first()));
    QVERIFY(!window.enabled("backupRestore"));
}

void TestBackupsWindow::aBackupOfTheSameIsNoChange()
{
    BackedUpWindow window;
    window.backups().make(lastYear);
    window.trigger("menuFileBackups");
    window.answers.press(QMessageBox::Yes);
    window.click("backupRestore");
    QCOMPARE(window.text("status"), u"The log is already as it was on 01/06/2025 20:15:30"_s);
    QVERIFY(window.form().document().undoName().isEmpty());
    QCOMPARE(window.names().size(), 1);
}

void TestBackupsWindow::backUpNowToAnyPlace()
{
    BackedUpWindow window;
    window.trigger("menuFileBackups");
    const TestDirectory elsewhere;
    saveAs(window.answers, elsewhere.file(u"mine"_s));
    window.click("backupNow");
    QCOMPARE(elsewhere.names(), QStringList {u"mine.zip"_s});
    QCOMPARE(readBackup(elsewhere.file(u"mine.zip"_s), logbookName(window.form().config()),
                 Regional::fromEnvironment())
                 .log.count(),
        4);
    QCOMPARE(window.text("status"), u"Backed up to "_s + elsewhere.file(u"mine.zip"_s));
    saveAs(window.answers, elsewhere.file(u"other.zip"_s));
    window.calls.failWrite = ENOSPC;
    window.click("backupNow");
    QVERIFY(window.answers.takeTexts().last().startsWith(u"Run-time error: Disk full"_s));
    QCOMPARE(elsewhere.names(), QStringList {u"mine.zip"_s});
}

void TestBackupsWindow::theFolderIsOpened()
{
    BackedUpWindow window;
    window.trigger("menuFileBackups");
    QVERIFY(!window.enabled("backupOpenFolder"));
    window.add();
    QVERIFY(window.enabled("backupOpenFolder"));
    window.click("backupOpenFolder");
    QCOMPARE(window.opened.take(), QStringList {window.backups().folder()});
}

QTEST_MAIN(TestBackupsWindow)
#include "tst_backups.moc"
