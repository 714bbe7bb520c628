#include "stats/collectiontables.h"
#include "stats/ui/calendarchart.h"
#include "support/pictures.h"
#include "ui/chartcontrol_style.h"

#include <QBuffer>
#include <QPainter>
#include <QSignalSpy>
#include <QSvgGenerator>
#include <QTest>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

using Years = std::vector<YearFigures>;

// Begins on a Sunday and has 366 days, so that it touches 54 weeks.
constexpr int longest = 2012;
constexpr int lastDay = 365;

Years oneYear()
{
    YearFigures year;
    year.year = longest;
    year.days[100] = 1;
    year.days[200] = 30;
    year.count = 31;
    year.daysWithReceptions = 2;
    return {year};
}

struct Shown
{
    explicit Shown(const Years &years, int width = 1200)
    {
        chart.resize(width, 400);
        chart.setYears(std::make_shared<const Years>(years));
    }
    [[nodiscard]] QColor colourOf(int day)
    {
        return painted(chart).pixelColor(chart.dayPlace(0, day).center().toPoint());
    }

    CalendarChart chart;
};

/// What is painted, as a document with its texts.
QByteArray written(CalendarChart &chart)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(chart.size());
    QPainter painter(&generator);
    chart.render(&painter);
    painter.end();
    return bytes;
}

bool hasText(const QByteArray &document, const QByteArray &text)
{
    return document.contains(QByteArray('>' + text + '<'));
}

} // namespace

/// The days of the years as they are seen and pointed at.
class TestCalendarChart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutYearsItSaysSo()
    {
        CalendarChart chart;
        chart.resize(600, 300);
        QVERIFY(written(chart).contains("No receptions."));
        chart.setYears(std::make_shared<const Years>());
        QVERIFY(written(chart).contains("No receptions."));
        chart.setYears(std::make_shared<const Years>(oneYear()));
        QVERIFY(!written(chart).contains("No receptions."));
    }

    void aDayHasTheColourOfItsReceptions()
    {
        Shown shown(oneYear());
        const ChartStyle style = ChartStyle::of(shown.chart.palette());
        QCOMPARE(shown.colourOf(99).rgb(), style.grid.rgb());
        QCOMPARE(shown.colourOf(200).rgb(), style.series(0, 1).rgb());
        QVERIFY(shown.colourOf(100).rgb() != style.grid.rgb());
        QVERIFY(shown.colourOf(100).rgb() != style.series(0, 1).rgb());
    }

    void eachWeekIsInSight()
    {
        for (int width = 700; width <= 1300; width += 50) {
            const Shown shown(oneYear(), width);
            QVERIFY(shown.chart.dayPlace(0, lastDay).right() <= width);
            QVERIFY(
                shown.chart.dayPlace(0, lastDay).left() > shown.chart.dayPlace(0, 0).left() + width / 2.0);
        }
    }

    void theDaysOfTheWeekHaveTheirNamesWhereThereIsRoom()
    {
        Shown shown(oneYear());
        const QByteArray wide = written(shown.chart);
        for (const char *name : {"Mon", "Thu", "Sun"}) {
            QVERIFY2(hasText(wide, name), name);
        }
        shown.chart.resize(300, 400);
        QFont large = shown.chart.font();
        large.setPixelSize(40);
        shown.chart.setFont(large);
        const QByteArray crowded = written(shown.chart);
        QVERIFY(crowded.contains("2012"));
        for (const char *name : {"Mon", "Thu", "Sun"}) {
            QVERIFY2(!hasText(crowded, name), name);
        }
    }

    // The first column of this year holds its Sunday alone.
    void theNamesOfTheDaysStandBesideTheWeeks()
    {
        Shown shown(oneYear());
        const QRectF sunday = shown.chart.dayPlace(0, 0);
        const QRectF monday = shown.chart.dayPlace(0, 1);
        const QRect above =
            QRectF(QPointF(sunday.left(), monday.top()), QPointF(sunday.right(), sunday.top() - 1))
                .toAlignedRect()
                .adjusted(0, 0, -1, -1);
        QVERIFY(above.height() > above.width());
        const QImage image = painted(shown.chart).copy(above);
        QImage ground = image;
        ground.fill(ChartStyle::of(shown.chart.palette()).ground);
        QCOMPARE(image, ground);
    }

    void aClickOfTheLeftButtonChoosesTheDay()
    {
        Shown shown(oneYear());
        CalendarChart *chart = &shown.chart;
        QSignalSpy chosen(chart, &CalendarChart::dayChosen);
        const QPoint place = shown.chart.dayPlace(0, 200).center().toPoint();
        QTest::mouseClick(chart, Qt::RightButton, {}, place);
        QCOMPARE(chosen.size(), 0);
        QTest::mouseClick(chart, Qt::LeftButton, {}, place);
        QCOMPARE(chosen.size(), 1);
        QCOMPARE(chosen[0][0].value<DateTime>(), dayOfYear(longest, 200));
    }
};

QTEST_MAIN(TestCalendarChart)
#include "tst_calendarchart.moc"
