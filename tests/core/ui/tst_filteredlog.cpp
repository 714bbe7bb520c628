#include "geo/ui/mapdock.h"
#include "loggingwindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

const QByteArray malaga = "E201|12/06/2010 10:00:00|Es|90.3|M\xE1laga|E|jingle|RNE_CLAS|10|1800|||\r\n";
const QByteArray madrid = "E202|12/06/2010 10:30:00|Es|91.1|Madrid|E||RNE_1|10|1300|||\r\n";
const QByteArray puy = "F201|12/06/2010 11:00:00|Tropo|90.0|Le\xA0Puy|F||FIP|||||\r\n";

void selectAll(MainWindow &window)
{
    window.grid().setFocus();
    window.key(Qt::Key_A, Qt::ControlModifier);
}

void clickLink(MainWindow &window)
{
    QTest::mouseClick(window.find<QToolButton>("statusLink"), Qt::LeftButton);
}

// The window that changes all receptions, about to give them a text in this field.
QDialog &editAll(MainWindow &window, const QString &field, const QString &text)
{
    selectAll(window);
    window.key(Qt::Key_F2);
    auto *dialog = window.find<QDialog>("editMany");
    dialog->findChild<QCheckBox *>(u"tick"_s + field)->setChecked(true);
    dialog->findChild<QLineEdit *>(u"value"_s + field)->setText(text);
    return *dialog;
}

// Changes the unit of distances through the setup.
void measureInMiles(MainWindow &window)
{
    window.trigger("menuSetup");
    auto *setup = window.find<QWidget>("Form2");
    setup->findChild<QAbstractButton *>(u"Option2"_s)->click();
    setup->findChild<QAbstractButton *>(u"Command1"_s)->click();
}

} // namespace

/// What is chosen, typed and told while the filter hides a part of the log, through the window.
class TestFilteredLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsTypedOutlivesAChangeOfMany();
    void chosenRowsStayChosen();
    void chosenRowsComeBackWhileAFilterIsTyped();
    void whatIsHiddenIsForgottenWhenOthersAreChosen();
    void theMarkedRowStaysTheSameReception();
    void theUnitOfTheSetupRulesTheFilter();
    void theUnitLeavesWhatTheMapShows();
    void aNumberThatIsGivenAgainIsNotEdited();
    void oneWindowEditsMany();
    void aCellWithOtherBlanksIsQuoted();
    void aKeptCopyIsToldFirst();
    void whatTheMapShowsIsMarkedAndEscShowsAll();
    void whatAChangeOfManyHidesIsTold();
    void theMarkComesBackToTheReceptionInTheForm();
    void showLeavesTheMarkWhenNothingIsThereToBeShown();
};

void TestFilteredLog::whatIsTypedOutlivesAChangeOfMany()
{
    for (const bool deletes : {true, false}) {
        MainWindow window;
        window.start(malaga + madrid + puy);
        window.clickRow(1);
        window.type("Text3", u"typed"_s);
        if (deletes) {
            selectAll(window);
            window.answers.press(QMessageBox::Yes);
            window.click("Command15");
        } else {
            QTest::keyClick(&editAll(window, u"Uid"_s, u"7"_s), Qt::Key_Return);
        }
        QVERIFY(window.logbook() != malaga + madrid + puy);
        QCOMPARE(window.text("status"), u"Changes to 90.3 RNE_CLAS were not stored"_s);
        clickLink(window);
        QCOMPARE(window.text("Text3"), u"typed"_s);
    }
}

void TestFilteredLog::chosenRowsStayChosen()
{
    MainWindow window;
    window.start(malaga + madrid + puy);
    auto *box = window.find<QLineEdit>("filterText");
    selectAll(window);
    QCOMPARE(window.text("chosenCount"), u"3 chosen"_s);
    box->setText(u"itu:E"_s);
    QCOMPARE(window.grid().chosenEntries(), (std::vector<qint32> {0, 1}));
    QCOMPARE(window.text("chosenCount"), u"2 chosen"_s);
    box->setText(u"pi:E202"_s);
    QCOMPARE(window.grid().chosenEntries(), std::vector<qint32> {1});
    QCOMPARE(window.text("chosenCount"), QString());
    box->setText(u"itu:G"_s);
    QCOMPARE(window.grid().chosenCount(), 0);
    QVERIFY(!window.enabled("Command15"));
}

void TestFilteredLog::chosenRowsComeBackWhileAFilterIsTyped()
{
    MainWindow window;
    window.start(malaga + madrid + puy);
    selectAll(window);
    // Some of its beginnings show no row at all.
    window.type("filterText", u"itu:E"_s);
    QCOMPARE(window.grid().chosenEntries(), (std::vector<qint32> {0, 1}));
    window.key(Qt::Key_Escape);
    QCOMPARE(window.grid().chosenEntries(), (std::vector<qint32> {0, 1, 2}));
    // What is hidden is not changed with the others.
    window.type("filterText", u"madrid"_s);
    QCOMPARE(window.text("chosenCount"), QString());
    window.key(Qt::Key_Escape);
    window.type("filterText", u"itu:E"_s);
    window.answers.press(QMessageBox::Yes);
    window.click("Command15");
    QCOMPARE(window.answers.takeTexts(), QStringList {u"Delete 2 receptions?"_s});
    QCOMPARE(window.logbook(), puy);
}

