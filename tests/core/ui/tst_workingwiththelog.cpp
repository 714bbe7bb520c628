#include "loggingwindow.h"

#include "core/logfilter.h"
#include "support/combos.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QDockWidget>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScreen>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

const QByteArray spain = "E201|12/06/2010 10:00:00|Es|90.3|M\xE1laga|E|jingle|RNE_CLAS|10|1800|||\r\n";
const QByteArray france = "F201|12/06/2010 11:00:00|Tropo|90.0|Brest|F||FIP|||fml=sent#|501|\r\n";
const QByteArray home = "HOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\nAS_MILES=FALSE\r\n";
const QByteArray places = "M\xE1laga|E|36.7|-4.4||\r\nBrest|F|48.4|-4.5||\r\n";

// True when the menu of kept filters has this one.
bool hasKeptFilter(MainWindow &window, const QString &name)
{
    QMenu *menu = window.find<QToolButton>("filterKept")->menu();
    Q_EMIT menu->aboutToShow();
    const QList<QAction *> actions = menu->actions();
    return std::ranges::any_of(actions, [&](const QAction *action) { return action->text() == name; });
}

void selectAll(MainWindow &window)
{
    window.grid().setFocus();
    window.key(Qt::Key_A, Qt::ControlModifier);
}

} // namespace

/// Filter, columns, many at once, docks and the look as it was left, through the window.
class TestWorkingWithTheLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFilterShowsWhatFits();
    void theFilterNeverRulesFindAndSearches();
    void anAddedReceptionThatTheFilterHidesIsToldWithALink();
    void theListsHoldWhatIsInTheLog();
    void manyAreDeletedAfterOneQuestionAndComeBack();
    void manyAreEditedAtOnce();
    void chosenRowsAreCopied();
    void columnsAreShownAndHidden();
    void theLookIsKept();
    void aResetLeavesTheKeptFilters();
    void keptFiltersOfEarlierProgramsAreThere();
    void theDocksAreKept();
    void theReceiverLogsThroughTheSameDoor();
    void theMapFollowsTheLog();
};

void TestWorkingWithTheLog::theFilterShowsWhatFits()
{
    MainWindow window;
    window.start(spain + france);
    QCOMPARE(window.text("filterCount"), u"2"_s);
    window.key(Qt::Key_K, Qt::ControlModifier);
    QCOMPARE(window.form().focusWidget()->objectName(), u"filterText"_s);
    window.type("filterText", u"malaga"_s);
    QCOMPARE(window.piCodes(), QStringList {u"E201"_s});
    QCOMPARE(window.text("filterCount"), u"1 of 2"_s);
    window.type("filterText", u"-itu:E"_s);
    QCOMPARE(window.piCodes(), QStringList {u"F201"_s});
    window.key(Qt::Key_Escape);
    QCOMPARE(window.piCodes(), (QStringList {u"E201"_s, u"F201"_s}));
    QCOMPARE(window.text("filterCount"), u"2"_s);
    // What cannot be read leaves the grid as it is.
    window.find<QLineEdit>("filterText")->setText(u"freq>x"_s);
    QCOMPARE(window.grid().rows(), 3);
}

void TestWorkingWithTheLog::theFilterNeverRulesFindAndSearches()
{
    MainWindow window;
    window.start(spain + france);
    window.type("filterText", u"pi:E"_s);
    window.type("Text1", u"F201"_s);
    window.click("Command4");
    QCOMPARE(window.list().count(), 1);
    window.answers.type(u"F201"_s);
    window.grid().setRow(1);
    window.trigger("menuToolsFind");
    QCOMPARE(window.form().selected(), 1);
    QCOMPARE(window.grid().rows(), 3);
    QCOMPARE(window.text("filterText"), QString());
    QCOMPARE(window.text("status"), u"The filter was cleared to show it"_s);
    window.grid().setRow(1);
    window.key(Qt::Key_F3);
    QCOMPARE(window.form().selected(), 1);
    QCOMPARE(window.grid().row(), 2);
}

void TestWorkingWithTheLog::anAddedReceptionThatTheFilterHidesIsToldWithALink()
{
    MainWindow window;
    window.start(spain);
    window.type("filterText", u"itu:E"_s);
    (void)addStation(window);
    QCOMPARE(window.piCodes(), QStringList {u"E201"_s});
    QCOMPARE(window.text("status"), u"Added 88.2 F201, which the filter hides"_s);
    auto *link = window.find<QToolButton>("statusLink");
    QCOMPARE(link->text(), u"Show"_s);
    QTest::mouseClick(link, Qt::LeftButton);
    QCOMPARE(window.piCodes(), (QStringList {u"E201"_s, u"F201"_s}));
    QCOMPARE(window.grid().row(), 2);
}

