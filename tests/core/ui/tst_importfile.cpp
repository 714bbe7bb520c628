#include "import/ui/importfile.h"
#include "import/ui/importmodel.h"

#include "core/ui/importingwindow.h"
#include "support/importsamples.h"
#include "support/savedialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QSpinBox>
#include <QTableView>
#include <QTableWidget>

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

// The real main window with the import open.
class FileImportWindow : public ImportingWindow
{
public:
    importFile &open()
    {
        settle();
        trigger("menuImportFile");
        return *find<importFile>("importFile");
    }

    void write(const QString &name, const QByteArray &bytes) const
    {
        directory.write(u"in/"_s + name, bytes);
    }
    [[nodiscard]] QString path(const QString &name) const { return directory.file(u"in/"_s + name); }

    // Drops files on the window, as a file manager does.
    void drop(importFile &window, const QStringList &names) const
    {
        QStringList paths;
        for (const QString &name : names) {
            paths += path(name);
        }
        ImportingWindow::drop(window, paths);
    }

    // The first columns of each row: what happens, line, why.
    static QStringList rows(const importFile &window)
    {
        const QAbstractItemModel &model = *window.findChild<QTableView *>(u"importTable"_s)->model();
        QStringList rows;
        for (int row = 0; row < model.rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < 3; ++column) {
                cells += model.index(row, column).data().toString();
            }
            rows += cells.join(u'|');
        }
        return rows;
    }
    static QString cells(const importFile &window, int row)
    {
        const QAbstractItemModel &model = *window.findChild<QTableView *>(u"importTable"_s)->model();
        QStringList cells;
        for (int column = 3; column < model.columnCount(); ++column) {
            cells += model.index(row, column).data().toString();
        }
        return cells.join(u'|');
    }
    static QString label(const importFile &window, const QString &name)
    {
        return window.findChild<QLabel *>(name)->text();
    }
    static bool mayImport(const importFile &window)
    {
        return window.findChild<QPushButton *>(u"importGo"_s)->isEnabled();
    }
    static void choose(const importFile &window, const QString &combo, const QString &text)
    {
        auto *box = window.findChild<QComboBox *>(combo);
        const int place = box->findText(text);
        QVERIFY(place >= 0);
        box->setCurrentIndex(place);
        Q_EMIT box->activated(place);
    }
    static void chooseRow(const importFile &window, int row)
    {
        auto *table = window.findChild<QTableView *>(u"importTable"_s);
        QTest::mouseClick(
            table->viewport(), Qt::LeftButton, {}, table->visualRect(table->model()->index(row, 1)).center());
    }
};

const QByteArray heading =
    "Date/Time,PI Code,Freq,RDS Name,Country,Transmitter,Dist,Power,Notes,Prop,FMList,UID\r\n";

// Brings in what can be of a file that has lines which cannot.
importFile &withRefused(FileImportWindow &window)
{
    window.write(u"a.csv"_s, fmlistLogbook().toUtf8());
    window.start(oldEntry);
    importFile &dialog = window.open();
    window.drop(dialog, {u"a.csv"_s});
    ImportingWindow::press(&dialog, u"importGo"_s);
    return dialog;
}

} // namespace

class TestImportFileWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QVERIFY(!QGuiApplication::overrideCursor()); }

    void theMenuOpensOneWindow();
    void filesAreChosenAndImportedAsOneStep();
    void aFolderIsDropped();
    void whatIsThereIsLeftOutUnlessTicked();
    void theMinutesAreKept();
    void onlyWhatCanComeInHasATick();
    void rowsCompleteWhatIsThere();
    void theFormatIsShownAndCanBeChanged();
    void columnsAreAskedOnceAndKept();
    void aLocalTimeIsConvertedInTheChosenZone();
    void refusedLinesAreSavedMendedAndImported();
    void refusedLinesThatCannotBeSavedAreTold();
    void moreThanTheLogHoldsIsRefusedAsAWhole();
    void aFailingSaveIsToldAndNothingIsLost();
    void anotherImportHasToEndFirst();
    void aLogThatChangesMeanwhileIsComparedAnew();
    void whatCannotBeReadIsTold();
    void otherImportsTellWhatWasThere();
    void whatTheLogHadNotIsTold();
};

