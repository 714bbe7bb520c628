#include "loggingwindow.h"

#include "ui/statustext.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QScopeGuard>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

const QByteArray home = "HOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\nAS_MILES=FALSE\r\n";
const QByteArray homeInMiles = "HOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\nAS_MILES=TRUE\r\n";
const QByteArray madrid = "E111|12/06/2010 18:00:00|Es|87.6|Madrid|E||RNE_1|10|7|fml=none#|1|\r\n";
const QByteArray places = "Munich|D|48.3|11.5||\r\nMadrid|E|40.4|-3.7|7|\r\n";

void startAt(MainWindow &window, const QByteArray &settings, const QByteArray &log = madrid)
{
    window.directory.write(u"LOGBOOK.INI"_s, settings);
    window.start(log, places);
}

QString leg(MainWindow &window)
{
    return window.find<StatusText>("legLabel")->text();
}

QToolButton &link(MainWindow &window)
{
    return window.find<StatusText>("legLabel")->link();
}

QString distances(MainWindow &window)
{
    QStringList all;
    for (const LogEntry &entry : window.form().log()) {
        all += entry.dist;
    }
    return all.join(u' ');
}

void typeBrest(MainWindow &window)
{
    window.click("Command2");
    window.fill({u"Text9"_s, u"90.0"_s, u"Text1"_s, u"F201"_s, u"Combo3"_s, u"F"_s, u"Text5"_s, u"Brest"_s,
        u"Text7"_s, u"48.4"_s, u"Text10"_s, u"-4.5"_s});
}

} // namespace

/// The way from home, told while a reception is typed, and measured when it is stored.
class TestWayFromHome : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itIsToldWhileCoordinatesAreTyped();
    void itFollowsTheChosenReceptionAndTheKnownSites();
    void itFollowsHomeAndTheUnit();
    void itsNumberIsTheOneThatIsRecalculated();
    void aLocatorLeadsToItsMiddle();
    void itIsReadWholeWhereTheWindowIsSmall_data();
    void itIsReadWholeWhereTheWindowIsSmall();
    void nothingIsMeasuredAtFirst();
    void anAddMeasuresAndIsOneStep();
    void anUpdateMeasures();
    void aSiteWithoutAPlaceOrAHomeIsNotMeasured();
    void theTickIsKeptWithTheLook();
};

void TestWayFromHome::itIsToldWhileCoordinatesAreTyped()
{
    MainWindow window;
    startAt(window, home);
    QCOMPARE(leg(window), QString());
    window.click("Command2");
    window.type("Text7", u"40.4"_s);
    QCOMPARE(leg(window), QString());
    window.type("Text10", u"-3."_s);
    const QString before = leg(window);
    QVERIFY(before.endsWith(u"IN80MJ"));
    window.key(Qt::Key_7);
    QCOMPARE(leg(window), u"1264.5 km, 194° SSW, IN80DJ"_s);
    window.type("Text10", u"east"_s);
    QCOMPARE(leg(window), QString());
    // Assistive tools read it as it stands.
    window.type("Text10", u"-3.7"_s);
    auto *label = window.find<StatusText>("legLabel");
    QCOMPARE(QAccessible::queryAccessibleInterface(label)->text(QAccessible::Name), leg(window));
    QVERIFY(!link(window).isVisible());
}

void TestWayFromHome::itFollowsTheChosenReceptionAndTheKnownSites()
{
    MainWindow window;
    startAt(window, home);
    window.clickRow(1);
    QCOMPARE(leg(window), u"1264.5 km, 194° SSW, IN80DJ"_s);
    window.type("Combo3", u"D"_s);
    window.key(Qt::Key_Tab);
    auto *known = window.find<QComboBox>("Combo1");
    QCOMPARE(known->count(), 1);
    known->setCurrentIndex(0);
    Q_EMIT known->activated(0);
    QVERIFY2(leg(window).startsWith(u"905.2 km, "), qPrintable(leg(window)));
    QVERIFY2(leg(window).endsWith(u"JN58SH"), qPrintable(leg(window)));
    window.click("Command2");
    QCOMPARE(leg(window), QString());
}

