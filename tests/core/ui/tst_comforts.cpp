#include "loggingwindow.h"
#include "ui/menuicons.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QClipboard>
#include <QCompleter>
#include <QDialog>
#include <QDockWidget>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

const QByteArray spain = "E201|12/06/2010 10:00:00|Es|90.3|M\xE1laga|E||RNE_CLAS|10|1800|||\r\n";
const QByteArray later = "E201|13/06/2010 10:00:00|Es|90.3|Madrid|E||RNE_3|10|1800|||\r\n";
const QByteArray france = "F201|12/06/2010 11:00:00|Tropo|90.0|Brest|F||FIP||||501|\r\n";

// What the field's list offers now; nothing while it is closed.
QStringList offered(MainWindow &window, QAnyStringView name)
{
    const auto *completer = window.find<QLineEdit>(name)->findChild<QCompleter *>();
    QStringList texts;
    if (completer && completer->popup()->isVisible()) {
        for (int i = 0; i < completer->completionModel()->rowCount(); ++i) {
            texts += completer->completionModel()->index(i, 0).data().toString();
        }
    }
    return texts;
}

// A key to the open list, which has it before the field.
void listKey(MainWindow &window, QAnyStringView name, Qt::Key key)
{
    QTest::keyClick(window.find<QLineEdit>(name)->findChild<QCompleter *>()->popup(), key);
}

} // namespace

/// What makes the work with the log comfortable, through the window.
class TestComforts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFormSaysHowManyAreChosen();
    void theUsualSpellingOfAFrequencyIsTold_data();
    void theUsualSpellingOfAFrequencyIsTold();
    void aFrequencyThatNobodyTouchedStays();
    void quickAddTellsTheFrequency();
    void theClockRunsInUtc();
    void theRdsNameIsCompletedByThePiCode();
    void theSiteIsCompletedByTheCountry();
    void aCompletionIsChosenWithEnterAlone();
    void everyWindowSaysWhatItIsAndClosesOnEsc_data();
    void everyWindowSaysWhatItIsAndClosesOnEsc();
    void aFloatingDockClosesOnEsc();
    void aDialogOpensWhereItWas();
    void aWindowNeverOpensOffTheScreen();
    void theWidthOfTheNotesIsTheUsers();
    void statisticsFollowWhatIsShown();
    void everyMenuEntryHasItsIconAndItsKey();
    void ownIconsFollowThePalette();
    void theFirstStartSaysWhatToDo();
    void anEmptyGridSaysTheReason();
    void aResultHasItsMenu();
};

void TestComforts::theFormSaysHowManyAreChosen()
{
    MainWindow window;
    window.start(spain + later + france);
    auto *count = window.find<QLabel>("chosenCount");
    window.clickRow(1);
    QVERIFY(!count->isVisible());
    QTest::keyClick(&window.grid(), Qt::Key_Down, Qt::ShiftModifier);
    QVERIFY(count->isVisible());
    QCOMPARE(count->text(), u"2 chosen"_s);
    // The current one is in the form.
    QCOMPARE(window.text("Text1"), window.grid().text(2, GridColumn::PiCode));
    window.grid().setFocus();
    window.key(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(count->text(), u"3 chosen"_s);
    window.clickRow(2);
    QVERIFY(!count->isVisible());
}

void TestComforts::theUsualSpellingOfAFrequencyIsTold_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("usual");
    QTest::newRow("without point") << u"876"_s << u"87.6"_s;
    QTest::newRow("without point, two decimals") << u"8765"_s << u"87.65"_s;
    QTest::newRow("over a hundred") << u"1047"_s << u"104.7"_s;
    QTest::newRow("comma") << u"87,6"_s << u"87.6"_s;
    QTest::newRow("needless zero") << u"87.60"_s << u"87.6"_s;
    QTest::newRow("as it is usual") << u"87.6"_s << u"87.6"_s;
    QTest::newRow("one decimal stays") << u"90.0"_s << u"90.0"_s;
    QTest::newRow("whole number") << u"98"_s << u"98"_s;
    QTest::newRow("no frequency") << u"12345678"_s << u"12345678"_s;
    QTest::newRow("beyond the band") << u"1081"_s << u"1081"_s;
    QTest::newRow("two points") << u"87.6.1"_s << u"87.6.1"_s;
    QTest::newRow("words") << u"about 90"_s << u"about 90"_s;
}