void TestImportFileWindow::whatTheLogHadNotIsTold()
{
    FileImportWindow window;
    window.write(u"known.csv"_s, heading + "2010-06-13 18:30:00,D3C3,100.5,RNE_1,E,Bilbao,,,,Tropo,,\r\n");
    window.write(u"new.csv"_s,
        heading
            + "2010-06-14 18:30:00,,88.1,UNO,I,Monte Cavo,,,,Es,,\r\n"
              "2009-06-14 18:31:00,,88.2,DUE,I,Monte Serra,,,,Es,,\r\n"
              "2010-06-14 18:32:00,,88.3,DUE,I,Monte Serra,,,,Es,,\r\n"
              "2010-06-14 18:33:00,D3C3,88.4,RNE_1,E,Granada,,,,Es,,\r\n");
    window.start(oldEntry);
    const auto *news = window.find<QLabel>("news");
    importFile &dialog = window.open();
    window.drop(dialog, {u"known.csv"_s});
    ImportingWindow::press(&dialog, u"importGo"_s);
    QCOMPARE(window.form().log().count(), 2);
    QVERIFY(news->isHidden());
    window.drop(dialog, {u"new.csv"_s});
    ImportingWindow::press(&dialog, u"importGo"_s);
    QCOMPARE(window.text("news"), u"3 new sites, 1 new country, 1 country new in its mode"_s);
    QVERIFY(news->isVisible());
    window.trigger("menuEditUndo");
    QVERIFY(news->isHidden());
}

void TestImportFileWindow::theMenuOpensOneWindow()
{
    FileImportWindow window;
    window.start(oldEntry);
    QCOMPARE(window.find<QAction>("menuImportFile")->shortcut(), QKeySequence(u"Ctrl+O"_s));
    importFile &dialog = window.open();
    QVERIFY(dialog.isVisible());
    QCOMPARE(dialog.windowTitle(), u"Receptions from a File"_s);
    QVERIFY(!FileImportWindow::mayImport(dialog));
    const auto *table = dialog.findChild<QTableView *>(u"importTable"_s);
    QVERIFY(table->isColumnHidden(ImportModel::Line));
    QCOMPARE(&window.open(), &dialog);
    window.write(u"a.csv"_s, heading);
    window.drop(dialog, {u"a.csv"_s});
    QVERIFY(!table->isColumnHidden(ImportModel::Line));
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
}

void TestImportFileWindow::filesAreChosenAndImportedAsOneStep()
{
    FileImportWindow window;
    window.write(u"fmlist.csv"_s, fmlistLogbook().toUtf8());
    window.write(u"web.csv"_s, webServerLog(true).toUtf8());
    window.start(oldEntry);
    importFile &dialog = window.open();
    window.answers.doing([&](QWidget *box) {
        auto *files = qobject_cast<QFileDialog *>(box);
        QVERIFY(files);
        QCOMPARE(files->fileMode(), QFileDialog::ExistingFiles);
        files->setDirectory(window.directory.file(u"in"_s));
        auto *edit = files->findChild<QLineEdit *>(u"fileNameEdit"_s);
        edit->setText(u"\"fmlist.csv\" \"web.csv\""_s);
        QTest::keyClick(edit, Qt::Key_Return);
    });
    ImportingWindow::press(&dialog, u"importChoose"_s);
    QCOMPARE(FileImportWindow::label(dialog, u"importChosen"_s), u"2 files"_s);
    QCOMPARE(FileImportWindow::label(dialog, u"importKind"_s), u"Several kinds"_s);
    QCOMPARE(FileImportWindow::rows(dialog).first(), u"Add|in/fmlist.csv: 5|"_s);
    QCOMPARE(FileImportWindow::label(dialog, u"importCounts"_s),
        u"4 to add, 0 to complete, 0 already there, 3 refused"_s);
    QCOMPARE(window.logbook(), oldEntry);
    ImportingWindow::press(&dialog, u"importGo"_s);
    QCOMPARE(FileImportWindow::label(dialog, u"importReport"_s),
        u"Added: 4\nCompleted: 0\nAlready there: 0\nRefused: 3"_s);
    QCOMPARE(window.text("status"), u"Import of 2 files: 4 added, 0 completed, 0 already there, 3 refused"_s);
    // The log has its distances in miles.
    const QByteArray imported = "E213|21/11/2025 09:30:00|Es|98.50|Pe\xF1"
                                "a Cabarga|E|Program: RNE Cl\xE1sica; QTF: 215; RDS: X; Details: PI E213 "
                                "noted; Remarks: strong; Antenna: 5 el|RNE_Cl\xE1s|10|767.1|||\r\n"
                                "|21/11/2025 00:05:00|Tr|87.6|Monte Cavo|I|QTF: 170|RAI_1|1000|683.5|||\r\n"
                                "D3C2|21/07/2025 18:30:05||98.500|Leipzig|D|name: MDR JUMP Sachsen; pol: h; "
                                "az: 45|MDR_JUMP|100|74.6||4711|\r\n"
                                "E213|21/07/2025 18:32:00||87.600||E|PI?|RNE_CLAS|||||\r\n";
    QCOMPARE(window.logbook().split('\n'), QByteArray(oldEntry + imported).split('\n'));
    QCOMPARE(window.piCodes().size(), 5);
    QVERIFY(!FileImportWindow::mayImport(dialog));
    ImportingWindow::press(&dialog, u"importClose"_s);
    QCOMPARE(window.form().document().undoName(), u"Import of 2 files"_s);
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), oldEntry);
    window.trigger("menuEditRedo");
    QCOMPARE(window.logbook(), oldEntry + imported);
}

