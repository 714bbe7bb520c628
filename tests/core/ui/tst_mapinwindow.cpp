#include "loggingwindow.h"

#include "geo/ui/mapdock.h"
#include "geo/ui/mapview.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

const QByteArray home = "HOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\nAS_MILES=FALSE\r\n";
const QByteArray noHome = "HOME_DEC_LAT=0\r\nHOME_DEC_LON=0\r\nAS_MILES=FALSE\r\n";
const QByteArray spain = "E201|12/06/2010 10:00:00|Es|90.3|Malaga|E|jingle|RNE_CLAS|10|1800|||\r\n";
const QByteArray france = "F201|12/06/2010 11:00:00|Tropo|90.0|Brest|F||FIP|||fml=sent#|501|\r\n";
const QByteArray nowhere = "F202|12/06/2010 09:00:00|Es|91.0|Nowhere|F||||||\r\n";
const QByteArray places = "Malaga|E|36.7|-4.4||\r\nBrest|F|48.4|-4.5||\r\nNowhere|F||||\r\n";

// The window with its map in sight.
class WindowWithMap : public MainWindow
{
public:
    void open(const QByteArray &settings, const QByteArray &log)
    {
        directory.write(u"LOGBOOK.INI"_s, settings);
        start(log, places);
        key(Qt::Key_F7);
    }

    MapView &map() { return find<MapDock>("mapDock")->map(); }
    [[nodiscard]] QString note() { return find<QLabel>("mapNote")->text(); }
    void clickSite(const QString &name, Qt::KeyboardModifiers modifiers = {})
    {
        for (const MapDot &dot : map().scene().dots()) {
            if (map().scene().data().sites[dot.site].name == name) {
                const QPoint pixel = map().viewport().toPixel(dot.point).toPoint();
                QTest::mouseClick(&map(), Qt::LeftButton, modifiers, pixel);
                return;
            }
        }
        QFAIL(qPrintable(name));
    }
};

} // namespace

/// The map beside the log: each follows the other.
class TestMapInWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAHomeItLeadsToTheSetupAndIsThereAfterIt();
    void theFilterRulesIt();
    void aClickChoosesTheLastReception();
    void aClickWithCtrlFiltersByTheSite();
    void whatHasNoPlaceIsShownInTheLog();
    void aChosenRowMovesNothingButThePath();
};

void TestMapInWindow::withoutAHomeItLeadsToTheSetupAndIsThereAfterIt()
{
    WindowWithMap window;
    window.open(noHome, spain + france);
    auto *label = window.map().findChild<QLabel *>(u"mapNoHome"_s);
    QVERIFY(label->isVisible());
    QVERIFY(label->text().contains(u"Set home…"));
    Q_EMIT label->linkActivated(u"#"_s);
    auto *setup = window.find<QWidget>("Form2");
    QVERIFY(setup->isVisible());
    setup->findChild<QLineEdit *>(u"latitude"_s)->setText(u"51.5"_s);
    setup->findChild<QLineEdit *>(u"longitude"_s)->setText(u"-0.1"_s);
    setup->findChild<QAbstractButton *>(u"Command1"_s)->click();
    QVERIFY(!label->isVisible());
    QCOMPARE(window.map().scene().data().home, GeoPosition({51.5, -0.1}));
    QCOMPARE(window.map().dotsInView().size(), std::size_t(2));
}

void TestMapInWindow::theFilterRulesIt()
{
    WindowWithMap window;
    window.open(home, spain + france);
    QCOMPARE(window.map().scene().dots().size(), std::size_t(2));
    window.type("filterText", u"itu:E"_s);
    QCOMPARE(window.map().scene().dots().size(), std::size_t(1));
    window.type("filterText", u"itu:XYZ"_s);
    QVERIFY(window.map().scene().dots().empty());
}

void TestMapInWindow::aClickChoosesTheLastReception()
{
    WindowWithMap window;
    window.open(home, spain + france + logLine("F203", "12/06/2010 12:00:00", "92.0", "FIP2", "F", "Brest"));
    window.clickSite(u"Brest"_s);
    QCOMPARE(window.text("Text1"), u"F203"_s);
    QCOMPARE(window.grid().row(), 3);
    QVERIFY(window.map().scene().path().has_value());
    QCOMPARE(window.map().scene().path()->name, u"Brest"_s);
}

void TestMapInWindow::aClickWithCtrlFiltersByTheSite()
{
    WindowWithMap window;
    window.open(home, spain + france);
    window.clickSite(u"Malaga"_s, Qt::ControlModifier);
    QCOMPARE(window.piCodes(), QStringList {u"E201"_s});
    QCOMPARE(window.map().scene().dots().size(), std::size_t(1));
}

void TestMapInWindow::whatHasNoPlaceIsShownInTheLog()
{
    WindowWithMap window;
    window.open(home, spain + nowhere + france + nowhere);
    QVERIFY2(window.note().startsWith(u"Not on the map: 2 receptions, 1 site without coordinates."),
        qPrintable(window.note()));
    Q_EMIT window.find<QLabel>("mapNote")->linkActivated(u"#"_s);
    QCOMPARE(window.piCodes(), (QStringList {u"F202"_s, u"F202"_s}));
    QCOMPARE(window.grid().entryOfRow(1), 1);
    QCOMPARE(window.grid().entryOfRow(2), 3);
    QCOMPARE(window.text("filterCount"), u"2 of 4"_s);
    QVERIFY(window.map().scene().dots().empty());
    QTest::mouseClick(window.find<QAbstractButton>("statusLink"), Qt::LeftButton);
    QCOMPARE(window.piCodes().size(), 4);
    QCOMPARE(window.map().scene().dots().size(), std::size_t(2));
    // A search goes past it, as past any filter.
    Q_EMIT window.find<QLabel>("mapNote")->linkActivated(u"#"_s);
    QCOMPARE(window.piCodes().size(), 2);
    window.answers.type(u"F201"_s);
    window.grid().setRow(1);
    window.trigger("menuToolsFind");
    QCOMPARE(window.text("Text1"), u"F201"_s);
    QCOMPARE(window.piCodes().size(), 4);
}

void TestMapInWindow::aChosenRowMovesNothingButThePath()
{
    WindowWithMap window;
    window.open(home, spain + france);
    window.map().zoomIn();
    const MapViewport seen = window.map().viewport();
    window.clickRow(1);
    QCOMPARE(window.map().viewport(), seen);
    QCOMPARE(window.map().scene().path()->name, u"Malaga"_s);
    window.clickRow(2);
    QCOMPARE(window.map().viewport(), seen);
    QCOMPARE(window.map().scene().path()->name, u"Brest"_s);
}

QTEST_MAIN(TestMapInWindow)
#include "tst_mapinwindow.moc"
