#pragma once

#include "geo/ui/mapscene.h"
#include "geo/ui/mapstyle.h"
#include "geo/ui/mapviewport.h"

#include <QFont>
#include <QRectF>

#include <optional>
#include <vector>

class QPainter;

namespace quillon {

/// What stands above the dots, and what must stay free of text.
struct MapOverlay
{
    QFont font;
    bool farthest = true; ///< names the farthest dot of each mode
    std::optional<std::size_t> pointed; ///< the dot under the pointer, marked
    std::vector<QRectF> covered; ///< by something else
    QString message; ///< what is to be said of the whole map
};

/// Paints home, the chosen path with its middle, distance and azimuth, the names of the farthest, the letters
/// of the rose and the distances of the rings; what has no room is left out.
void paintOverlay(QPainter &painter, const MapScene &scene, const MapViewport &viewport,
    const MapStyle &style, const MapOverlay &overlay);

} // namespace quillon