void TestImportFileWindow::aFolderIsDropped()
{
    FileImportWindow window;
    window.write(u"2025-11-21/98500-183000Z.txt"_s, xdrLog().toUtf8());
    window.write(u"2025-11-22/98500-183000Z.txt"_s, xdrLog().replace(u"11-21"_s, u"11-22"_s).toUtf8());
    window.start(oldEntry);
    importFile &dialog = window.open();
    window.drop(dialog, {QString()});
    QCOMPARE(FileImportWindow::rows(dialog),
        (QStringList {u"Add|2025-11-21/98500-183000Z.txt: 3|"_s, u"Add|2025-11-21/98500-183000Z.txt: 9|"_s,
            u"Refused|2025-11-21/98500-183000Z.txt: 11|The PI code is not four hexadecimal digits: 2025-11-21 18:41:00Z\tPI\tnone"_s,
            u"Add|2025-11-22/98500-183000Z.txt: 3|"_s, u"Add|2025-11-22/98500-183000Z.txt: 9|"_s,
            u"Refused|2025-11-22/98500-183000Z.txt: 11|The PI code is not four hexadecimal digits: 2025-11-22 18:41:00Z\tPI\tnone"_s}));
    QCOMPARE(FileImportWindow::label(dialog, u"importKind"_s), u"XDR-GTK log"_s);
}

void TestImportFileWindow::whatIsThereIsLeftOutUnlessTicked()
{
    FileImportWindow window;
    window.write(u"a.csv"_s,
        heading
            + "2010-06-12 18:30:00,D3C3,100.5,,,,,,,,,\r\n2010-06-12 18:31:00,F201,100.5,,,,,,,,,\r\n"
              "2010-06-12 18:32:00,F201,100.5,,,,,,,,,\r\n");
    window.start(oldEntry);
    importFile &dialog = window.open();
    window.drop(dialog, {u"a.csv"_s});
    QCOMPARE(FileImportWindow::rows(dialog),
        (QStringList {u"Already there|2|In the log: 12/06/2010 18:22:05 100.5 D3C3 RNE_1"_s, u"Add|3|"_s,
            u"Already there|4|The same as line 3 above"_s}));
    dialog.findChild<QSpinBox *>(u"importMinutes"_s)->setValue(7);
    QCOMPARE(FileImportWindow::rows(dialog).first(), u"Add|2|"_s);
    dialog.findChild<QSpinBox *>(u"importMinutes"_s)->setValue(10);
    FileImportWindow::chooseRow(dialog, 0);
    QTest::keyClick(dialog.findChild<QTableView *>(u"importTable"_s), Qt::Key_Space);
    QCOMPARE(FileImportWindow::rows(dialog).first().section(u'|', 0, 0), u"Add again"_s);
    FileImportWindow::chooseRow(dialog, 1);
    ImportingWindow::press(&dialog, u"importLeaveOut"_s);
    ImportingWindow::press(&dialog, u"importGo"_s);
    QCOMPARE(window.logbook(), oldEntry + "D3C3|12/06/2010 18:30:00||100.5|||||||||\r\n");
    QCOMPARE(FileImportWindow::label(dialog, u"importReport"_s),
        u"Added: 1\nCompleted: 0\nAlready there: 1\nRefused: 0\nLeft out: 1"_s);
}