void TestWorkingWithTheLog::theListsHoldWhatIsInTheLog()
{
    MainWindow window;
    window.start(spain + france);
    const auto offered = [&](QAnyStringView name) { return itemsOf(*window.find<QComboBox>(name)); };
    QCOMPARE(offered("filterMode"), (QStringList {u"All"_s, u"Es"_s, u"Tropo"_s}));
    QCOMPARE(offered("filterCountry"), (QStringList {u"All"_s, u"E"_s, u"F"_s}));
    QCOMPARE(offered("filterYear"), (QStringList {u"All"_s, u"2010"_s}));
    window.clickRow(2);
    window.type("Text2", u"12/06/2011 11:00:00"_s);
    window.click("Command3");
    QCOMPARE(offered("filterYear").size(), 3);
    window.find<QComboBox>("filterFmlist")->setCurrentText(u"Sent"_s);
    QCOMPARE(window.piCodes(), QStringList {u"F201"_s});
}

void TestWorkingWithTheLog::manyAreDeletedAfterOneQuestionAndComeBack()
{
    MainWindow window;
    window.start(spain + france);
    window.clickRow(1);
    selectAll(window);
    window.answers.press(QMessageBox::No);
    window.click("Command15");
    QCOMPARE(window.answers.takeTexts(), QStringList {u"Delete 2 receptions?"_s});
    QCOMPARE(window.logbook(), spain + france);
    window.answers.press(QMessageBox::Yes);
    window.click("Command15");
    QCOMPARE(window.logbook(), QByteArray(""));
    window.trigger("menuEditUndo");
    QCOMPARE(window.text("status"), u"Undone: Delete 2 receptions"_s);
    QCOMPARE(window.logbook(), spain + france);
}

void TestWorkingWithTheLog::manyAreEditedAtOnce()
{
    MainWindow window;
    window.start(spain + france);
    selectAll(window);
    window.key(Qt::Key_F2);
    auto *dialog = window.find<QDialog>("editMany");
    dialog->findChild<QCheckBox *>(u"tickProp"_s)->setChecked(true);
    dialog->findChild<QComboBox *>(u"valueProp"_s)->setEditText(u"Tropo"_s);
    QTRY_VERIFY(dialog->findChild<QLabel *>(u"effect"_s)->text().contains(u"Es (1) \u2192 Tropo"_s));
    QTest::keyClick(dialog, Qt::Key_Return);
    QCOMPARE(window.logbook(), QByteArray(spain).replace("|Es|", "|Tropo|") + france);
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), spain + france);
}

void TestWorkingWithTheLog::chosenRowsAreCopied()
{
    MainWindow window;
    window.start(spain + france);
    selectAll(window);
    window.key(Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines[0].startsWith(u"Date/Time\tPI Code\tFreq\t"_s));
    QCOMPARE(lines[2].split(u'\t').value(10), u"Sent"_s);
}

void TestWorkingWithTheLog::columnsAreShownAndHidden()
{
    MainWindow window;
    window.directory.write(u"LOGBOOK.INI"_s, home);
    window.start(spain + france, places);
    const QHeaderView &header = *window.grid().horizontalHeader();
    QCOMPARE(header.count() - header.hiddenSectionCount(), gridColumnCount);
    const QList<QAction *> ticks = window.find<QMenu>("menuViewColumns")->actions();
    QCOMPARE(ticks.value(1)->text(), u"PI Code"_s);
    ticks.value(1)->trigger();
    QVERIFY(window.grid().isColumnHidden(1));
    ticks.value(static_cast<int>(GridColumn::Locator))->trigger();
    QVERIFY(!window.grid().isColumnHidden(static_cast<int>(GridColumn::Locator)));
    QCOMPARE(window.grid().text(1, GridColumn::Locator), u"IM76TQ"_s);
    QCOMPARE(window.grid().text(2, GridColumn::Muf), QString());
    QVERIFY(!window.grid().text(1, GridColumn::Muf).isEmpty());
    ticks.last()->trigger();
    QVERIFY(!window.grid().isColumnHidden(1));
    QVERIFY(window.grid().isColumnHidden(static_cast<int>(GridColumn::Locator)));
}

void TestWorkingWithTheLog::theLookIsKept()
{
    MainWindow window;
    window.start(spain + france);
    window.grid().setColumnHidden(1, true);
    window.clickHeading(2);
    window.form().close();
    window.start();
    QVERIFY(window.grid().isColumnHidden(1));
    QCOMPARE(window.grid().text(1, GridColumn::Freq), u"90.0"_s);
    QVERIFY(!window.directory.names().contains(u"windows.ini"_s));
    window.trigger("menuViewReset");
    QVERIFY(!window.grid().isColumnHidden(1));
    QCOMPARE(window.grid().text(1, GridColumn::Freq), u"90.3"_s);
}