void TestFilteredLog::whatIsHiddenIsForgottenWhenOthersAreChosen()
{
    MainWindow window;
    window.start(malaga + madrid + puy);
    auto *box = window.find<QLineEdit>("filterText");
    selectAll(window);
    box->setText(u"itu:F"_s);
    window.clickRow(1);
    box->clear();
    QCOMPARE(window.grid().chosenEntries(), std::vector<qint32> {2});
    selectAll(window);
    box->setText(u"itu:E"_s);
    selectAll(window);
    box->clear();
    QCOMPARE(window.grid().chosenEntries(), (std::vector<qint32> {0, 1}));
    // So it is when the log was changed.
    selectAll(window);
    box->setText(u"itu:E"_s);
    window.trigger("menuEditMany");
    auto *dialog = window.find<QDialog>("editMany");
    dialog->findChild<QCheckBox *>(u"tickUid"_s)->setChecked(true);
    dialog->findChild<QLineEdit *>(u"valueUid"_s)->setText(u"7"_s);
    QTest::keyClick(dialog, Qt::Key_Return);
    box->clear();
    QCOMPARE(window.grid().chosenEntries(), (std::vector<qint32> {0, 1}));
}

void TestFilteredLog::theMarkedRowStaysTheSameReception()
{
    MainWindow window;
    window.start(malaga + madrid + puy);
    window.clickRow(2);
    window.type("Text3", u"typed"_s);
    window.find<QLineEdit>("filterText")->setText(u"madrid"_s);
    QCOMPARE(window.grid().row(), 1);
    QCOMPARE(window.form().selected(), 1);
    QCOMPARE(window.text("Text3"), u"typed"_s);
    window.click("Command3");
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QVERIFY(window.logbook().contains("typed"));
    // No other row takes the mark of the one that is hidden.
    window.find<QLineEdit>("filterText")->setText(QString());
    window.clickRow(3);
    window.find<QLineEdit>("filterText")->setText(u"itu:E"_s);
    QCOMPARE(window.grid().row(), 0);
    QCOMPARE(window.grid().chosenCount(), 0);
    QCOMPARE(window.form().selected(), 2);
}

void TestFilteredLog::theUnitOfTheSetupRulesTheFilter()
{
    MainWindow window;
    window.directory.write(u"LOGBOOK.INI"_s, "AS_MILES=FALSE\r\n");
    window.start(malaga + madrid + puy);
    window.type("filterText", u"km>2000"_s);
    QCOMPARE(window.piCodes(), QStringList());
    measureInMiles(window);
    QCOMPARE(window.piCodes(), (QStringList {u"E201"_s, u"E202"_s}));
    QCOMPARE(window.text("filterCount"), u"2 of 3"_s);
}

void TestFilteredLog::theUnitLeavesWhatTheMapShows()
{
    MainWindow window;
    window.directory.write(u"LOGBOOK.INI"_s, "AS_MILES=FALSE\r\n");
    window.start(malaga + madrid + puy);
    Q_EMIT window.find<MapDock>("mapDock")->unplacedWanted({2});
    measureInMiles(window);
    QCOMPARE(window.piCodes(), QStringList {u"F201"_s});
}

void TestFilteredLog::aNumberThatIsGivenAgainIsNotEdited()
{
    MainWindow window;
    window.start(malaga);
    (void)addStation(window);
    QDialog &dialog = editAll(window, u"Uid"_s, u"7"_s);
    QCOMPARE(dialog.windowTitle(), u"Edit 2 receptions"_s);
    window.trigger("menuEditUndo");
    QCOMPARE(dialog.windowTitle(), u"Edit 1 reception"_s);
    const QByteArray added = addStation(window, u"F299"_s);
    QTest::keyClick(&dialog, Qt::Key_Return);
    QCOMPARE(window.logbook(), QByteArray(malaga).replace("|1800|||", "|1800||7|") + added);
}

void TestFilteredLog::oneWindowEditsMany()
{
    MainWindow window;
    window.start("");
    (void)addStation(window);
    selectAll(window);
    window.trigger("menuEditMany");
    window.trigger("menuEditMany");
    const auto open = [&] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return window.form().findChildren<QDialog *>(u"editMany"_s).size();
    };
    QCOMPARE(open(), 1);
    // Nothing is left to edit.
    window.trigger("menuEditUndo");
    QCOMPARE(open(), 0);
}

