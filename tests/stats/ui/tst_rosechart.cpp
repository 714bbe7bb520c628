#include "stats/mapdata.h"
#include "stats/ui/rosechart.h"
#include "support/pictures.h"

#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

std::shared_ptr<const DirectionFigures> oneReception(std::size_t direction)
{
    auto figures = std::make_shared<DirectionFigures>();
    figures->counts[direction][mapModeOf(u"Es")] = 1;
    return figures;
}

// How many pixels of a part of a picture are of another colour than its corner.
int marksIn(const QImage &image, QRect part)
{
    const QRgb ground = image.pixel(part.topLeft());
    int count = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            count += image.pixel(x, y) == ground ? 0 : 1;
        }
    }
    return count;
}

} // namespace

/// The directions as they are seen and pointed at.
class TestRoseChart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSingleReceptionCanBeChosen()
    {
        constexpr std::size_t south = 18;
        RoseChart chart;
        chart.resize(500, 400);
        QSignalSpy chosen(&chart, &RoseChart::directionChosen);
        QTest::mouseClick(&chart, Qt::LeftButton, {}, chart.placeOf(south));
        QCOMPARE(chosen.size(), 0);
        chart.setFigures(oneReception(south));
        QTest::mouseClick(&chart, Qt::LeftButton, {}, chart.placeOf(south));
        QCOMPARE(chosen.size(), 1);
        QCOMPARE(chosen.first().first().value<std::size_t>(), south);
        QTest::mouseClick(&chart, Qt::LeftButton, {}, {2, 2});
        QCOMPARE(chosen.size(), 1);
    }

    void theModesHaveTheirNames()
    {
        RoseChart chart;
        chart.resize(500, 400);
        chart.setFigures(oneReception(3));
        const QImage image = painted(chart);
        const QFontMetrics font = chart.fontMetrics();
        const int line = font.height();
        const QRect square(line + 2, line + 2, font.ascent() - 4, font.ascent() - 4);
        QCOMPARE(marksIn(image, square), 0);
        QVERIFY(image.pixel(square.center()) != image.pixel(2, 2));
        const QRect name(line + font.ascent() + 4, line, font.horizontalAdvance(u"Es"_s) + 4, line);
        QVERIFY(marksIn(image, name) > 10);
    }

    // All that stands there is the ground, the colour of the mode, or between these two.
    void theColourOfAModeHasNoEdge()
    {
        RoseChart chart;
        chart.resize(500, 400);
        chart.setFigures(oneReception(3));
        const QImage image = painted(chart);
        const ChartStyle style = ChartStyle::of(chart.palette());
        const QColor colour = style.series(0, 1);
        const auto isBetween = [](int value, int one, int other) {
            return value >= std::min(one, other) - 2 && value <= std::max(one, other) + 2;
        };
        const QFontMetrics font = chart.fontMetrics();
        const QRect square(font.height(), font.height(), font.ascent(), font.ascent());
        const QRect around = square.adjusted(-2, -2, 2, 2);
        for (int y = around.top(); y <= around.bottom(); ++y) {
            for (int x = around.left(); x <= around.right(); ++x) {
                const QColor seen = image.pixelColor(x, y);
                QVERIFY(isBetween(seen.red(), style.ground.red(), colour.red()));
                QVERIFY(isBetween(seen.green(), style.ground.green(), colour.green()));
                QVERIFY(isBetween(seen.blue(), style.ground.blue(), colour.blue()));
            }
        }
    }

    void aPictureIsThreeQuartersAsHighAsItIsWide()
    {
        RoseChart chart;
        chart.setFigures(oneReception(3));
        QCOMPARE(chart.picture().size(), QSize(1920, 1440));
    }
};

QTEST_MAIN(TestRoseChart)
#include "tst_rosechart.moc"
