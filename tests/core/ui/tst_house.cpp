#include "support/accessibility.h"
#include "support/mainwindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

class TestHouse : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyControlHasAnAccessibleName();
    void everyControlHasTheNameOfTheSystem();
    void everyFieldHasALabelThatLeadsToIt_data();
    void everyFieldHasALabelThatLeadsToIt();
    void everyButtonHasItsCaption_data();
    void everyButtonHasItsCaption();
    void everyFrameHasItsTitle();
    void noTwoMnemonicsAreAlike();
    void noTwoMnemonicsOfAMenuAreAlike();
    void noTwoShortcutsAreAlike();
    void aMnemonicOfALabelLeadsToItsField();
    void theTabKeyFollowsTheEye();
    void everyControlIsReachedByTheTabKey();
    void buttonsSayMoreInTheirTips();
    void theWindowFitsASmallScreen();
    void cloneHasAShortcut();
};

void TestHouse::everyControlHasAnAccessibleName()
{
    MainWindow window;
    window.start();
    QVERIFY(controlsOf(window.form()).size() >= 30);
    QCOMPARE(withoutName(window.form()).join(u' '), QString());
}

void TestHouse::everyControlHasTheNameOfTheSystem()
{
    MainWindow window;
    window.start();
    QCOMPARE(window.form().objectName(), u"Form1"_s);
    for (int number : {1, 2, 3, 5, 6, 7, 8, 9, 10}) {
        QVERIFY(window.form().findChild<QWidget *>(u"Text%1"_s.arg(number)));
    }
    for (int number = 1; number <= 15; ++number) {
        QVERIFY2(window.form().findChild<QAbstractButton *>(u"Command%1"_s.arg(number)),
            qPrintable(u"Command%1"_s.arg(number)));
    }
    for (const char *name : {"Combo1", "Combo2", "Combo3", "List1", "List2", "Grid1", "uid", "status",
             "proclogs", "applicationDir", "mapDir"}) {
        QVERIFY2(window.form().findChild<QWidget *>(QString::fromLatin1(name)), name);
    }
}

void TestHouse::everyFieldHasALabelThatLeadsToIt_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("caption");
    QTest::newRow("Text1") << u"Text1"_s << u"PI Code"_s;
    QTest::newRow("Text2") << u"Text2"_s << u"Date / Time"_s;
    QTest::newRow("Text3") << u"Text3"_s << u"Notes"_s;
    QTest::newRow("Text5") << u"Text5"_s << u"Name/Locale"_s;
    QTest::newRow("Text6") << u"Text6"_s << u"Power KW"_s;
    QTest::newRow("Text7") << u"Text7"_s << u"Dec.Latitude"_s;
    QTest::newRow("Text8") << u"Text8"_s << u"RDS Name (PS)"_s;
    QTest::newRow("Text9") << u"Text9"_s << u"Freq Mhz"_s;
    QTest::newRow("Text10") << u"Text10"_s << u"Dec.Longtiude"_s;
    QTest::newRow("Combo1") << u"Combo1"_s << u"Existing"_s;
    QTest::newRow("Combo2") << u"Combo2"_s << u"Propagation Mode"_s;
    QTest::newRow("Combo3") << u"Combo3"_s << u"Country ITU"_s;
    QTest::newRow("uid") << u"uid"_s << u"UID"_s;
}

void TestHouse::everyFieldHasALabelThatLeadsToIt()
{
    QFETCH(QString, field);
    QFETCH(QString, caption);
    MainWindow window;
    window.start();
    const auto *target = window.find<QWidget>(field);
    QStringList captions;
    const QList<QLabel *> labels = window.form().findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        if (label->buddy() == target) {
            captions += label->text();
        }
    }
    QCOMPARE(captions.size(), 1);
    // No letter is left for it; Tab leads there from the country.
    QCOMPARE(QKeySequence::mnemonic(captions.first()).isEmpty(), field == u"Combo1");
    QCOMPARE(captions.first().remove(u'&'), caption);
}

void TestHouse::everyButtonHasItsCaption_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("caption");
    const QList<std::pair<const char *, QString>> captions {{"Command1", u"Add"_s}, {"Command2", u"New"_s},
        {"Command3", u"Update"_s}, {"Command4", u"Search PI DB"_s}, {"Command5", u"Google"_s},
        {"Command6", u"Search PI DB"_s}, {"Command7", u"Search PI DB"_s}, {"Command8", u"Search PI DB"_s},
        {"Command9", u"Clone"_s}, {"Command10", u"Re-Calculate Distances"_s},
        {"Command11", u"Search FMList"_s}, {"Command12", u"Scratch Pad"_s}, {"Command13", u"Search PI DB"_s},
        {"Command14", u"Quick Add (F5)"_s}, {"Command15", u"Delete"_s}};
    for (const auto &[button, caption] : captions) {
        QTest::newRow(button) << QString::fromLatin1(button) << caption;
    }
}