void TestWayFromHome::itFollowsHomeAndTheUnit()
{
    MainWindow window;
    startAt(window, "HOME_DEC_LAT=0\r\nHOME_DEC_LON=0\r\nAS_MILES=FALSE\r\n");
    window.clickRow(1);
    QCOMPARE(leg(window), u"IN80DJ (home is not set)"_s);
    window.trigger("menuSetup");
    auto *setup = window.find<QWidget>("Form2");
    setup->findChild<QLineEdit *>(u"latitude"_s)->setText(u"51.5"_s);
    setup->findChild<QLineEdit *>(u"longitude"_s)->setText(u"-0.1"_s);
    setup->findChild<QAbstractButton *>(u"Command1"_s)->click();
    QCOMPARE(leg(window), u"1264.5 km, 194° SSW, IN80DJ"_s);
    window.form().config().changeConfig(u"AS_MILES="_s, u"TRUE"_s);
    QCOMPARE(leg(window), u"785.8 mi, 194° SSW, IN80DJ"_s);
}

void TestWayFromHome::itsNumberIsTheOneThatIsRecalculated()
{
    for (const QByteArray &settings : {home, homeInMiles}) {
        MainWindow window;
        startAt(window, settings);
        window.clickRow(1);
        const QString told = leg(window).section(u' ', 0, 0);
        window.click("Command10");
        QCOMPARE(distances(window), told);
    }
}

void TestWayFromHome::aLocatorLeadsToItsMiddle()
{
    MainWindow window;
    startAt(window, home);
    window.click("Command2");
    window.type("Text7", u"jo50va"_s);
    QCOMPARE(leg(window), u"JO50VA"_s);
    QVERIFY(link(window).isVisible());
    QCOMPARE(link(window).text(), u"Use Its Middle"_s);
    // By the keyboard: the link comes behind the coordinates.
    window.find<QLineEdit>("Text10")->setFocus();
    window.key(Qt::Key_Tab);
    QVERIFY(link(window).hasFocus());
    window.key(Qt::Key_Space);
    QCOMPARE(window.text("Text7"), u"50.02083"_s);
    QCOMPARE(window.text("Text10"), u"11.79167"_s);
    QVERIFY(leg(window).endsWith(u", JO50VA"));
    QVERIFY(window.find<QLineEdit>("Text10")->hasFocus());
    QTRY_VERIFY(!link(window).isVisible());
    // Four characters are no locator yet.
    window.type("Text7", u"JO50"_s);
    QCOMPARE(leg(window), QString());
}

void TestWayFromHome::itIsReadWholeWhereTheWindowIsSmall_data()
{
    QTest::addColumn<double>("letters");
    QTest::addColumn<QSize>("size");
    QTest::newRow("1024 x 700") << 1.0 << QSize(1024, 700);
    QTest::newRow("larger letters") << 1.5 << QSize(1366 - 8, 768 - 36);
}

void TestWayFromHome::itIsReadWholeWhereTheWindowIsSmall()
{
    QFETCH(double, letters);
    QFETCH(QSize, size);
    const QFont before = QApplication::font();
    QFont large = before;
    large.setPointSizeF(before.pointSizeF() * letters);
    QApplication::setFont(large);
    const auto restored = qScopeGuard([&] { QApplication::setFont(before); });
    MainWindow window;
    startAt(window, home);
    window.form().resize(size);
    window.click("Command2");
    window.fill({u"Text7"_s, u"-41.28"_s, u"Text10"_s, u"174.7"_s});
    QCoreApplication::processEvents();
    QCOMPARE(window.form().size(), size);
    const auto *label = window.find<StatusText>("legLabel");
    QVERIFY(label->text().startsWith(u"18"));
    QCOMPARE(label->shownText(), label->text());
    QVERIFY(label->height() >= label->fontMetrics().height());
    window.type("Text7", u"WX77WX"_s);
    QCoreApplication::processEvents();
    QCOMPARE(label->shownText(), QString());
    window.type("Text7", u"RR77XX"_s);
    QCoreApplication::processEvents();
    QCOMPARE(label->shownText(), u"RR77XX"_s);
    QVERIFY(label->rect().contains(link(window).geometry()));
}

