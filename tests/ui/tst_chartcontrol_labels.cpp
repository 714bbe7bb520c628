#include "ui/chartcontrol_labels.h"

#include <QGuiApplication>
#include <QTest>

#include <algorithm>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

const QRectF plot(50, 20, 600, 400);

std::vector<NumberedBar> barsOf(const std::vector<int> &counts, qreal width)
{
    std::vector<NumberedBar> bars;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        bars.push_back(
            {QRectF(plot.left() + width * static_cast<qreal>(i), plot.bottom() - counts[i], width, counts[i]),
                counts[i]});
    }
    return bars;
}

QStringList texts(const std::vector<PlacedNumber> &numbers)
{
    QStringList found;
    for (const PlacedNumber &number : numbers) {
        found.append(number.text);
    }
    return found;
}

} // namespace

class TestChartControlLabels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theStyleFollowsTheRoom()
    {
        const QFontMetricsF metrics {QFont()};
        const qreal length = metrics.horizontalAdvance(u"120"_s);
        const auto bars = barsOf({120, 5}, 10);
        QCOMPARE(numberStyle(bars, length + 2, metrics), NumberStyle::Level);
        QCOMPARE(numberStyle(bars, length, metrics), NumberStyle::Upright);
        QCOMPARE(numberStyle(bars, metrics.capHeight() / 2, metrics), NumberStyle::LevelOverPeaks);
    }

    void everyCountButZeroGetsItsNumber()
    {
        const QFontMetricsF metrics {QFont()};
        const auto bars = barsOf({12, 0, 150, 7}, 60);
        for (const NumberStyle style : {NumberStyle::Level, NumberStyle::Upright}) {
            const auto numbers = placeNumbers(bars, style, plot, metrics);
            QCOMPARE(texts(numbers), QStringList({u"150"_s, u"12"_s, u"7"_s}));
            QCOMPARE(numbers.front().upright, style == NumberStyle::Upright);
            QCOMPARE(numbers.front().place.center().x(), bars[2].bar.center().x());
            QVERIFY(numbers.front().place.bottom() < bars[2].bar.top());
        }
    }

    void narrowBarsAreNumberedWhereTheyStandOut()
    {
        const QFontMetricsF metrics {QFont()};
        const auto numbers = placeNumbers(
            barsOf({100, 200, 100, 0, 0, 0, 0, 0, 0, 50}, 5), NumberStyle::LevelOverPeaks, plot, metrics);
        QCOMPARE(texts(numbers), QStringList({u"200"_s, u"50"_s}));
    }

    void noNumberStandsOnAnotherOrOnABar()
    {
        const QFontMetricsF metrics {QFont()};
        std::vector<int> counts(100);
        std::ranges::generate(counts, [i = 0]() mutable { return (i++ * 37) % 101 + 1; });
        const auto bars = barsOf(counts, 6);
        const auto numbers = placeNumbers(bars, NumberStyle::LevelOverPeaks, plot, metrics);
        QVERIFY(numbers.size() > 5);
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            const QRectF inner = numbers[i].place.adjusted(1, 0, -1, 0);
            for (std::size_t j = 0; j < i; ++j) {
                QVERIFY(!inner.intersects(numbers[j].place.adjusted(1, 0, -1, 0)));
            }
            for (const NumberedBar &bar : bars) {
                QVERIFY(!inner.intersects(bar.bar));
            }
        }
    }
};

QTEST_MAIN(TestChartControlLabels)
#include "tst_chartcontrol_labels.moc"