void TestHouse::everyButtonHasItsCaption()
{
    QFETCH(QString, button);
    QFETCH(QString, caption);
    MainWindow window;
    window.start();
    QCOMPARE(window.caption(button), caption);
}

void TestHouse::everyFrameHasItsTitle()
{
    MainWindow window;
    window.start();
    QStringList titles;
    const QList<QGroupBox *> frames = window.form().findChildren<QGroupBox *>();
    for (const QGroupBox *frame : frames) {
        titles += frame->title().remove(u'&');
    }
    titles.sort();
    QCOMPARE(titles, (QStringList {u"Reception"_s, u"Results"_s, u"Transmitter"_s}));
    QCOMPARE(window.find<QGroupBox>("Frame1")->title(), u"Transmitter"_s);
}

void TestHouse::noTwoMnemonicsAreAlike()
{
    MainWindow window;
    window.start();
    QStringList captions = captionsOf(window.form());
    const QList<QAction *> menus = window.find<QMenuBar>("menubar")->actions();
    QCOMPARE(menus.size(), 10);
    for (const QAction *menu : menus) {
        QVERIFY2(!QKeySequence::mnemonic(menu->text()).isEmpty(), qPrintable(menu->text()));
        captions += menu->text();
    }
    QCOMPARE(claimedTwice(captions), QStringList());
    window.click("Command2");
    captions += window.find<QAbstractButton>("Command2")->text();
    captions.removeOne(u"Ne&w"_s);
    QCOMPARE(claimedTwice(captions), QStringList());
}

void TestHouse::noTwoMnemonicsOfAMenuAreAlike()
{
    MainWindow window;
    window.start();
    const QList<QAction *> menus = window.find<QMenuBar>("menubar")->actions();
    for (const QAction *menu : menus) {
        QStringList captions;
        const QList<QAction *> commands = menu->menu()->actions();
        for (const QAction *command : commands) {
            if (!command->isSeparator()) {
                QVERIFY2(!QKeySequence::mnemonic(command->text()).isEmpty(), qPrintable(command->text()));
                captions += command->text();
            }
        }
        QVERIFY(!captions.isEmpty());
        // The two automatic searches share their letter: pressed again, it goes on to the other.
        captions.removeOne(u"&Auto Search - PI"_s);
        QCOMPARE(claimedTwice(captions), QStringList());
    }
}

void TestHouse::noTwoShortcutsAreAlike()
{
    MainWindow window;
    window.start();
    QStringList keys;
    const QList<QAction *> actions = window.form().findChildren<QAction *>();
    for (const QAction *action : actions) {
        if (!action->shortcut().isEmpty()) {
            keys += action->shortcut().toString();
        }
    }
    const QList<QShortcut *> shortcuts = window.form().findChildren<QShortcut *>();
    for (const QShortcut *shortcut : shortcuts) {
        keys += shortcut->key().toString();
    }
    const QList<QAbstractButton *> buttons = window.form().findChildren<QAbstractButton *>();
    for (const QAbstractButton *button : buttons) {
        if (!button->shortcut().isEmpty()) {
            keys += button->shortcut().toString();
        }
    }
    for (const QString &wanted : {u"F5"_s, u"Ctrl+N"_s, u"Ctrl+S"_s, u"Ctrl+F"_s, u"Ctrl+I"_s, u"F1"_s,
             u"Ctrl+Q"_s, u"Ctrl+E"_s, u"Ctrl+Del"_s, u"Ctrl+L"_s, u"Ctrl+P"_s, u"Ctrl+R"_s}) {
        QCOMPARE(keys.count(wanted), 1);
    }
    QCOMPARE(keys.removeDuplicates(), 0);
}

void TestHouse::aMnemonicOfALabelLeadsToItsField()
{
    MainWindow window;
    window.start();
    window.click("Command2");
    const QList<std::pair<Qt::Key, QString>> keys {{Qt::Key_Q, u"Text9"_s}, {Qt::Key_C, u"Text1"_s},
        {Qt::Key_R, u"Text8"_s}, {Qt::Key_D, u"Text2"_s}, {Qt::Key_P, u"Combo2"_s}, {Qt::Key_N, u"Text3"_s},
        {Qt::Key_U, u"uid"_s}, {Qt::Key_Y, u"Combo3"_s}, {Qt::Key_O, u"Text5"_s}, {Qt::Key_K, u"Text6"_s},
        {Qt::Key_L, u"Text7"_s}, {Qt::Key_G, u"Text10"_s}};
    for (const auto &[key, field] : keys) {
        window.key(key, Qt::AltModifier);
        QVERIFY2(window.find<QWidget>(field)->hasFocus(), qPrintable(field));
    }
}