void TestComforts::theUsualSpellingOfAFrequencyIsTold()
{
    QFETCH(QString, typed);
    QFETCH(QString, usual);
    MainWindow window;
    window.start(spain);
    window.click("Command2");
    window.fill({u"Text9"_s, typed, u"Text1"_s, u"F201"_s, u"Combo3"_s, u"F"_s});
    auto *told = window.find<QLabel>("freqStored");
    QCOMPARE(told->isVisible(), typed != usual);
    QCOMPARE(told->text(),
        typed == usual ? QString() : u"Frequency is stored as typed, %1; usual is %2"_s.arg(typed, usual));
    // Nothing is changed behind the user's back.
    QCOMPARE(window.text("Text9"), typed);
    window.click("Command1");
    QVERIFY2(window.logbook().contains(QByteArray("||" + typed.toLatin1() + "||F|")),
        window.logbook().constData());
}

void TestComforts::aFrequencyThatNobodyTouchedStays()
{
    MainWindow window;
    const QByteArray odd = QByteArray(spain).replace("|90.3|", "|90,30|");
    window.start(odd);
    window.clickRow(1);
    QVERIFY(!window.find<QLabel>("freqStored")->isVisible());
    window.type("Text6", u"20"_s);
    window.click("Command3");
    QCOMPARE(window.logbook(), QByteArray(odd).replace("|10|", "|20|"));
}

void TestComforts::quickAddTellsTheFrequency()
{
    MainWindow window;
    window.start(spain);
    window.key(Qt::Key_F5);
    auto *quick = window.find<QDialog>("Dialog1");
    auto *freq = quick->findChild<QLineEdit *>(u"Text1"_s);
    freq->selectAll();
    QTest::keyClicks(freq, u"1047"_s);
    QCOMPARE(quick->findChild<QLabel *>(u"freqStored"_s)->text(), u"stored so; usual is 104.7"_s);
    QTest::keyClicks(quick->findChild<QLineEdit *>(u"Text3"_s), u"FIP"_s);
    quick->findChild<QPushButton *>(u"OKButton"_s)->click();
    QCOMPARE(window.grid().text(2, GridColumn::Freq), u"1047"_s);
}

void TestComforts::theClockRunsInUtc()
{
    MainWindow window;
    window.start(spain);
    const auto *clock = window.find<QLabel>("utcClock");
    QVERIFY(clock->isVisible());
    const auto seconds = [clock] { return QTime::fromString(clock->text(), u"HH:mm:ss 'UTC'"_s); };
    const QTime before = seconds();
    QVERIFY2(before.isValid(), qPrintable(clock->text()));
    const int late = before.secsTo(QDateTime::currentDateTimeUtc().time());
    QVERIFY(late <= 2 || late > 86390 || late < -86390);
    QTRY_VERIFY(seconds() != before);
    const auto *beside = window.find<QLabel>("LabelUtc");
    QCOMPARE(beside->text(), u"UTC"_s);
    const auto *field = window.find<QLineEdit>("Text2");
    QCOMPARE(beside->mapTo(&window.form(), beside->rect().center()).y(),
        field->mapTo(&window.form(), field->rect().center()).y());
}

void TestComforts::theRdsNameIsCompletedByThePiCode()
{
    MainWindow window;
    window.start(spain + later + france);
    window.click("Command2");
    window.type("Text1", u"e201"_s);
    window.type("Text8", u"r"_s);
    QCOMPARE(offered(window, "Text8"), (QStringList {u"RNE_3"_s, u"RNE_CLAS"_s}));
    // Nothing changes unasked.
    QCOMPARE(window.text("Text8"), u"r"_s);
    window.type("Text8", u"clas"_s);
    QCOMPARE(offered(window, "Text8"), QStringList {u"RNE_CLAS"_s});
    window.type("Text1", u"F201"_s);
    QCOMPARE(offered(window, "Text8"), QStringList());
    QCOMPARE(window.text("Text8"), u"clas"_s);
    window.type("Text8", u"rne"_s);
    QCOMPARE(offered(window, "Text8"), QStringList());
    window.type("Text8", {});
    QTest::keyClick(window.find<QLineEdit>("Text8"), Qt::Key_Down);
    QCOMPARE(offered(window, "Text8"), QStringList {u"FIP"_s});
}

