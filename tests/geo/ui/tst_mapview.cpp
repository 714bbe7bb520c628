#include "shownmap.h"

#include "geo/ui/mapclouds.h"
#include "geo/ui/maplegend.h"
#include "geo/ui/mapview.h"
#include "support/paintings.h"
#include "support/pictures.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QImage>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

enum class Ground { Sea, Land, Beyond };

// What stands at each pixel, row by row: a point is land when an odd number of edges lies to its left.
std::vector<std::vector<Ground>> plainGround(const MapView &view)
{
    std::vector<std::vector<double>> edges(static_cast<std::size_t>(view.height()));
    for (const PlaneLine &ring : view.scene().outlines(OutlineDetail::Fine).land) {
        QPointF from = view.viewport().toPixel(ring.points.back());
        for (const QPointF point : ring.points) {
            const QPointF to = view.viewport().toPixel(point);
            const double top = std::min(from.y(), to.y());
            const double bottom = std::max(from.y(), to.y());
            for (int y = std::max(0, static_cast<int>(std::ceil(top)));
                 y < std::min<double>(bottom, view.height()); ++y) {
                edges[static_cast<std::size_t>(y)].push_back(
                    from.x() + (to.x() - from.x()) * (y - from.y()) / (to.y() - from.y()));
            }
            from = to;
        }
    }
    std::vector<std::vector<Ground>> ground(edges.size());
    for (int y = 0; y < view.height(); ++y) {
        for (int x = 0; x < view.width(); ++x) {
            const QPointF plane = view.viewport().toPlane(QPointF(x, y));
            const auto left = std::ranges::count_if(
                edges[static_cast<std::size_t>(y)], [x](double edge) { return edge < x; });
            ground[static_cast<std::size_t>(y)].push_back(std::hypot(plane.x(), plane.y()) > antipodeDistance
                    ? Ground::Beyond
                    : left % 2 == 1 ? Ground::Land
                                    : Ground::Sea);
        }
    }
    return ground;
}

// The first place, well off each coast, that does not look as it has to; or that too few of them can be told.
QString wrongGround(Shown &shown, const MapStyle &style)
{
    constexpr int step = 5;
    constexpr int around = 3;
    constexpr int margin = around + 2;
    const QImage image = shown->grab().toImage();
    const auto ground = plainGround(*shown);
    const std::array colours {style.sea, style.land, style.beyond};
    const auto at = [&](int x, int y) {
        return ground[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
    };
    const auto isClear = [&](int x, int y) {
        for (int i = 0; i < (2 * margin + 1) * (2 * margin + 1); ++i) {
            if (at(x + i % (2 * margin + 1) - margin, y + i / (2 * margin + 1) - margin) != at(x, y)) {
                return false;
            }
        }
        return true;
    };
    int clear = 0;
    int sure = 0;
    for (int x = margin; x < shown->width() - margin; x += step) {
        for (int y = margin; y < shown->height() - margin; y += step) {
            if (!isClear(x, y)) {
                continue;
            }
            ++clear;
            // A ring, a ray, a border or a name may pass here, but does not cover all of the surroundings.
            std::array<int, 3> seen {};
            for (int i = 0; i < (2 * around + 1) * (2 * around + 1); ++i) {
                const QPoint beside(i % (2 * around + 1) - around, i / (2 * around + 1) - around);
                const QColor colour = image.pixelColor(QPoint(x, y) * image.devicePixelRatio() + beside);
                for (std::size_t kind = 0; kind < colours.size(); ++kind) {
                    seen[kind] += colour == colours[kind] ? 1 : 0;
                }
            }
            const int right = seen[static_cast<std::size_t>(at(x, y))];
            if (std::ranges::max(seen) > std::max(right, 20)) {
                const QPointF plane = shown->viewport().toPlane(QPointF(x, y));
                return u"pixel %1, %2, on the plane %3, %4"_s.arg(x).arg(y).arg(plane.x()).arg(plane.y());
            }
            sure += right > 20 ? 1 : 0;
        }
    }
    return clear > 1000 && sure > clear * 0.8 ? QString() : u"%1 of %2 are told"_s.arg(sure).arg(clear);
}

} // namespace

