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

/// Finds a place above their bars for the numbers that fit: none on another number or bar, the largest first.
/// They all stand level when every one finds room over its share `slot` of the width, in pixels; else
/// upright when a line of text is no wider than that; else level, over the bars that stand out.
[[nodiscard]] std::vector<PlacedNumber> placeNumbers(
    std::vector<NumberedBar> bars, qreal slot, const QRectF &plot, const QFontMetricsF &metrics);

} // namespace quillon
