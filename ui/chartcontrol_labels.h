#pragma once

#include <QFontMetricsF>
#include <QRectF>
#include <QString>

#include <vector>

namespace quillon {

/// A bar and the number that belongs above it.
struct NumberedBar
{
    QRectF bar;
    int count = 0;
};

/// Where a number stands, and whether it is turned to read upwards.
struct PlacedNumber
{
    QRectF place;
    QString text;
    bool upright = false;
};

/// How the numbers of a chart stand.
enum class NumberStyle {
    Level, ///< each fits level over its share of the width
    Upright, ///< each fits when it is turned to read upwards
    LevelOverPeaks, ///< level, only where a bar stands out from its neighbours
};

/// The way in which all numbers fit into a share of `slot` pixels of the width each.
[[nodiscard]] NumberStyle numberStyle(
    const std::vector<NumberedBar> &bars, qreal slot, const QFontMetricsF &metrics);

/// Places above their bars for the numbers that fit: none on another number or bar, the largest first. A
/// count of 0 gets no number.
[[nodiscard]] std::vector<PlacedNumber> placeNumbers(
    std::vector<NumberedBar> bars, NumberStyle style, const QRectF &plot, const QFontMetricsF &metrics);

} // namespace quillon