void TestImportFileWindow::theMinutesAreKept()
{
    FileImportWindow window;
    window.start(oldEntry);
    importFile &dialog = window.open();
    dialog.findChild<QSpinBox *>(u"importMinutes"_s)->setValue(7);
    dialog.close();
    QCOMPARE(window.open().findChild<QSpinBox *>(u"importMinutes"_s)->value(), 7);
}

void TestImportFileWindow::onlyWhatCanComeInHasATick()
{
    FileImportWindow window;
    window.write(u"a.csv"_s, heading + "2010-06-13 18:30:00,F201,100.5,,,,,,,,,\r\nnever,,,,,,,,,,,\r\n");
    window.start(oldEntry);
    importFile &dialog = window.open();
    window.drop(dialog, {u"a.csv"_s});
    const QAbstractItemModel &model = *dialog.findChild<QTableView *>(u"importTable"_s)->model();
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.index(1, ImportModel::State).data().toString(), u"Refused"_s);
    for (int row = 0; row < model.rowCount(); ++row) {
        for (int column = 0; column < model.columnCount(); ++column) {
            QCOMPARE(model.index(row, column).data(Qt::CheckStateRole).isValid(),
                row == 0 && column == ImportModel::State);
        }
    }
}

void TestImportFileWindow::rowsCompleteWhatIsThere()
{
    FileImportWindow window;
    window.write(u"a.csv"_s, heading + "2010-06-12 18:22:00,D3C3,100.5,OTHER,F,,,,theirs,Es,,9\r\n");
    window.start(oldEntry);
    window.clickRow(1);
    importFile &dialog = window.open();
    window.drop(dialog, {u"a.csv"_s});
    QCOMPARE(FileImportWindow::rows(dialog).first(),
        u"Already there|2|In the log: 12/06/2010 18:22:05 100.5 D3C3 RNE_1. Empty there: Notes"_s);
    FileImportWindow::chooseRow(dialog, 0);
    ImportingWindow::press(&dialog, u"importComplete"_s);
    ImportingWindow::press(&dialog, u"importGo"_s);
    QCOMPARE(window.logbook(), QByteArray(oldEntry).replace("|E||RNE_1", "|E|theirs|RNE_1"));
    QCOMPARE(window.row(1).count(u"theirs"_s), 1);
    QCOMPARE(window.form().selected(), -1);
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), oldEntry);
}

void TestImportFileWindow::theFormatIsShownAndCanBeChanged()
{
    FileImportWindow window;
    window.write(u"a.csv"_s,
        CodePage(1250).encode(
            u"Date;UTC;MHz;Propa;Program;Location;kW\n3.11.25;930;98,50;Es;PR;Łódź;1,5\n"_s));
    window.start(oldEntry);
    importFile &dialog = window.open();
    window.drop(dialog, {u"a.csv"_s});
    const auto shown = [&](const QString &name) {
        return dialog.findChild<QComboBox *>(name)->currentText();
    };
    QCOMPARE(shown(u"importEncoding"_s), u"Windows-1252"_s);
    QCOMPARE(shown(u"importSeparator"_s), u"Semicolon ;"_s);
    QCOMPARE(shown(u"importDecimal"_s), u"Comma 98,5"_s);
    QCOMPARE(shown(u"importDates"_s), u"Day first 21/11/2025"_s);
    QCOMPARE(shown(u"importTimes"_s), u"UTC"_s);
    QCOMPARE(FileImportWindow::cells(dialog, 0), u"03/11/2025 09:30:00||98.50|PR|TBD|£ódŸ||1.5||Es||"_s);
    FileImportWindow::choose(dialog, u"importEncoding"_s, u"Windows-1250"_s);
    QCOMPARE(FileImportWindow::cells(dialog, 0), u"03/11/2025 09:30:00||98.50|PR|TBD|Lódz||1.5||Es||"_s);
    FileImportWindow::choose(dialog, u"importDates"_s, u"Month first 11/21/2025"_s);
    QCOMPARE(FileImportWindow::cells(dialog, 0).section(u'|', 0, 0), u"11/03/2025 09:30:00"_s);
    FileImportWindow::choose(dialog, u"importSeparator"_s, u"Comma ,"_s);
    QCOMPARE(FileImportWindow::label(dialog, u"importKind"_s), u"File with columns"_s);
    QVERIFY(!FileImportWindow::mayImport(dialog));
}