void TestComforts::theSiteIsCompletedByTheCountry()
{
    MainWindow window;
    window.start(spain + later + france);
    window.click("Command2");
    window.type("Combo3", u"E"_s);
    window.type("Text5", u"m"_s);
    QCOMPARE(offered(window, "Text5"), (QStringList {u"Madrid"_s, u"M\u00e1laga"_s}));
    window.type("Combo3", u"F"_s);
    window.type("Text5", u"b"_s);
    QCOMPARE(offered(window, "Text5"), QStringList {u"Brest"_s});
    window.type("Combo3", {});
    window.type("Text5", u"b"_s);
    QCOMPARE(offered(window, "Text5"), QStringList());
}

void TestComforts::aCompletionIsChosenWithEnterAlone()
{
    MainWindow window;
    window.start(spain + later + france);
    window.click("Command2");
    window.fill({u"Text9"_s, u"91.2"_s, u"Text1"_s, u"E201"_s, u"Combo3"_s, u"E"_s, u"Text8"_s, u"rne"_s});
    listKey(window, "Text8", Qt::Key_Down);
    QCOMPARE(window.text("Text8"), u"rne"_s);
    listKey(window, "Text8", Qt::Key_Return);
    QCOMPARE(window.text("Text8"), u"RNE_3"_s);
    QVERIFY(!window.logbook().contains("91.2"));
    // Once more, now that the list is closed, it adds.
    window.key(Qt::Key_Return);
    QVERIFY(window.logbook().contains("|91.2||E||RNE_3|"));
    // Nothing is marked in the list: Enter adds what was typed.
    window.click("Command2");
    window.fill({u"Text9"_s, u"92.3"_s, u"Text1"_s, u"E201"_s, u"Text8"_s, u"RNE"_s});
    QVERIFY(!offered(window, "Text8").isEmpty());
    listKey(window, "Text8", Qt::Key_Return);
    QVERIFY2(window.logbook().contains("|92.3||E||RNE|"), window.logbook().constData());
}

void TestComforts::everyWindowSaysWhatItIsAndClosesOnEsc_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("title");
    QTest::newRow("Quick Add") << u"Dialog1"_s << u"Command14"_s << u"Quick Add"_s;
    QTest::newRow("Scratch Pad") << u"ScratchPad"_s << u"Command12"_s << u"Quillon - Scratch Pad"_s;
    QTest::newRow("Converter") << u"Dialog"_s << u"menuToolsConverter"_s << u"Quillon - Converter"_s;
    QTest::newRow("Setup") << u"Form2"_s << u"menuSetup"_s << u"Setup"_s;
    QTest::newRow("About") << u"frmSplash"_s << u"menuAbout"_s << u"About Quillon"_s;
    QTest::newRow("Statistics") << u"logStats"_s << u"menuStats"_s << u"Stats"_s;
    QTest::newRow("Edit of many") << u"editMany"_s << u"menuEditMany"_s << u"Edit 1 reception"_s;
}

void TestComforts::everyWindowSaysWhatItIsAndClosesOnEsc()
{
    QFETCH(QString, name);
    QFETCH(QString, command);
    QFETCH(QString, title);
    MainWindow window;
    window.start(spain);
    window.clickRow(1);
    if (command.startsWith(u"Command")) {
        window.click(command);
    } else {
        window.trigger(command);
    }
    const QPointer<QWidget> opened = window.find<QWidget>(name);
    QVERIFY(opened->isVisible());
    QCOMPARE(opened->windowTitle(), title);
    QTest::keyClick(opened, Qt::Key_Escape);
    QTRY_VERIFY(!opened || !opened->isVisible());
    QTest::keyClick(&window.form(), Qt::Key_Escape);
    QVERIFY(window.form().isVisible());
}

void TestComforts::aFloatingDockClosesOnEsc()
{
    MainWindow window;
    window.start(spain);
    window.key(Qt::Key_F8);
    auto *dock = window.find<QDockWidget>("receiverDock");
    QVERIFY(!dock->windowTitle().isEmpty());
    window.find<QLineEdit>("Text9")->setFocus();
    window.key(Qt::Key_Escape);
    QVERIFY(dock->isVisible());
    dock->setFloating(true);
    QVERIFY(QTest::qWaitForWindowExposed(dock));
    dock->activateWindow();
    QTRY_VERIFY(QApplication::activeWindow() == dock);
    QTest::keyClick(dock, Qt::Key_Escape);
    QVERIFY(!dock->isVisible());
}

