#include "geo/way.h"

#include "geo/azimuthal.h"

#include <QTest>

#include <cmath>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestWay : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itBendsAsTheShortestWayDoes()
    {
        const auto lines = wayBetween({50, -5}, {50, 40});
        QCOMPARE(lines.size(), std::size_t(1));
        QCOMPARE(lines[0].front(), (GeoPosition {50, -5}));
        QCOMPARE(lines[0].back(), (GeoPosition {50, 40}));
        QVERIFY(lines[0].size() > 30);
        QVERIFY(std::ranges::max(lines[0], {}, &GeoPosition::latitude).latitude > 52);
    }

    void noStepIsLong()
    {
        const auto lines = wayBetween({51.5, -0.1}, {35, 33});
        for (std::size_t i = 1; i < lines[0].size(); ++i) {
            const QPointF step = AzimuthalEquidistant(lines[0][i - 1]).project(lines[0][i]);
            QVERIFY(std::hypot(step.x(), step.y()) < 101);
        }
    }

    void itIsCutAtTheDateLine()
    {
        const auto lines = wayBetween({-18, 178}, {-14, -171});
        QCOMPARE(lines.size(), std::size_t(2));
        QCOMPARE(lines[0].back().longitude, 180.0);
        QCOMPARE(lines[1].front().longitude, -180.0);
        QCOMPARE(lines[0].back().latitude, lines[1].front().latitude);
        const auto back = wayBetween({-14, -171}, {-18, 178});
        QCOMPARE(back[0].back().longitude, -180.0);
        QCOMPARE(back[1].front().longitude, 180.0);
    }

    void fromHomeToHomeIsALine()
    {
        const auto lines = wayBetween({50, 7}, {50, 7});
        QCOMPARE(lines.size(), std::size_t(1));
        QCOMPARE(lines[0].size(), std::size_t(2));
    }
};

QTEST_GUILESS_MAIN(TestWay)
#include "tst_way.moc"
