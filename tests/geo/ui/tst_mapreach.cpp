#include "shownmap.h"

#include <QGestureEvent>
#include <QNativeGestureEvent>
#include <QPinchGesture>
#include <QPointingDevice>
#include <QSignalSpy>
#include <QToolTip>

#include <limits>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

QString pointed(Shown &shown)
{
    const auto dot = shown->pointedDot();
    return dot ? shown->scene().data().sites[shown->scene().dots()[*dot].site].name : QString();
}

// How many pixels around this one have a colour like this.
int pixelsLike(const QImage &image, QPoint pixel, const QColor &colour, int around)
{
    int found = 0;
    const QPoint centre = pixel * image.devicePixelRatio();
    for (int x = -around; x <= around; ++x) {
        for (int y = -around; y <= around; ++y) {
            const QPoint beside = centre + QPoint(x, y);
            found += image.rect().contains(beside) && near(image.pixelColor(beside), colour) ? 1 : 0;
        }
    }
    return found;
}

} // namespace

/// The map by the keyboard and by two fingers, and around homes of every kind.
class TestMapReach : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theKeysReachEachDot()
    {
        Shown shown(around(germany));
        shown->setFocus();
        QCOMPARE(pointed(shown), QString());
        // Sevilla lies to the south-west, Roma to the south-east, Brocken to the east of home.
        QTest::keyClick(&*shown, Qt::Key_Right, Qt::ControlModifier);
        QCOMPARE(pointed(shown), u"Brocken"_s);
        QTest::keyClick(&*shown, Qt::Key_Down, Qt::ControlModifier);
        QCOMPARE(pointed(shown), u"<b>Roma</b>"_s);
        QVERIFY(QToolTip::text().contains(u"&lt;b&gt;Roma&lt;/b&gt;"));
        QTest::keyClick(&*shown, Qt::Key_Left, Qt::ControlModifier);
        QCOMPARE(pointed(shown), u"Sevilla"_s);
        // Beyond the last one nothing happens.
        QTest::keyClick(&*shown, Qt::Key_Left, Qt::ControlModifier);
        QCOMPARE(pointed(shown), u"Sevilla"_s);
        QToolTip::hideText();
    }

    void enterChoosesTheDot()
    {
        Shown shown(around(germany));
        const QSignalSpy chosen(&*shown, &MapView::receptionChosen);
        const QSignalSpy sites(&*shown, &MapView::siteChosen);
        QTest::keyClick(&*shown, Qt::Key_Return);
        QCOMPARE(chosen.count(), 0);
        QTest::keyClick(&*shown, Qt::Key_Right, Qt::ControlModifier);
        QTest::keyClick(&*shown, Qt::Key_Return);
        QCOMPARE(chosen.count(), 1);
        QCOMPARE(chosen[0][0].toInt(), 3);
        QTest::keyClick(&*shown, Qt::Key_Enter, Qt::ControlModifier);
        QCOMPARE(sites.count(), 1);
        QCOMPARE(sites[0][0].toString(), u"Brocken"_s);
        QCOMPARE(sites[0][1].toString(), u"Germany"_s);
        QCOMPARE(chosen.count(), 1);
        QToolTip::hideText();
    }

    void theDotThatTheKeysHaveComeToIsMarked_data()
    {
        QTest::addColumn<bool>("dark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void theDotThatTheKeysHaveComeToIsMarked()
    {
        QFETCH(bool, dark);
        Shown shown(around(germany), dark ? darkColours() : lightColours());
        const QPoint brocken = shown.pixelOf(u"Brocken"_s);
        const MapStyle style = MapStyle::of(shown->palette());
        const int around = static_cast<int>(8 * shown->devicePixelRatioF());
        const int before = pixelsLike(shown->grab().toImage(), brocken, style.path, around);
        QTest::keyClick(&*shown, Qt::Key_Right, Qt::ControlModifier);
        QVERIFY(pixelsLike(shown->grab().toImage(), brocken, style.path, around) > before + 20);
        QAccessibleInterface *map = QAccessible::queryAccessibleInterface(&*shown);
        int focused = 0;
        for (int i = 0; i < map->childCount(); ++i) {
            if (map->child(i)->state().focused) {
                ++focused;
                QVERIFY(map->child(i)->text(QAccessible::Name).startsWith(u"Brocken, Germany, "));
            }
        }
        QCOMPARE(focused, shown->hasFocus() ? 1 : 0);
        QToolTip::hideText();
    }

    void twoFingersOnATouchpadZoomWhereTheyAre()
    {
        Shown shown(around(germany));
        const QPoint sevilla = shown.pixelOf(u"Sevilla"_s);
        const double before = shown->viewport().kmPerPixel();
        const QPointF place(sevilla);
        const QPointF onScreen(shown->mapToGlobal(sevilla));
        QNativeGestureEvent pinch(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, place,
            place, onScreen, 0.25, {});
        QApplication::sendEvent(&*shown, &pinch);
        QVERIFY(std::abs(shown->viewport().kmPerPixel() - before / 1.25) < 1e-9);
        QVERIFY((shown.pixelOf(u"Sevilla"_s) - sevilla).manhattanLength() <= 1);
        // One that would shrink the map to nothing, or beyond, is none.
        const MapViewport seen = shown->viewport();
        for (const double value :
            {-1.0, -1.5, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
            QNativeGestureEvent broken(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2,
                place, place, onScreen, value, {});
            QApplication::sendEvent(&*shown, &broken);
            QCOMPARE(shown->viewport(), seen);
        }
        // Other gestures are not taken for it.
        QNativeGestureEvent turn(Qt::RotateNativeGesture, QPointingDevice::primaryPointingDevice(), 2, place,
            place, onScreen, 0.25, {});
        QApplication::sendEvent(&*shown, &turn);
        QCOMPARE(shown->viewport(), seen);
    }

    void twoFingersOnAScreenZoomWhereTheyAre()
    {
        Shown shown(around(germany));
        const QPoint sevilla = shown.pixelOf(u"Sevilla"_s);
        const double before = shown->viewport().kmPerPixel();
        QPinchGesture pinch;
        pinch.setScaleFactor(1.5);
        pinch.setCenterPoint(shown->mapToGlobal(QPointF(sevilla)));
        QGestureEvent event({&pinch});
        QApplication::sendEvent(&*shown, &event);
        QVERIFY(std::abs(shown->viewport().kmPerPixel() - before / 1.5) < 1e-9);
        QVERIFY((shown.pixelOf(u"Sevilla"_s) - sevilla).manhattanLength() <= 1);
        const MapViewport seen = shown->viewport();
        pinch.setScaleFactor(0);
        QApplication::sendEvent(&*shown, &event);
        QCOMPARE(shown->viewport(), seen);
    }

    // The path is straight, its middle half-way, and distance and azimuth are those of the geodesic.
    void thePathIsTrueAroundEveryHome_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");
        QTest::addColumn<bool>("dark");
        for (const bool dark : {false, true}) {
            const auto row = [dark](const char *name, double latitude, double longitude) {
                QTest::addRow("%s, %s", name, dark ? "dark" : "light") << latitude << longitude << dark;
            };
            row("north pole", 90, 0);
            row("south pole", -90, 0);
            row("date line, east", 17, 180);
            row("date line, west", 17, -180);
            row("southern half", -33.9, 151.2);
        }
    }

    void thePathIsTrueAroundEveryHome()
    {
        QFETCH(double, latitude);
        QFETCH(double, longitude);
        QFETCH(bool, dark);
        const GeoPosition home {latitude, longitude};
        // Over the pole, or over the date line.
        const GeoPosition there {latitude + (latitude > 0 ? -14 : 14), longitude > 0 ? -171.0 : 171.0};
        MapData data;
        data.home = home;
        data.sites = {site(u"There"_s, u"X"_s, there, u"Es", 3, 5)};
        Shown shown(data, dark ? darkColours() : lightColours());
        shown->setPath(MapPath {u"There"_s, there});
        const MapStyle style = MapStyle::of(shown->palette());
        const QImage image = shown->grab().toImage();
        const QPointF end = shown->scene().pointOf(there);
        const Leg leg = legBetween(home, there);
        QVERIFY(std::abs(std::hypot(end.x(), end.y()) - leg.kilometres) < leg.kilometres * 0.006);
        for (const double share : {0.25, 0.5, 0.75}) {
            const QPoint pixel = shown->viewport().toPixel(end * share).toPoint();
            QVERIFY(pixelsLike(image, pixel, style.path, 3) > 2);
        }
        QCOMPARE(childNames(*shown).size(), 1);
        QVERIFY(childNames(*shown).front().contains(azimuthText(leg.azimuth)));
    }
};

QTEST_MAIN(TestMapReach)
#include "tst_mapreach.moc"
