#pragma once

#include <QColor>
#include <QString>

#include <cstddef>

class QPalette;

namespace quillon {

/// The colours of the map, on a light or a dark ground.
struct MapStyle
{
    bool dark = false;
    QColor beyond; ///< around the globe
    QColor sea;
    QColor land;
    QColor coast;
    QColor border;
    QColor ring; ///< of distance, and the rays of the rose
    QColor text;
    QColor quiet; ///< of the text of rings and rose
    QColor halo; ///< around text and lines
    QColor path;
    QColor link; ///< on the ground of a window

    /// Follows the palette.
    [[nodiscard]] static MapStyle of(const QPalette &palette);

    /// The colour of a mode by its number. Eyes that confuse red and green, or blue and yellow, tell each
    /// from every other.
    [[nodiscard]] QColor mode(std::size_t number) const;
    /// The edge of a dot.
    [[nodiscard]] QColor edge() const;
    /// The colour of a share, 0 to 1, of the highest density; transparent at 0.
    [[nodiscard]] QColor density(double share) const;
    /// Words that can be clicked, as markup.
    [[nodiscard]] QString linked(const QString &words) const;
};

} // namespace quillon