void TestImportFileWindow::columnsAreAskedOnceAndKept()
{
    FileImportWindow window;
    window.write(u"a.tsv"_s, "When\tFrequency\tPI\tMood\n2025-11-21 18:30\t98.5\td3c2\tgood\n");
    window.write(u"b.tsv"_s, "When\tFrequency\tPI\tMood\n2025-11-22 18:30\t98.5\td3c2\tbad\n");
    window.start(oldEntry);
    importFile &dialog = window.open();
    window.drop(dialog, {u"a.tsv"_s});
    QVERIFY(!FileImportWindow::mayImport(dialog));
    QCOMPARE(FileImportWindow::label(dialog, u"importProblem"_s),
        u"Say first which column of in/a.tsv is what, with the button Columns"_s);
    QTimer::singleShot(0, &dialog, [&] {
        auto *columns = dialog.findChild<QDialog *>(u"importColumns"_s);
        QVERIFY(columns);
        QCOMPARE(columns->findChild<QTableWidget *>()->accessibleName(), u"Columns"_s);
        auto *first = columns->findChild<QComboBox *>(u"use1"_s);
        QCOMPARE(first->currentText(), u"To Notes, with its name"_s);
        auto *ok = columns->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
        QVERIFY(!ok->isEnabled());
        first->setCurrentText(u"Date and time"_s);
        QVERIFY(ok->isEnabled());
        ok->click();
    });
    ImportingWindow::press(&dialog, u"importColumnsButton"_s);
    QCOMPARE(FileImportWindow::cells(dialog, 0), u"21/11/2025 18:30:00|D3C2|98.5||TBD||||Mood: good|||"_s);
    QVERIFY(FileImportWindow::mayImport(dialog));
    window.drop(dialog, {u"b.tsv"_s});
    QCOMPARE(FileImportWindow::label(dialog, u"importProblem"_s), QString());
    QCOMPARE(FileImportWindow::cells(dialog, 0), u"22/11/2025 18:30:00|D3C2|98.5||TBD||||Mood: bad|||"_s);
    QVERIFY(window.look.names().contains(u"import.ini"_s));
    QCOMPARE(window.directory.names().filter(u"import"_s), QStringList());
}

void TestImportFileWindow::aLocalTimeIsConvertedInTheChosenZone()
{
    FileImportWindow window;
    window.write(u"a.csv"_s, webServerLog(false).toUtf8());
    window.start(oldEntry);
    importFile &dialog = window.open();
    window.drop(dialog, {u"a.csv"_s});
    QCOMPARE(dialog.findChild<QComboBox *>(u"importTimes"_s)->currentText(), u"Local time"_s);
    FileImportWindow::choose(dialog, u"importZone"_s, u"Europe/Berlin"_s);
    QCOMPARE(FileImportWindow::cells(dialog, 0).section(u'|', 0, 0), u"21/07/2025 16:30:05"_s);
    FileImportWindow::choose(dialog, u"importTimes"_s, u"UTC"_s);
    QCOMPARE(FileImportWindow::cells(dialog, 0).section(u'|', 0, 0), u"21/07/2025 18:30:05"_s);
    QVERIFY(!dialog.findChild<QComboBox *>(u"importZone"_s)->isEnabled());
}

void TestImportFileWindow::refusedLinesThatCannotBeSavedAreTold()
{
    FileImportWindow window;
    importFile &dialog = withRefused(window);
    window.directory.write(u"in/refused.txt"_s, "older ones");
    test::saveAs(window.answers, window.path(u"refused.txt"_s));
    window.answers.press(QMessageBox::Yes);
    window.answers.press(QMessageBox::Ok);
    window.calls.failWrite = ENOSPC;
    ImportingWindow::press(&dialog, u"importSaveRefused"_s);
    QVERIFY(window.answers.takeTexts().join(u'\n').contains(u"Run-time error: Disk full"_s));
    QCOMPARE(window.directory.read(u"in/refused.txt"_s), "older ones"_ba);
}