void TestComforts::aDialogOpensWhereItWas()
{
    MainWindow window;
    window.start(spain);
    window.trigger("menuStats");
    QPointer<QWidget> stats = window.find<QWidget>("logStats");
    stats->move(37, 41);
    stats->resize(700, 560);
    const QRect place = stats->geometry();
    stats->close();
    QTRY_VERIFY(!stats);
    window.form().close();
    window.start();
    window.trigger("menuStats");
    stats = window.find<QWidget>("logStats");
    QCOMPARE(stats->geometry(), place);
}

void TestComforts::aWindowNeverOpensOffTheScreen()
{
    MainWindow window;
    window.start(spain);
    window.trigger("menuStats");
    window.find<QWidget>("logStats")->move(30000, -4000);
    window.form().move(-20000, 20000);
    window.form().close();
    window.start();
    window.trigger("menuStats");
    const QRect screen = window.form().screen()->availableGeometry();
    // As much of it as the screen has room for.
    for (const QWidget *opened : {static_cast<QWidget *>(&window.form()), window.find<QWidget>("logStats")}) {
        const QRect wanted(screen.topLeft(), opened->frameSize().boundedTo(screen.size()));
        QCOMPARE(screen.intersected(opened->frameGeometry()).size(), wanted.size());
    }
}

void TestComforts::theWidthOfTheNotesIsTheUsers()
{
    constexpr int notes = static_cast<int>(GridColumn::Notes);
    constexpr int width = 77;
    MainWindow window;
    window.start(spain);
    window.form().resize(1700, 800);
    QCoreApplication::processEvents();
    const int fitted = window.grid().columnWidth(notes);
    window.form().resize(window.form().width() + 60, window.form().height());
    QCoreApplication::processEvents();
    QVERIFY(window.grid().columnWidth(notes) > fitted);
    window.grid().horizontalHeader()->resizeSection(notes, width);
    window.form().resize(window.form().width() + 60, window.form().height());
    QCoreApplication::processEvents();
    QCOMPARE(window.grid().columnWidth(notes), width);
    window.form().close();
    window.start();
    window.form().resize(1700, 800);
    QCOMPARE(window.grid().columnWidth(notes), width);
    window.form().resize(window.form().width() + 60, window.form().height());
    QCoreApplication::processEvents();
    QCOMPARE(window.grid().columnWidth(notes), width);
    window.trigger("menuViewReset");
    QVERIFY(window.grid().columnWidth(notes) > width);
}

void TestComforts::statisticsFollowWhatIsShown()
{
    MainWindow window;
    window.start(spain + later + france);
    window.trigger("menuStats");
    auto *stats = window.find<QDialog>("logStats");
    auto *chart = stats->findChild<QWidget *>(u"MSChart1"_s);
    auto *only = stats->findChild<QCheckBox *>(u"shownOnly"_s);
    QCOMPARE(only->text().remove(u'&'), u"Shown only"_s);
    const auto draw = [stats] { stats->findChild<QPushButton *>(u"Command3"_s)->click(); };
    const auto picture = [chart] {
        QCoreApplication::processEvents();
        return chart->grab().toImage();
    };
    draw();
    const QImage all = picture();
    window.type("filterText", u"itu:E"_s);
    QTest::qWait(150);
    QCOMPARE(picture(), all);
    only->setChecked(true);
    const QImage spanish = picture();
    QVERIFY(spanish != all);
    window.type("filterText", u"itu:F"_s);
    QTRY_VERIFY(picture() != spanish);
    QTest::keyClick(window.find<QLineEdit>("filterText"), Qt::Key_Escape);
    only->setChecked(false);
    constexpr int patience = 30'000; // milliseconds
    QTRY_VERIFY_WITH_TIMEOUT(picture() == all, patience);
}

void TestComforts::everyMenuEntryHasItsIconAndItsKey()
{
    MainWindow window;
    window.start();
    const QList<QAction *> menus = window.find<QMenuBar>("menubar")->actions();
    int entries = 0;
    for (const QAction *menu : menus) {
        const QList<QAction *> actions = menu->menu()->actions();
        for (const QAction *action : actions) {
            if (action->isSeparator()) {
                continue;
            }
            ++entries;
            QVERIFY2(action->isCheckable() || !action->icon().isNull(), qPrintable(action->text()));
            QVERIFY2(action->menu() || !action->shortcuts().isEmpty(), qPrintable(action->text()));
        }
    }
    QVERIFY(entries > 25);
}