void TestHouse::theTabKeyFollowsTheEye()
{
    MainWindow window;
    window.start();
    window.click("Command2");
    window.find<QWidget>("Text9")->setFocus();
    QStringList order;
    for (int i = 0; i < 13; ++i) {
        order += QApplication::focusWidget()->objectName();
        window.key(Qt::Key_Tab);
    }
    QCOMPARE(order.join(u' '),
        u"Text9 Text1 Text8 Text2 Combo2 Text3 uid Combo3 Combo1 Text5 Text6 Text7 Text10"_s);
}

void TestHouse::everyControlIsReachedByTheTabKey()
{
    MainWindow window;
    window.start(logLine("D3C3", "12/06/2010 18:22:05", "87.6", "RNE_1"));
    window.clickRow(1);
    window.find<QWidget>("Text9")->setFocus();
    QStringList reached;
    constexpr int more = 60;
    for (int i = 0; i < more; ++i) {
        reached += QApplication::focusWidget()->objectName();
        window.key(Qt::Key_Tab);
    }
    const QList<QWidget *> controls = controlsOf(window.form());
    for (const QWidget *control : controls) {
        if (control->isEnabled() && control->isVisible()) {
            QVERIFY2(reached.contains(control->objectName()), qPrintable(control->objectName()));
        }
    }
    QCOMPARE(
        reached.at(static_cast<qsizetype>(QSet<QString>(reached.begin(), reached.end()).size())), u"Text9"_s);
}

void TestHouse::buttonsSayMoreInTheirTips()
{
    MainWindow window;
    window.start();
    for (int number = 1; number <= 15; ++number) {
        const auto *button = window.find<QAbstractButton>(u"Command%1"_s.arg(number));
        QVERIFY2(!button->toolTip().isEmpty(), qPrintable(button->objectName()));
    }
    const QList<std::pair<const char *, QString>> keys {{"Command1", u"(Ctrl+S, Enter)"_s},
        {"Command2", u"(Ctrl+N)"_s}, {"Command3", u"(Ctrl+S)"_s}, {"Command9", u"(Ctrl+Shift+N)"_s},
        {"Command10", u"(Ctrl+R)"_s}, {"Command11", u"(Ctrl+L)"_s}, {"Command12", u"(Ctrl+P)"_s},
        {"Command15", u"(Ctrl+Del)"_s}};
    for (const auto &[button, key] : keys) {
        QVERIFY2(window.find<QAbstractButton>(button)->toolTip().endsWith(key), button);
    }
    QVERIFY(window.caption("Command14").endsWith(u"(F5)"_s));
}

void TestHouse::theWindowFitsASmallScreen()
{
    MainWindow window;
    window.start();
    const QSize smallest = window.form().minimumSizeHint();
    QVERIFY2(smallest.width() <= 1024, qPrintable(QString::number(smallest.width())));
    QVERIFY2(smallest.height() <= 700, qPrintable(QString::number(smallest.height())));
    window.form().resize(1024, 700);
    QCoreApplication::processEvents();
    QCOMPARE(window.form().size(), QSize(1024, 700));
    QCOMPARE(cutOff(window.form()).join(u' '), QString());
    QVERIFY(window.grid().viewport()->height() > 5 * window.grid().rowHeight(0));
    const QList<QWidget *> controls = controlsOf(window.form());
    for (const QWidget *control : controls) {
        if (control->isVisible()) {
            const QRect place(control->mapTo(&window.form(), QPoint()), control->size());
            QVERIFY2(window.form().rect().contains(place), qPrintable(control->objectName()));
        }
    }
}

void TestHouse::cloneHasAShortcut()
{
    MainWindow window;
    window.start(logLine("D3C3", "12/06/2010 18:22:05", "87.6", "RNE_1"));
    window.clickRow(1);
    window.key(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    QTRY_COMPARE(window.form().selected(), -1);
    QCOMPARE(window.text("Text1"), u"D3C3"_s);
    QVERIFY(window.enabled("Command1"));
}

QTEST_MAIN(TestHouse)
#include "tst_house.moc"
