#pragma once

#include <functional>

class QPainter;
class QRect;
class QStyleOptionSlider;

namespace quillon {

/// Draws a scroll bar by `draw`, or from the picture that was kept of one that looks the same, with its
/// slider in the same place. Its gradients cost more than a row of the grid, and every row that comes asks
/// for them.
void drawScrollBar(QPainter &painter, const QStyleOptionSlider &option, QRect slider,
    const std::function<void(QPainter &)> &draw);

} // namespace quillon
