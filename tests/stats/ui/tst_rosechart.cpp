#include "stats/mapdata.h"
#include "stats/ui/rosechart.h"

#include <QSignalSpy>
#include <QTest>

using namespace quillon;
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
        const QImage image = chart.grab().toImage();
        const QFontMetrics font = chart.fontMetrics();
        const int line = font.height();
        const QRect square(line + 2, line + 2, font.ascent() - 4, font.ascent() - 4);
        QCOMPARE(marksIn(image, square), 0);
        QVERIFY(image.pixel(square.center()) != image.pixel(2, 2));
        const QRect name(line + font.ascent() + 4, line, font.horizontalAdvance(u"Es"_s) + 4, line);
        QVERIFY(marksIn(image, name) > 10);
    }
};

QTEST_MAIN(TestRoseChart)
#include "tst_rosechart.moc"