void TestWayFromHome::nothingIsMeasuredAtFirst()
{
    MainWindow window;
    startAt(window, home);
    const auto *tick = window.find<QAction>("menuViewDistances");
    QVERIFY(tick->isCheckable() && !tick->isChecked());
    typeBrest(window);
    window.click("Command1");
    QCOMPARE(distances(window), u"7 "_s);
    window.clickRow(1);
    window.type("Text6", u"20"_s);
    window.click("Command3");
    QCOMPARE(distances(window), u"7 "_s);
    QVERIFY(window.transmitterFile().contains("Brest|F|48.4|-4.5||\r\n"));
}

void TestWayFromHome::anAddMeasuresAndIsOneStep()
{
    MainWindow window;
    startAt(window, home);
    window.trigger("menuViewDistances");
    const QByteArray log = window.logbook();
    typeBrest(window);
    const QString told = leg(window).section(u' ', 0, 0);
    window.click("Command1");
    QCOMPARE(distances(window), u"7 "_s + told);
    QCOMPARE(window.grid().text(2, GridColumn::Dist), told);
    QVERIFY(window.transmitterFile().contains(QByteArray("Brest|F|48.4|-4.5|" + told.toLatin1() + "|\r\n")));
    QVERIFY(window.logbook().contains(QByteArray('|' + told.toLatin1() + '|')));
    // The re-calculation finds it right; the others are its own.
    const QByteArray added = window.logbook();
    window.click("Command10");
    QCOMPARE(distances(window), u"1264.5 "_s + told);
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), added);
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), log);
    QCOMPARE(window.transmitterFile(), places);
    QVERIFY(!window.find<QAction>("menuEditUndo")->isEnabled());
    window.trigger("menuEditRedo");
    QCOMPARE(window.logbook(), added);
}

void TestWayFromHome::anUpdateMeasures()
{
    MainWindow window;
    startAt(window, homeInMiles);
    window.trigger("menuViewDistances");
    window.clickRow(1);
    window.type("Text6", u"20"_s);
    window.click("Command3");
    QCOMPARE(distances(window), u"785.8"_s);
    QCOMPARE(window.grid().text(1, GridColumn::Dist), u"785.8"_s);
    QVERIFY(window.transmitterFile().contains("Madrid|E|40.4|-3.7|785.8|\r\n"));
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), madrid);
    QCOMPARE(window.transmitterFile(), places);
    // A site that was corrected.
    window.clickRow(1);
    window.fill({u"Text7"_s, u"48.3"_s, u"Text10"_s, u"11.5"_s});
    window.click("Command3");
    QCOMPARE(distances(window), u"562.5"_s);
}

void TestWayFromHome::aSiteWithoutAPlaceOrAHomeIsNotMeasured()
{
    MainWindow window;
    startAt(window, home, madrid + "E222|12/06/2010 19:00:00|Es|87.7|Nowhere|E||RNE_2|10|5|||\r\n");
    window.trigger("menuViewDistances");
    window.clickRow(2);
    window.type("Text6", u"20"_s);
    window.click("Command3");
    QCOMPARE(distances(window), u"7 5"_s);
    window.form().config().changeConfig(u"HOME_DEC_LAT="_s, u"0"_s);
    window.clickRow(1);
    window.type("Text6", u"20"_s);
    window.click("Command3");
    QCOMPARE(distances(window), u"7 5"_s);
    // That it cannot be done is said when it is wished.
    window.trigger("menuViewDistances");
    window.trigger("menuViewDistances");
    QCOMPARE(window.text("status"), u"Distances are measured as soon as home is set in the setup"_s);
}

void TestWayFromHome::theTickIsKeptWithTheLook()
{
    MainWindow window;
    startAt(window, home);
    window.trigger("menuViewDistances");
    window.stop();
    window.start();
    QVERIFY(window.find<QAction>("menuViewDistances")->isChecked());
    window.trigger("menuViewReset");
    window.stop();
    window.start();
    QVERIFY(window.find<QAction>("menuViewDistances")->isChecked());
    window.trigger("menuViewDistances");
    window.stop();
    window.start();
    QVERIFY(!window.find<QAction>("menuViewDistances")->isChecked());
    QVERIFY(!window.directory.read(u"LOGBOOK.INI"_s).contains("distances"));
}

QTEST_MAIN(TestWayFromHome)
#include "tst_wayfromhome.moc"
