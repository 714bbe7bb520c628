#pragma once

#include <QColor>
#include <QFont>

class QPalette;

namespace quillon {

/// The colours of a chart, on a light or a dark ground.
struct ChartStyle
{
    QColor ground;
    QColor text;
    QColor quiet; ///< of axis labels and notes
    QColor grid;
    bool dark = false;

    /// Follows the palette.
    [[nodiscard]] static ChartStyle of(const QPalette &palette);

    /// The colour of a series, 0 to count - 1. One or two series are blue and orange; more go round the
    /// clock: dark at midnight, bright at noon, cool in the morning, warm in the evening, so that eyes that
    /// confuse red and green, or blue and yellow, tell each of 12 from every other.
    [[nodiscard]] QColor series(int number, int count) const;
};

/// The font at `factor` times its size.
[[nodiscard]] QFont scaledFont(QFont font, qreal factor);

/// A palette with a light ground, for pictures.
[[nodiscard]] QPalette lightPalette();

} // namespace quillon