void TestImportFileWindow::refusedLinesAreSavedMendedAndImported()
{
    FileImportWindow window;
    importFile &dialog = withRefused(window);
    window.answers.doing([&](QWidget *box) {
        auto *edit = box->findChild<QLineEdit *>(u"fileNameEdit"_s);
        edit->setText(window.path(u"refused.txt"_s));
        QTest::keyClick(edit, Qt::Key_Return);
    });
    ImportingWindow::press(&dialog, u"importSaveRefused"_s);
    QByteArray refused = window.directory.read(u"in/refused.txt"_s);
    QVERIFY(refused.contains("#! line 8: Frequency Empty\r\n20.11.25;1200;;F;FIP;;;;;;;;;\r\n"));
    QVERIFY(refused.contains(
        "#! line 9: The date \"32.11.2025\" is none\r\n32.11.2025;1200;90,1;F;FIP;Paris;10;;;;;;;\r\n"));
    window.write(
        u"refused.txt"_s, refused.replace("1200;;F", "1200;90,1;F").replace("32.11.2025", "22.11.2025"));
    window.drop(dialog, {u"refused.txt"_s});
    QCOMPARE(FileImportWindow::rows(dialog), (QStringList {u"Add|6|"_s, u"Add|8|"_s}));
    ImportingWindow::press(&dialog, u"importGo"_s);
    QVERIFY(window.logbook().endsWith("|20/11/2025 12:00:00||90.1||F||FIP|||||\r\n"
                                      "|22/11/2025 12:00:00||90.1|Paris|F||FIP|10||||\r\n"));
    QVERIFY(!dialog.findChild<QPushButton *>(u"importSaveRefused"_s)->isEnabled());
}

void TestImportFileWindow::moreThanTheLogHoldsIsRefusedAsAWhole()
{
    FileImportWindow window;
    QByteArray rows = heading;
    for (int i = 0; i < 32'497; ++i) {
        rows += "2010-06-12 00:00:00," + QByteArray::number(0x1000 + i, 16) + ",87."
            + QByteArray::number(i % 100) + ",,,,,,,,,\n";
    }
    window.write(u"a.csv"_s, rows);
    window.start(oldEntry);
    importFile &dialog = window.open();
    window.drop(dialog, {u"a.csv"_s});
    window.answers.press(QMessageBox::Ok);
    ImportingWindow::press(&dialog, u"importGo"_s);
    QCOMPARE(window.answers.takeTexts(),
        QStringList {
            u"Nothing was imported: these are 32497 receptions, and the log has room for 32496 more. "
            "Leave some out, or start a new logbook file in the setup."_s});
    QCOMPARE(window.logbook(), oldEntry);
    QCOMPARE(window.form().log().count(), 1);
    FileImportWindow::chooseRow(dialog, 0);
    ImportingWindow::press(&dialog, u"importLeaveOut"_s);
    ImportingWindow::press(&dialog, u"importGo"_s);
    QCOMPARE(window.form().log().count(), 32'497);
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), oldEntry);
}

void TestImportFileWindow::aFailingSaveIsToldAndNothingIsLost()
{
    FileImportWindow window;
    window.write(u"a.csv"_s, heading + "2010-06-13 18:30:00,F201,100.5,,,,,,,,,\r\n");
    window.start(oldEntry);
    importFile &dialog = window.open();
    window.drop(dialog, {u"a.csv"_s});
    window.calls.failWrite = ENOSPC;
    window.answers.press(QMessageBox::Ok);
    ImportingWindow::press(&dialog, u"importGo"_s);
    window.calls.failWrite = 0;
    const QString told = window.answers.takeTexts().join(u'\n');
    QVERIFY2(told.startsWith(u"Run-time error: Disk full"_s)
            && told.endsWith(
                u"The receptions are in the log, but not on the disk: the next save writes them."_s),
        qPrintable(told));
    QCOMPARE(window.logbook(), oldEntry);
    QCOMPARE(window.form().log().count(), 2);
    QVERIFY2(window.text("news").contains(u"new"_s), qPrintable(window.text("news")));
    const QString report = FileImportWindow::label(dialog, u"importReport"_s);
    QVERIFY2(report.startsWith(u"Added: 1\n"_s) && report.endsWith(u"\n\n"_s + told), qPrintable(report));
    QVERIFY(!FileImportWindow::mayImport(dialog));
    window.form().document().saveUnsaved();
    QCOMPARE(window.logbook(), oldEntry + "F201|13/06/2010 18:30:00||100.5|||||||||\r\n");
}