class TestMapView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void landAndSeaAreWhereTheyAre_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");
        QTest::addColumn<bool>("dark");
        for (const bool dark : {false, true}) {
            const auto row = [dark](const char *name, double latitude, double longitude) {
                QTest::addRow("%s, %s", name, dark ? "dark" : "light") << latitude << longitude << dark;
            };
            row("Germany", 51.34, 6.57);
            row("north pole", 90, 10);
            row("south pole", -90, 10);
            row("date line", 10, 180);
            row("southern half", -33.9, 151.2);
            row("opposite of Spain", -40.5, 176.2);
        }
    }

    void landAndSeaAreWhereTheyAre()
    {
        QFETCH(double, latitude);
        QFETCH(double, longitude);
        QFETCH(bool, dark);
        MapData data;
        data.home = GeoPosition {latitude, longitude};
        // Far away, so that the whole globe is in sight.
        data.sites = {site(
            u"Far"_s, u"X"_s, {-latitude, longitude > 0 ? longitude - 179 : longitude + 179}, u"Es", 1, 1)};
        Shown shown(data, dark ? darkColours() : lightColours());
        const MapStyle style = MapStyle::of(shown->palette());
        QCOMPARE(style.dark, dark);
        // The whole globe, and twice nearer: outlines of each detail, cut at the edges.
        for (const int notches : dark ? std::vector {0} : std::vector {0, 5, 7}) {
            if (notches > 0) {
                shown.wheel(shown.pixelAt({42, 51}), notches * 120);
                QTest::qWait(250);
            }
            const QString wrong = wrongGround(shown, style);
            QVERIFY2(wrong.isEmpty(),
                qPrintable(u"%1 km a pixel: %2"_s.arg(shown->viewport().kmPerPixel()).arg(wrong)));
        }
    }

    // Every direction and every distance from home is true, north up and east to the right.
    void placesStandWhereTheGeodesicLeads()
    {
        Shown shown(around(germany));
        const QPointF middle = QRectF(shown->rect()).center();
        for (const GeoPosition place : {GeoPosition {60, 6.57}, {51, 20}, {37.4, -6.0}, {41.9, 12.5}}) {
            const Leg leg = legBetween(germany, place);
            const double azimuth = leg.azimuth * std::numbers::pi / 180;
            const double pixels = leg.kilometres / shown->viewport().kmPerPixel();
            const QPointF expected =
                middle + QPointF(pixels * std::sin(azimuth), -pixels * std::cos(azimuth));
            const QPointF off = expected - QPointF(shown.pixelAt(place));
            QVERIFY2(std::hypot(off.x(), off.y()) < 2.5, qPrintable(u"%1, %2"_s.arg(off.x()).arg(off.y())));
        }
    }

    // The first ring is drawn at its distance, and the rays of the rose lead away from home.
    void ringsAndRaysAreDrawn()
    {
        MapData data;
        data.home = GeoPosition {30, -40};
        data.sites = {site(u"Sea"_s, u"X"_s, {30.5, -40}, u"Es", 1, 1)};
        for (const DistanceUnit unit : {DistanceUnit::Kilometres, DistanceUnit::Miles}) {
            data.unit = unit;
            Shown shown(data);
            const MapStyle style = MapStyle::of(shown->palette());
            const QImage image = shown->grab().toImage();
            const double ratio = image.devicePixelRatio();
            const auto isMarked = [&](double distance, double degrees) {
                const double angle = degrees * std::numbers::pi / 180;
                const QPointF pixel =
                    shown->viewport().toPixel(distance * QPointF(std::sin(angle), std::cos(angle)));
                int marked = 0;
                for (int x = -2; x <= 2; ++x) {
                    for (int y = -2; y <= 2; ++y) {
                        marked +=
                            image.pixelColor((pixel * ratio).toPoint() + QPoint(x, y)) != style.sea ? 1 : 0;
                    }
                }
                return marked > 0;
            };
            const double step = 500 * kilometresPer(unit);
            for (const double degrees : {101.0, 191.0, 281.0}) {
                QVERIFY(isMarked(step, degrees));
                QVERIFY(!isMarked(step * 0.9, degrees));
                QVERIFY(!isMarked(step * 1.1, degrees));
            }
            for (const double degrees : {112.5, 180.0, 247.5}) {
                QVERIFY(isMarked(step * 1.1, degrees));
            }
        }
    }

    void coastsAndBordersAreLines()
    {
        Shown shown(around(germany));
        const MapStyle style = MapStyle::of(shown->palette());
        QTest::qWait(250);
        QImage image = shown->grab().toImage();
        const auto share = [&](const std::vector<PlaneLine> &lines, const QColor &colour) {
            int points = 0;
            int drawn = 0;
            for (const PlaneLine &line : lines) {
                for (const QPointF point : line.points) {
                    const QPoint pixel =
                        (shown->viewport().toPixel(point) * image.devicePixelRatio()).toPoint();
                    if (!image.rect().adjusted(9, 9, -9, -9).contains(pixel)) {
                        continue;
                    }
                    ++points;
                    bool found = false;
                    for (int i = 0; i < 9 && !found; ++i) {
                        found = near(image.pixelColor(pixel + QPoint(i % 3 - 1, i / 3 - 1)), colour);
                    }
                    drawn += found ? 1 : 0;
                }
            }
            return points > 100 ? static_cast<double>(drawn) / points : 0;
        };
        const PlaneOutlines &outlines = shown->scene().outlines(OutlineDetail::Fine);
        QVERIFY(share(outlines.land, style.coast) > 0.9);
        QVERIFY(share(outlines.borders, style.border) > 0.9);
        // Nearer, every bay of the fjords.
        shown.wheel(shown.pixelAt({61, 5.5}), 5 * 120);
        QTest::qWait(250);
        image = shown->grab().toImage();
        const double fjords = share(outlines.land, style.coast);
        QVERIFY2(fjords > 0.9, qPrintable(QString::number(fjords)));
    }

    void dotsHaveTheColourOfTheirMode_data()
    {
        QTest::addColumn<bool>("dark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void dotsHaveTheColourOfTheirMode()
    {
        QFETCH(bool, dark);
        Shown shown(around(germany), dark ? darkColours() : lightColours());
        const MapStyle style = MapStyle::of(shown->palette());
        QVERIFY(near(shown.colourAt(shown.pixelOf(u"Sevilla"_s)), style.mode(esMode)));
        QVERIFY(near(shown.colourAt(shown.pixelOf(u"Brocken"_s)), style.mode(mapModeOf(u"Tropo"))));
        // Today's are brighter: their middle is white.
        QVERIFY(shown.colourAt(shown.pixelOf(u"<b>Roma</b>"_s)).lightness() > 220);
    }

    void dotsGrowWithTheirReceptions_data()
    {
        QTest::addColumn<int>("receptions");
        QTest::addColumn<double>("radius");
        QTest::newRow("none that is known") << 0 << 3.0;
        QTest::newRow("one") << 1 << 3.0;
        QTest::newRow("two") << 2 << 3.85;
        QTest::newRow("eight") << 8 << 5.55;
        QTest::newRow("very many") << 32498 << 11.0;
    }

    void dotsGrowWithTheirReceptions()
    {
        QFETCH(int, receptions);
        QFETCH(double, radius);
        QVERIFY(std::abs(dotRadius(receptions) - radius) < 1e-9);
        if (receptions == 0) {
            return;
        }
        // As wide as that it is drawn, and as far it is pointed at.
        MapData data;
        data.home = GeoPosition {30, -40};
        data.sites = {site(u"Sea"_s, u"X"_s, {30, -34}, u"Es", receptions, 7)};
        Shown shown(data);
        const MapStyle style = MapStyle::of(shown->palette());
        const QPoint middle = shown.pixelOf(u"Sea"_s);
        const QImage image = shown->grab().toImage();
        const double ratio = image.devicePixelRatio();
        int wide = 0;
        for (int x = -40; x <= 40; ++x) {
            wide +=
                near(image.pixelColor((QPointF(middle) * ratio).toPoint() + QPoint(x, 0)), style.mode(esMode))
                ? 1
                : 0;
        }
        QVERIFY2(std::abs(wide / ratio - (2 * radius - 1)) <= 1.5, qPrintable(QString::number(wide / ratio)));
        const QSignalSpy chosen(&*shown, &MapView::receptionChosen);
        const auto reach = static_cast<int>(std::floor(radius));
        QTest::mouseClick(&*shown, Qt::LeftButton, {}, middle + QPoint(0, reach + 4));
        QCOMPARE(chosen.count(), 0);
        QTest::mouseClick(&*shown, Qt::LeftButton, {}, middle + QPoint(0, reach));
        QCOMPARE(chosen.count(), 1);
    }

    void theLegendSwitchesModesOff()
    {
        Shown shown(around(germany));
        auto *es = shown->findChild<QCheckBox *>(u"mapModeEs"_s);
        QVERIFY(es->isVisible());
        QVERIFY(es->text().contains(u"24"));
        QVERIFY(shown->findChild<QCheckBox *>(u"mapModeTropo"_s)->isVisible());
        QVERIFY(!shown->findChild<QCheckBox *>(u"mapModeMS"_s)->isVisible());
        const QPoint sevilla = shown.pixelOf(u"Sevilla"_s);
        const QColor before = shown.colourAt(sevilla);
        QTest::mouseClick(es, Qt::LeftButton, {}, QPoint(8, es->height() / 2));
        QVERIFY(!es->isChecked());
        QCOMPARE(shown->scene().dots().size(), std::size_t(1));
        QVERIFY(!near(shown.colourAt(sevilla), before));
        QTest::mouseClick(es, Qt::LeftButton, {}, QPoint(8, es->height() / 2));
        QCOMPARE(shown->scene().dots().size(), std::size_t(3));
    }

    void aClickChoosesTheLastReception()
    {
        Shown shown(around(germany));
        const QSignalSpy chosen(&*shown, &MapView::receptionChosen);
        const QSignalSpy sites(&*shown, &MapView::siteChosen);
        QTest::mouseClick(&*shown, Qt::LeftButton, {}, shown.pixelOf(u"Sevilla"_s));
        QCOMPARE(chosen.count(), 1);
        QCOMPARE(chosen[0][0].toInt(), 7);
        QTest::mouseClick(&*shown, Qt::LeftButton, Qt::ControlModifier, shown.pixelOf(u"Brocken"_s));
        QCOMPARE(sites.count(), 1);
        QCOMPARE(sites[0][0].toString(), u"Brocken"_s);
        QCOMPARE(sites[0][1].toString(), u"Germany"_s);
        QTest::mouseClick(&*shown, Qt::LeftButton, {}, QPoint(400, 20));
        QCOMPARE(chosen.count(), 1);
    }

    void draggingMovesAndChoosesNothing()
    {
        Shown shown(around(germany));
        const QSignalSpy chosen(&*shown, &MapView::receptionChosen);
        const QPoint start = shown.pixelOf(u"Sevilla"_s);
        const QPoint way(60, -40);
        QTest::mousePress(&*shown, Qt::LeftButton, {}, start);
        QTest::mouseMove(&*shown, start + way / 2);
        QTest::mouseMove(&*shown, start + way);
        QTest::mouseRelease(&*shown, Qt::LeftButton, {}, start + way);
        QCOMPARE(shown.pixelOf(u"Sevilla"_s), start + way);
        QCOMPARE(chosen.count(), 0);
    }

    void theWheelZoomsAtThePointer()
    {
        Shown shown(around(germany));
        const QPoint sevilla = shown.pixelOf(u"Sevilla"_s);
        const double before = shown->viewport().kmPerPixel();
        shown.wheel(sevilla, 120);
        QVERIFY(shown->viewport().kmPerPixel() < before);
        QVERIFY((shown.pixelOf(u"Sevilla"_s) - sevilla).manhattanLength() <= 1);
        shown.wheel(sevilla, -120);
        QVERIFY(std::abs(shown->viewport().kmPerPixel() - before) < 1e-9);
    }

    void keysAndDoubleClicksZoom()
    {
        Shown shown(around(germany));
        const MapViewport whole = shown->viewport();
        QTest::keyClick(&*shown, Qt::Key_Plus);
        const double once = shown->viewport().kmPerPixel();
        QVERIFY(once < whole.kmPerPixel());
        QTest::mouseDClick(&*shown, Qt::LeftButton, {}, QPoint(100, 100));
        QVERIFY(std::abs(shown->viewport().kmPerPixel() - once / 2) < 1e-9);
        QTest::keyClick(&*shown, Qt::Key_Minus);
        QVERIFY(shown->viewport().kmPerPixel() > once / 2);
        QTest::keyClick(&*shown, Qt::Key_Left);
        QTest::keyClick(&*shown, Qt::Key_Home);
        QCOMPARE(shown->viewport(), whole);
    }

    void zoomIsBounded()
    {
        Shown shown(around(germany));
        for (int i = 0; i < 100; ++i) {
            shown->zoomOut();
        }
        QVERIFY(shown->viewport().kmPerPixel() < 100);
        for (int i = 0; i < 200; ++i) {
            shown->zoomIn();
        }
        QVERIFY(shown->viewport().kmPerPixel() >= 0.05);
        QVERIFY(!shown->grab().isNull());
    }

    void choosingARowMovesNothingButThePath()
    {
        Shown shown(around(germany));
        const MapViewport before = shown->viewport();
        const QImage without = shown->grab().toImage();
        shown->setPath(MapPath {u"Sevilla"_s, {37.4, -6.0}});
        QCOMPARE(shown->viewport(), before);
        const MapStyle style = MapStyle::of(shown->palette());
        // A straight line with a mark in its middle.
        const QPointF end = shown->scene().pointOf({37.4, -6.0});
        for (const double share : {0.2, 0.5, 0.8}) {
            const QPoint pixel = shown->viewport().toPixel(end * share).toPoint();
            int found = 0;
            for (int x = -1; x <= 1; ++x) {
                found += near(shown.colourAt(pixel + QPoint(x, 0)), style.path) ? 1 : 0;
            }
            QVERIFY(found > 0);
        }
        shown->setPath({});
        QCOMPARE(shown->grab().toImage(), without);
    }

    void anotherPathIsPaintedAtOnce()
    {
        Shown shown(around(germany));
        // Until the outlines are there in full, and nothing else is painted.
        Paintings paintings(*shown);
        int before = -1;
        QTRY_VERIFY(std::exchange(before, paintings.count) == paintings.count);
        shown->setPath(MapPath {u"Sevilla"_s, {37.4, -6.0}});
        QTRY_VERIFY(paintings.count > before);
    }

    void otherReceptionsLeaveWhatIsSeen()
    {
        Shown shown(around(germany));
        shown->zoomIn();
        const MapViewport seen = shown->viewport();
        MapData fewer = around(germany);
        fewer.sites.pop_back();
        shown->setData(fewer);
        QCOMPARE(shown->viewport(), seen);
        shown->setData(around({40, 0}));
        QCOMPARE(shown->viewport().centre(), QPointF(0, 0));
    }

    void theTipTellsTheSite()
    {
        Shown shown(around(germany));
        const QPoint roma = shown.pixelOf(u"<b>Roma</b>"_s);
        QHelpEvent help(QEvent::ToolTip, roma, shown->mapToGlobal(roma));
        QApplication::sendEvent(&*shown, &help);
        const QString text = QToolTip::text();
        QVERIFY(text.contains(u"&lt;b&gt;Roma&lt;/b&gt;"));
        const Leg leg = legBetween(germany, {41.9, 12.5});
        for (const QString &part : {u"Italy"_s, distanceText(leg.kilometres, DistanceUnit::Kilometres),
                 azimuthText(leg.azimuth), u"4 receptions"_s, u"05/06/2026 17:30:00"_s}) {
            QVERIFY2(text.contains(part), qPrintable(part));
        }
        QToolTip::hideText();
    }

    void assistiveToolsSeeTheDotsInSight()
    {
        Shown shown(around(germany));
        QStringList names = childNames(*shown);
        QCOMPARE(names.size(), 3);
        QVERIFY(names.filter(u"Sevilla, Spain, "_s).value(0).contains(u"20 receptions"));
        QAccessibleInterface *map = QAccessible::queryAccessibleInterface(&*shown);
        const QPoint sevilla = shown.pixelOf(u"Sevilla"_s);
        const QPoint onScreen = shown->mapToGlobal(sevilla);
        QAccessibleInterface *dot = map->childAt(onScreen.x(), onScreen.y());
        QVERIFY(dot && dot->rect().contains(onScreen));
        QCOMPARE(dot->parent(), map);
        QCOMPARE(map->child(map->indexOfChild(dot)), dot);
        const QSignalSpy chosen(&*shown, &MapView::receptionChosen);
        dot->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(chosen.count(), 1);
        QCOMPARE(chosen[0][0].toInt(), 7);
        // Out of sight is out of the list; other data make the old dots invalid.
        QTest::mouseDClick(&*shown, Qt::LeftButton, {}, sevilla);
        for (int i = 0; i < 8; ++i) {
            shown.wheel(sevilla, 240);
        }
        QCOMPARE(childNames(*shown).size(), 1);
        shown->setModeShown(esMode, false);
        QCOMPARE(childNames(*shown).size(), 0);
    }

    void theCloudsStandOverTheMiddles_data() { dotsHaveTheColourOfTheirMode_data(); }

    void theCloudsStandOverTheMiddles()
    {
        QFETCH(bool, dark);
        Shown shown(around(germany), dark ? darkColours() : lightColours());
        const QImage before = shown->grab().toImage();
        shown->setClouds(true);
        const QPointF sevilla = shown->scene().pointOf({37.4, -6.0});
        const QPoint middle = shown->viewport().toPixel(sevilla / 2).toPoint();
        QVERIFY(near(shown.colourAt(middle), MapStyle::of(shown->palette()).density(1)));
        QVERIFY(shown->accessibleDescription().contains(u"24 Es paths"));
        QVERIFY(childNames(*shown).isEmpty());
        QVERIFY(!shown->findChild<MapLegend *>(u"mapLegend"_s)->isVisible());
        shown->setClouds(false);
        QCOMPARE(shown->grab().toImage(), before);
    }

    void aCloudStandsRoundItsMiddle()
    {
        MapData data = around(germany);
        data.sites.resize(1);
        Shown shown(data);
        shown->setClouds(true);
        const CloudPicture cloud =
            cloudPicture(shown->scene(), shown->viewport(), MapStyle::of(shown->palette()));
        QPointF sum;
        int count = 0;
        for (int y = 0; y < cloud.image.height(); ++y) {
            for (int x = 0; x < cloud.image.width(); ++x) {
                const bool isIn = cloud.image.pixelColor(x, y).alpha() > 0;
                sum += isIn ? QPointF(x + 0.5, y + 0.5) : QPointF();
                count += isIn ? 1 : 0;
            }
        }
        QVERIFY(count > 20);
        const QSizeF cell(
            cloud.place.width() / cloud.image.width(), cloud.place.height() / cloud.image.height());
        const QPointF centre = sum / count;
        const QPointF middle =
            shown->viewport().toPixel(shown->scene().pointOf({37.4, -6.0}) / 2) - cloud.place.topLeft();
        QVERIFY(std::abs(centre.x() - middle.x() / cell.width()) < 1.5);
        QVERIFY(std::abs(centre.y() - middle.y() / cell.height()) < 1.5);
    }

    void theHighestMufOfEachHourStandsBesideTheClouds()
    {
        Shown shown(around(germany));
        shown->setClouds(true);
        const QRect panel =
            mufPanelPlace(shown->scene(), QSizeF(shown->size()), shown->font()).toAlignedRect();
        QVERIFY(!panel.isEmpty());
        const QImage with = shown->grab(panel).toImage();
        const QColor best = MapStyle::of(shown->palette()).mode(esMode);
        QCOMPARE(areasOf(with, best.rgb()).size(), std::size_t(1));
        MapData without = around(germany);
        without.highestMuf = {};
        shown->setData(without);
        QVERIFY(mufPanelPlace(shown->scene(), QSizeF(shown->size()), shown->font()).isEmpty());
        const QImage nothing = shown->grab(panel).toImage();
        QVERIFY(nothing != with);
        QCOMPARE(areasOf(nothing, best.rgb()).size(), std::size_t(0));
    }

    void pathsOfSeveralHopsCastNoCloud()
    {
        MapData data = around(germany);
        data.sites = {site(u"Boston"_s, u"USA"_s, {42.3, -71}, u"Es", 2, 1)};
        Shown shown(data);
        shown->setClouds(true);
        const CloudCounts counts = cloudCounts(shown->scene());
        QCOMPARE(counts.counted, 0);
        QCOMPARE(counts.beyondOneHop, 2);
        QVERIFY(shown->accessibleDescription().contains(u"2 of more than one hop left out"));
    }

    void withoutHomeItLeadsToTheSetup()
    {
        MapData data = around(germany);
        data.home.reset();
        Shown shown(data);
        auto *label = shown->findChild<QLabel *>(u"mapNoHome"_s);
        QVERIFY(label->isVisible());
        const QSignalSpy wanted(&*shown, &MapView::setupWanted);
        Q_EMIT label->linkActivated(u"#"_s);
        QCOMPARE(wanted.count(), 1);
        // Nothing of this needs a home.
        QTest::mouseClick(&*shown, Qt::LeftButton, {}, QPoint(100, 100));
        QTest::keyClick(&*shown, Qt::Key_Plus);
        QTest::keyClick(&*shown, Qt::Key_Left);
        shown->setClouds(true);
        shown->setPath(MapPath {u"Sevilla"_s, {37.4, -6.0}});
        QVERIFY(!shown->grab().isNull());
        QVERIFY(!mapSvg(shown->picture(), {300, 200}).isEmpty());
        QCOMPARE(childNames(*shown), QStringList());
    }

    void aLogWithNoSiteOneAndMany()
    {
        MapData data;
        data.home = germany;
        Shown shown(data);
        QVERIFY(!shown->grab().isNull());
        QVERIFY(!shown->findChild<MapLegend *>(u"mapLegend"_s)->isVisible());
        data.sites = {site(u"Home"_s, u"X"_s, germany, u"Es", 1, 1)};
        shown->setData(data);
        QCOMPARE(childNames(*shown).size(), 1);
        QVERIFY(shown->findChild<MapLegend *>(u"mapLegend"_s)->isVisible());
        data.sites.clear();
        for (int i = 0; i < 5001; ++i) {
            data.sites.push_back(site(QString::number(i), u"X"_s, {-89.0 + i % 178, i % 360 - 179.5},
                propagationModes[static_cast<std::size_t>(i) % 7], 1 + i % 90, i));
        }
        shown->setData(data);
        shown->showAll();
        QCOMPARE(childNames(*shown).size(), 5001);
        QVERIFY(!shown->grab().isNull());
    }

    void aPictureHoldsAllThatIsShown_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("high") << QSize(300, 900);
        QTest::newRow("wide") << QSize(1200, 300);
        QTest::newRow("as it is") << QSize(800, 600);
    }

    void aPictureHoldsAllThatIsShown()
    {
        QFETCH(QSize, size);
        Shown shown(around(germany));
        const MapPicture picture = shown->picture();
        const double times = std::max(800.0 / size.width(), 600.0 / size.height());
        const MapViewport viewport(picture.viewport.centre(), picture.viewport.kmPerPixel() * times, size);
        const QPoint sevilla = viewport.toPixel(shown->scene().pointOf({37.4, -6.0})).toPoint();
        QVERIFY(QRect({}, size).contains(sevilla));
        QVERIFY(near(mapImage(picture, size).pixelColor(sevilla), picture.style.mode(esMode)));
    }

    void theLegendOfAPictureHasAGround()
    {
        Shown shown(around(germany));
        constexpr QSize size(600, 500);
        const QPoint inLegend(12, size.height() - 12);
        const QColor with = mapImage(shown->picture(), size).pixelColor(inLegend);
        shown->setModeShown(esMode, false);
        shown->setModeShown(mapModeOf(u"Tropo"), false);
        const QColor without = mapImage(shown->picture(), size).pixelColor(inLegend);
        QVERIFY(with != without);
        QVERIFY(with.lightness() > without.lightness());
    }

    void picturesHaveAnySize()
    {
        Shown shown(around(germany));
        for (const QSize size : {QSize(100, 100), QSize(2000, 900), QSize(640, 3000)}) {
            const QImage image = QImage::fromData(pictureBytes(shown->picture(), size, u"map.png"_s));
            QCOMPARE(image.size(), size);
        }
        shown->setPath(MapPath {u"<b>Roma</b>"_s, {41.9, 12.5}});
        const QByteArray svg = pictureBytes(shown->picture(), {1234, 777}, u"map.SVG"_s);
        QVERIFY(svg.contains("viewBox=\"0 0 1234 777\""));
        QVERIFY(svg.contains("Tropo: Brocken"));
        QVERIFY(svg.contains("&lt;b&gt;Roma"));
        shown->copyPicture({500, 400});
        QCOMPARE(QApplication::clipboard()->image().size(), QSize(500, 400));
    }
};

QTEST_MAIN(TestMapView)
#include "tst_mapview.moc"