void TestFilteredLog::aCellWithOtherBlanksIsQuoted()
{
    MainWindow window;
    window.start(malaga + puy);
    const QModelIndex cell = window.grid().model()->index(1, static_cast<int>(GridColumn::Transmitter));
    QTimer::singleShot(0, &window.form(), [&] {
        auto *menu = window.find<QMenu>("gridMenu");
        const QList<QAction *> actions = menu->actions();
        for (QAction *action : actions) {
            if (action->text().contains(u"Cell"_s)) {
                action->trigger();
            }
        }
        menu->close();
    });
    Q_EMIT window.grid().customContextMenuRequested(window.grid().visualRect(cell).center());
    QCOMPARE(window.text("filterText"), u"site:\"Le\u00A0Puy\""_s);
    QCOMPARE(window.piCodes(), QStringList {u"F201"_s});
}

void TestFilteredLog::aKeptCopyIsToldFirst()
{
    MainWindow window;
    window.start(malaga);
    window.type("filterText", u"itu:E"_s);
    window.directory.write(u"RDSLog.log"_s, malaga + madrid);
    (void)addStation(window);
    QCOMPARE(window.piCodes(), QStringList {u"E201"_s});
    const QString status = window.text("status");
    QVERIFY2(status.startsWith(u"The file that was there before is kept as "_s), qPrintable(status));
}

void TestFilteredLog::whatTheMapShowsIsMarkedAndEscShowsAll()
{
    MainWindow window;
    window.start(malaga + madrid + puy);
    auto *clear = window.find<QToolButton>("filterClear");
    const auto *count = window.find<QLabel>("filterCount");
    const auto showSome = [&] { Q_EMIT window.find<MapDock>("mapDock")->unplacedWanted({2}); };
    showSome();
    QCOMPARE(window.piCodes(), QStringList {u"F201"_s});
    QVERIFY(clear->isEnabled());
    QVERIFY(count->autoFillBackground());
    window.key(Qt::Key_K, Qt::ControlModifier);
    window.key(Qt::Key_Escape);
    QCOMPARE(window.grid().rows(), 4);
    QVERIFY(!clear->isEnabled());
    QVERIFY(!count->autoFillBackground());
    showSome();
    QTest::mouseClick(clear, Qt::LeftButton);
    QCOMPARE(window.grid().rows(), 4);
    // A filter that is typed rules again.
    showSome();
    window.type("filterText", u"itu:E"_s);
    QCOMPARE(window.piCodes(), (QStringList {u"E201"_s, u"E202"_s}));
}

void TestFilteredLog::whatAChangeOfManyHidesIsTold()
{
    MainWindow window;
    window.start(malaga + madrid + puy);
    window.type("filterText", u"itu:E"_s);
    selectAll(window);
    window.key(Qt::Key_F2);
    auto *dialog = window.find<QDialog>("editMany");
    dialog->findChild<QCheckBox *>(u"tickCountry"_s)->setChecked(true);
    dialog->findChild<QComboBox *>(u"valueCountry"_s)->setEditText(u"POR"_s);
    QTest::keyClick(dialog, Qt::Key_Return);
    QCOMPARE(window.grid().rows(), 1);
    QCOMPARE(window.text("status"), u"Done: Edit 2 receptions, 2 of them the filter hides"_s);
    // What the undo brings back is shown, what the redo takes is hidden.
    window.trigger("menuEditUndo");
    QCOMPARE(window.text("status"), u"Undone: Edit 2 receptions"_s);
    window.trigger("menuEditRedo");
    QCOMPARE(window.text("status"), u"Redone: Edit 2 receptions, 2 of them the filter hides"_s);
    clickLink(window);
    QCOMPARE(window.grid().rows(), 4);
    QCOMPARE(window.grid().row(), 1);
    // Deleted ones are no news.
    window.type("filterText", u"pi:E"_s);
    selectAll(window);
    window.answers.press(QMessageBox::Yes);
    window.click("Command15");
    QCOMPARE(window.text("status"), u"Done: Delete 2 receptions"_s);
}

void TestFilteredLog::theMarkComesBackToTheReceptionInTheForm()
{
    MainWindow window;
    window.start(malaga + madrid + puy);
    window.clickRow(2);
    // Some of its beginnings show no row at all.
    window.type("filterText", u"itu:E"_s);
    QCOMPARE(window.grid().row(), 2);
    QCOMPARE(window.form().selected(), 1);
}

void TestFilteredLog::showLeavesTheMarkWhenNothingIsThereToBeShown()
{
    MainWindow window;
    window.start(malaga + madrid);
    window.type("filterText", u"itu:E"_s);
    (void)addStation(window);
    QVERIFY2(
        window.text("status").endsWith(u", which the filter hides"_s), qPrintable(window.text("status")));
    // Other work than the menu's, which says nothing.
    window.form().document().undo();
    window.grid().setRow(1);
    clickLink(window);
    QCOMPARE(window.grid().rows(), 3);
    QCOMPARE(window.grid().row(), 1);
}

QTEST_MAIN(TestFilteredLog)
#include "tst_filteredlog.moc"
