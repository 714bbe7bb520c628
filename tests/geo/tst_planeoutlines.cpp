#include "geo/planeoutlines.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

using namespace quillon;

namespace {

bool goesRound(const PlaneLine &ring, QPointF point)
{
    bool inside = false;
    QPointF from = ring.points.back();
    for (const QPointF to : ring.points) {
        if ((from.y() > point.y()) != (to.y() > point.y())
            && point.x() < from.x() + (to.x() - from.x()) * (point.y() - from.y()) / (to.y() - from.y())) {
            inside = !inside;
        }
        from = to;
    }
    return inside;
}

bool isLand(const PlaneOutlines &outlines, QPointF point)
{
    return std::ranges::count_if(
               outlines.land, [point](const PlaneLine &ring) { return goesRound(ring, point); })
        % 2
        == 1;
}

double toleranceOf(OutlineDetail detail)
{
    return detail == OutlineDetail::Fine ? 1 : detail == OutlineDetail::Medium ? 3 : 8;
}

struct Case
{
    const char *name;
    GeoPosition place;
    bool land;
};

// Well away from every coast.
constexpr Case places[] = {
    {"Kassel", {51.3, 9.5}, true},
    {"Madrid", {40.4, -3.7}, true},
    {"Sahara", {23, 5}, true},
    {"Siberia", {65, 100}, true},
    {"China", {35, 108}, true},
    {"Mongolia", {47, 103}, true},
    {"Kansas", {38.5, -98}, true},
    {"Amazonia", {-5, -62}, true},
    {"Pampa", {-35, -64}, true},
    {"Australia", {-25, 134}, true},
    {"Chukotka", {67, -177.5}, true},
    {"Greenland", {72, -40}, true},
    {"near the south pole", {-89.9, 30}, true},
    {"Antarctica", {-80, 120}, true},
    {"Lesotho", {-29.5, 28.2}, true},
    {"near the north pole", {89.9, 50}, false},
    {"Atlantic", {30, -40}, false},
    {"Pacific", {0, -140}, false},
    {"date line", {20, 180}, false},
    {"Indian Ocean", {-30, 80}, false},
    {"Caspian Sea", {42, 51}, false},
    {"Mediterranean", {34, 18}, false},
    {"North Sea", {56, 3}, false},
};

// The last ones have land on the far side.
constexpr Case homes[] = {
    {"Germany", {51, 10}, true},
    {"north pole", {90, 0}, true},
    {"south pole", {-90, 0}, true},
    {"date line", {10, 180}, true},
    {"date line from the west", {66.5, -179.999}, true},
    {"Sydney", {-33.9, 151.2}, true},
    {"opposite of China", {-35.2, -72.3}, true},
    {"opposite of Spain", {-40.5, 176.2}, true},
    {"opposite of the Sahara", {-23.1, -175.2}, true},
    {"on a meridian of a border", {49, -123.5}, true},
};

} // namespace

class TestPlaneOutlines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void landIsLandFromEveryHome_data()
    {
        QTest::addColumn<int>("home");
        QTest::addColumn<int>("detail");
        for (int i = 0; i < static_cast<int>(std::size(homes)); ++i) {
            for (int detail = 0; detail < 3; ++detail) {
                QTest::addRow("%s, detail %d", homes[i].name, detail) << i << detail;
            }
        }
    }

    void landIsLandFromEveryHome()
    {
        QFETCH(int, home);
        QFETCH(int, detail);
        const auto chosen = static_cast<OutlineDetail>(detail);
        const AzimuthalEquidistant projection(homes[home].place);
        const PlaneOutlines outlines = projected(quillon::outlines(chosen), projection, toleranceOf(chosen));
        for (const Case &place : places) {
            QVERIFY2(isLand(outlines, projection.project(place.place)) == place.land, place.name);
        }
    }

    // No edge of a filled ring crosses the map: where it passes the antipode it follows the rim.
    void edgesFollowTheGlobe()
    {
        QRandomGenerator random(20261103);
        const Outlines coarse = outlines(OutlineDetail::Coarse);
        for (int i = 0; i < 40; ++i) {
            const auto &ring = coarse.land[random.bounded(static_cast<quint32>(coarse.land.size()))];
            const GeoPosition vertex = ring[random.bounded(static_cast<quint32>(ring.size()))];
            // The antipode is a point of a coast.
            const GeoPosition home {
                -vertex.latitude, vertex.longitude > 0 ? vertex.longitude - 180 : vertex.longitude + 180};
            const PlaneOutlines outlines = projected(coarse, AzimuthalEquidistant(home), 8);
            for (const PlaneLine &line : outlines.land) {
                QPointF from = line.points.back();
                for (const QPointF to : line.points) {
                    const QPointF middle = (from + to) / 2;
                    const double ends = std::min(std::hypot(from.x(), from.y()), std::hypot(to.x(), to.y()));
                    QVERIFY(std::hypot(middle.x(), middle.y()) > ends - 60);
                    QVERIFY(std::hypot(to.x(), to.y()) < antipodeDistance + 1e-3);
                    from = to;
                }
            }
        }
    }

    void bordersAreWhereTheyAre()
    {
        const AzimuthalEquidistant projection({51, 10});
        const PlaneOutlines outlines = projected(quillon::outlines(OutlineDetail::Coarse), projection, 8);
        // The 49th parallel is no great circle: its middle is followed all the same.
        const QPointF prairie = projection.project({49, -109});
        double nearest = antipodeDistance;
        for (const PlaneLine &line : outlines.borders) {
            for (std::size_t i = 1; i < line.points.size(); ++i) {
                const QPointF along = line.points[i] - line.points[i - 1];
                const QPointF off = prairie - line.points[i - 1];
                const double square = QPointF::dotProduct(along, along);
                const double t =
                    square > 0 ? std::clamp(QPointF::dotProduct(off, along) / square, 0.0, 1.0) : 0;
                const QPointF rest = off - along * t;
                nearest = std::min(nearest, std::hypot(rest.x(), rest.y()));
            }
        }
        QVERIFY2(nearest < 20, qPrintable(QString::number(nearest)));
    }
};

QTEST_GUILESS_MAIN(TestPlaneOutlines)
#include "tst_planeoutlines.moc"
