#include "ui/chartcontrol_labels.h"

#include <algorithm>
#include <cmath>

namespace quillon {

namespace {

constexpr qreal gap = 2;

/// The height that is taken already, for each pixel of the width.
class Skyline
{
public:
    explicit Skyline(const QRectF &plot)
        : m_left(plot.left())
        , m_tops(static_cast<std::size_t>(std::max(1.0, std::ceil(plot.width()))), plot.bottom())
    {
    }

    /// True when nothing between left and right is higher than the bottom of the place.
    [[nodiscard]] bool isFree(const QRectF &place) const
    {
        const auto [first, last] = columns(place);
        return std::all_of(
            m_tops.begin() + first, m_tops.begin() + last, [&](qreal top) { return top >= place.bottom(); });
    }

    void take(const QRectF &place)
    {
        const auto [first, last] = columns(place);
        std::for_each(m_tops.begin() + first, m_tops.begin() + last,
            [&](qreal &top) { top = std::min(top, place.top()); });
    }

private:
    [[nodiscard]] std::pair<qsizetype, qsizetype> columns(const QRectF &place) const
    {
        const auto column = [this](qreal x) {
            return std::clamp(
                static_cast<qsizetype>(x), qsizetype {0}, static_cast<qsizetype>(m_tops.size()));
        };
        return {column(std::round(place.left() - m_left)), column(std::round(place.right() - m_left))};
    }

    qreal m_left;
    std::vector<qreal> m_tops;
};

// Digits stand on the line and have the height of capitals.
qreal lineHeight(const QFontMetricsF &metrics)
{
    return std::ceil(metrics.capHeight());
}

} // namespace

NumberStyle numberStyle(const std::vector<NumberedBar> &bars, qreal slot, const QFontMetricsF &metrics)
{
    int largest = 0;
    for (const NumberedBar &bar : bars) {
        largest = std::max(largest, bar.count);
    }
    if (metrics.horizontalAdvance(QString::number(largest)) + gap <= slot) {
        return NumberStyle::Level;
    }
    return lineHeight(metrics) + 1 <= slot ? NumberStyle::Upright : NumberStyle::LevelOverPeaks;
}

std::vector<PlacedNumber> placeNumbers(
    std::vector<NumberedBar> bars, NumberStyle style, const QRectF &plot, const QFontMetricsF &metrics)
{
    std::erase_if(bars, [](const NumberedBar &bar) { return bar.count == 0; });
    std::ranges::stable_sort(bars, std::ranges::greater {}, &NumberedBar::count);
    Skyline skyline(plot);
    for (const NumberedBar &bar : bars) {
        skyline.take(bar.bar);
    }
    const bool upright = style == NumberStyle::Upright;
    const qreal line = lineHeight(metrics);

    std::vector<PlacedNumber> placed;
    for (const NumberedBar &bar : bars) {
        PlacedNumber number {{}, QString::number(bar.count), upright};
        const qreal length = metrics.horizontalAdvance(number.text);
        const QSizeF size = upright ? QSizeF(line, length) : QSizeF(length, line);
        number.place = QRectF(
            QPointF(bar.bar.center().x() - size.width() / 2, bar.bar.top() - gap - size.height()), size);
        if (skyline.isFree(number.place)) {
            skyline.take(number.place);
            placed.push_back(number);
        }
    }
    return placed;
}

} // namespace quillon