void TestWorkingWithTheLog::aResetLeavesTheKeptFilters()
{
    MainWindow window;
    const auto keptFilters = [&] {
        window.start(spain + france);
        return hasKeptFilter(window, u"Spain"_s);
    };
    window.start(spain + france);
    window.type("filterText", u"itu:E"_s);
    Q_EMIT window.find<QToolButton>("filterKept")->menu()->aboutToShow();
    window.answers.type(u"Spain"_s);
    window.trigger("filterSave");
    window.trigger("menuViewReset");
    window.form().close();
    QVERIFY(keptFilters());
    // A file of the look that cannot be understood takes no filter along.
    window.form().close();
    window.look.write(u"windows.ini"_s, "[General]\nversion=7\n");
    QVERIFY(keptFilters());
    QVERIFY(keptFilters());
}

void TestWorkingWithTheLog::keptFiltersOfEarlierProgramsAreThere()
{
    MainWindow window;
    window.look.write(
        u"windows.ini"_s, "[General]\nversion=1\n\n[KeptFilters]\n1\\name=Spain\n1\\text=itu:E\nsize=1\n");
    window.start(spain + france);
    QVERIFY(hasKeptFilter(window, u"Spain"_s));
    window.trigger("menuViewReset");
    window.form().close();
    window.start(spain + france);
    QVERIFY(hasKeptFilter(window, u"Spain"_s));
}

void TestWorkingWithTheLog::theDocksAreKept()
{
    MainWindow window;
    const auto dock = [&](const QString &name) { return window.find<QDockWidget>(name); };
    window.start(spain + france);
    window.key(Qt::Key_F7);
    window.form().addDockWidget(Qt::LeftDockWidgetArea, dock(u"mapDock"_s));
    window.key(Qt::Key_F8);
    dock(u"receiverDock"_s)->setFloating(true);
    const QSize floats = dock(u"receiverDock"_s)->size() + QSize(60, 40);
    dock(u"receiverDock"_s)->resize(floats);
    window.form().resize(1400, 800);
    QCoreApplication::processEvents();
    window.form().resizeDocks({dock(u"mapDock"_s)}, {480}, Qt::Horizontal);
    QCoreApplication::processEvents();
    QCOMPARE(dock(u"mapDock"_s)->width(), 480);
    window.form().close();
    window.start();
    QVERIFY(dock(u"mapDock"_s)->isVisible());
    QCOMPARE(window.form().dockWidgetArea(dock(u"mapDock"_s)), Qt::LeftDockWidgetArea);
    QVERIFY(dock(u"receiverDock"_s)->isVisible());
    QVERIFY(dock(u"receiverDock"_s)->isFloating());
    QCOMPARE(dock(u"mapDock"_s)->width(), 480);
    QCOMPARE(dock(u"receiverDock"_s)->size(), floats);
    QVERIFY(window.form().screen()->availableGeometry().intersects(dock(u"receiverDock"_s)->geometry()));
    window.trigger("menuViewReset");
    for (const QString &name : {u"mapDock"_s, u"receiverDock"_s}) {
        QVERIFY(!dock(name)->isVisible());
        QVERIFY(!dock(name)->isFloating());
        QCOMPARE(window.form().dockWidgetArea(dock(name)), Qt::RightDockWidgetArea);
    }
    window.form().close();
    window.start();
    QVERIFY(!dock(u"mapDock"_s)->isVisible());
}

void TestWorkingWithTheLog::theReceiverLogsThroughTheSameDoor()
{
    MainWindow window;
    window.start(spain);
    auto *dock = window.find<QDockWidget>("receiverDock");
    QVERIFY(!dock->isVisible());
    window.key(Qt::Key_F8);
    QVERIFY(dock->isVisible());
    QCOMPARE(window.text("receiverState"), u"not connected"_s);
    // Nothing is heard: nothing is logged.
    window.key(Qt::Key_F6);
    QCOMPARE(window.logbook(), spain);
    window.key(Qt::Key_F8);
    QVERIFY(!dock->isVisible());
}

void TestWorkingWithTheLog::theMapFollowsTheLog()
{
    MainWindow window;
    window.directory.write(u"LOGBOOK.INI"_s, home);
    window.start(spain + france, places);
    auto *dock = window.find<QDockWidget>("mapDock");
    QVERIFY(!dock->isVisible());
    window.key(Qt::Key_F7);
    QVERIFY(dock->isVisible());
    const QImage before = dock->grab().toImage();
    window.clickRow(1);
    QVERIFY(dock->grab().toImage() != before);
}

QTEST_MAIN(TestWorkingWithTheLog)
#include "tst_workingwiththelog.moc"