void TestImportFileWindow::anotherImportHasToEndFirst()
{
    FileImportWindow window;
    window.write(u"a.csv"_s, heading + "2010-06-13 18:30:00,F201,100.5,,,,,,,,,\r\n");
    window.spy(u"2010-06-12 18-22-05 1111 A.txt"_s);
    window.start(oldEntry);
    importFile &dialog = window.open();
    window.drop(dialog, {u"a.csv"_s});
    auto *spy = window.openSpy(u"12/06/2010"_s);
    connect(spy, &importRDSSpy::progress, &dialog, [&] {
        window.answers.press(QMessageBox::Ok);
        dialog.findChild<QPushButton *>(u"importGo"_s)->click();
        QCOMPARE(window.answers.takeTexts().last(), u"The import of RDS Spy has to end first"_s);
    });
    ImportingWindow::press(spy, u"Command3"_s);
    QCOMPARE(window.form().log().count(), 2);
    QCOMPARE(window.form().document().undoName(), u"Import of RDS Spy"_s);
    ImportingWindow::press(&dialog, u"importGo"_s);
    QCOMPARE(window.form().log().count(), 3);
}

void TestImportFileWindow::aLogThatChangesMeanwhileIsComparedAnew()
{
    FileImportWindow window;
    window.write(u"a.csv"_s, heading + "2010-06-12 18:22:00,D3C3,100.5,,,,,,,,,\r\n");
    window.start();
    importFile &dialog = window.open();
    window.drop(dialog, {u"a.csv"_s});
    QCOMPARE(FileImportWindow::rows(dialog), QStringList {u"Add|2|"_s});
    LogEntry entry;
    entry.piCode = u"D3C3"_s;
    entry.freq = u"100.5"_s;
    entry.dateTime = toDateTime(u"12/06/2010 18:22:05"_s, MonthNames(), u"a test"_s);
    window.form().document().commit({u"Add"_s, LogChange::addition(entry), {}});
    QCOMPARE(FileImportWindow::rows(dialog),
        QStringList {u"Already there|2|In the log: 12/06/2010 18:22:05 100.5 D3C3"_s});
    QVERIFY(!FileImportWindow::mayImport(dialog));
    window.trigger("menuEditUndo");
    QCOMPARE(FileImportWindow::rows(dialog), QStringList {u"Add|2|"_s});
}

void TestImportFileWindow::whatCannotBeReadIsTold()
{
    FileImportWindow window;
    window.write(u"a.bin"_s, QByteArray(1'000'000, 'x'));
    window.start(oldEntry);
    importFile &dialog = window.open();
    window.drop(dialog, {u"a.bin"_s});
    QCOMPARE(FileImportWindow::label(dialog, u"importProblem"_s),
        u"in/a.bin: line 1 is longer than 262144 characters"_s);
    window.drop(dialog, {u"none.csv"_s, u"other.csv"_s});
    QCOMPARE(FileImportWindow::label(dialog, u"importProblem"_s),
        u"in/none.csv: There is no such file; 1 more cannot be read"_s);
    QVERIFY(!FileImportWindow::mayImport(dialog));
}

void TestImportFileWindow::otherImportsTellWhatWasThere()
{
    FileImportWindow window;
    window.directory.write(u"dx/20100612.txt"_s,
        "  Freq PI   PS       Time    ITU Station|Remarks\r\n"
        " 100.5 D3C3 RNE_1    1823 05 E   RNE, Bilbao|\r\n"
        "  98.1 C2A2 NARODNI  1610 05 HRV NARODNI, Biokovo|\r\n");
    window.spy(u"2010-06-12 18-22-05 D3C3 RNE_1.txt"_s);
    window.start(oldEntry);
    window.answers.press(QMessageBox::Yes);
    window.answers.press(QMessageBox::Ok);
    window.answers.press(QMessageBox::No);
    ImportingWindow::press(window.openDx(), u"OKButton"_s);
    QCOMPARE(window.text("status"), u"Import of 20100612.txt: 2 imported, 1 already there"_s);
    QVERIFY(window.answers.takeTexts().contains(u"Imported 2 logs"_s));
    auto *spy = window.openSpy(u"12/06/2010"_s);
    auto *frequency = spy->findChild<QLineEdit *>(u"Text1"_s);
    frequency->selectAll();
    QTest::keyClicks(frequency, u"100.5"_s);
    window.answers.press(QMessageBox::Ok);
    ImportingWindow::press(spy, u"Command3"_s);
    QCOMPARE(window.text("status"), u"RDS Spy import: 1 imported, 0 refused, 1 already there"_s);
}

QTEST_MAIN(TestImportFileWindow)
#include "tst_importfile.moc"