void TestComforts::ownIconsFollowThePalette()
{
    const auto strongest = [](const QIcon &icon, QIcon::Mode mode) {
        const QImage picture = icon.pixmap(QSize(32, 32), mode).toImage();
        QColor found;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (const QColor colour = picture.pixelColor(x, y); colour.alpha() == 255) {
                    found = colour;
                }
            }
        }
        return found;
    };
    const QPalette before = QApplication::palette();
    const auto restored = qScopeGuard([&] { QApplication::setPalette(before); });
    const QStringList names = QDir(u":/icons/menu"_s).entryList();
    QVERIFY(names.size() > 15);
    for (const QString &name : names) {
        const QIcon icon = ownIcon(name.section(u'.', 0, 0));
        for (const Qt::GlobalColor colour : {Qt::black, Qt::white}) {
            QPalette palette = before;
            palette.setColor(QPalette::WindowText, colour);
            QApplication::setPalette(palette);
            QVERIFY2(strongest(icon, QIcon::Normal) == QColor(colour), qPrintable(name));
        }
    }
}

void TestComforts::theFirstStartSaysWhatToDo()
{
    MainWindow window;
    window.start();
    auto *page = window.find<QWidget>("firstSteps");
    QVERIFY(page->isVisible());
    QVERIFY(window.grid().viewport()->rect().contains(page->geometry()));
    const auto press = [&](QAnyStringView name) {
        auto *link = window.find<QPushButton>(name);
        QVERIFY(link->focusPolicy() & Qt::TabFocus);
        link->setFocus(Qt::TabFocusReason);
        QTest::keyClick(link, Qt::Key_Return);
    };
    press(u"firstSetup");
    window.find<QDialog>("Form2")->close();
    press(u"firstImport");
    auto *menu = window.find<QMenu>("menuImport");
    QVERIFY(menu->isVisible());
    menu->close();
    press(u"firstQuickAdd");
    auto *quick = window.find<QDialog>("Dialog1");
    QTest::keyClicks(quick->findChild<QLineEdit *>(u"Text3"_s), u"FIP"_s);
    quick->findChild<QPushButton *>(u"OKButton"_s)->click();
    QCOMPARE(window.grid().rows(), 2);
    QVERIFY(!page->isVisible());
    window.trigger("menuEditUndo");
    QVERIFY(page->isVisible());
}

void TestComforts::anEmptyGridSaysTheReason()
{
    MainWindow window;
    window.start(QByteArray(spain).replace("RNE", "R|NE"));
    auto *page = window.find<QWidget>("firstSteps");
    QVERIFY(!page->isVisible());
    QVERIFY2(window.grid().emptyText().contains(u"RDSLog.log"_s), qPrintable(window.grid().emptyText()));
    window.start(spain);
    window.type("filterText", u"nowhere"_s);
    QVERIFY(!window.find<QWidget>("firstSteps")->isVisible());
    QCOMPARE(
        window.grid().emptyText(), u"No reception of the log is shown. Esc in the filter's box shows all."_s);
}

void TestComforts::aResultHasItsMenu()
{
    MainWindow window;
    window.start(spain + later + france);
    window.type("filterText", u"itu:F"_s);
    window.type("Text1", u"E201"_s);
    window.click("Command4");
    const QPoint first = window.list().visualRect(window.list().model()->index(0, 0)).center();
    const auto choose = [&](const QString &caption) {
        QStringList offered;
        QTimer::singleShot(0, &window.form(), [&] {
            auto *menu = window.find<QMenu>("resultsMenu");
            const QList<QAction *> actions = menu->actions();
            for (QAction *action : actions) {
                offered += action->text().remove(u'&');
                if (offered.last() == caption) {
                    action->trigger();
                }
            }
            menu->close();
        });
        Q_EMIT window.list().customContextMenuRequested(first);
        return offered;
    };
    QCOMPARE(choose(u"Copy"_s),
        (QStringList {
            u"Show in the Log"_s, u"Copy"_s, {}, u"Search PI DB"_s, u"Google"_s, {}, u"Show on the Map"_s}));
    QCOMPARE(QGuiApplication::clipboard()->text(), window.list().text(0) + u'\n');
    (void)choose(u"Show in the Log"_s);
    QCOMPARE(window.text("Text1"), u"E201"_s);
    // The filter hid it.
    QCOMPARE(window.text("filterText"), QString());
    (void)choose(u"Show on the Map"_s);
    QVERIFY(window.find<QDockWidget>("mapDock")->isVisible());
}

QTEST_MAIN(TestComforts)
#include "tst_comforts.moc"
