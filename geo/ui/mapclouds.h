#pragma once

#include "geo/ui/mapscene.h"
#include "geo/ui/mapstyle.h"
#include "geo/ui/mapviewport.h"

#include <QFont>
#include <QImage>
#include <QRectF>

class QPainter;

namespace quillon {

/// How many Es receptions the view of the clouds counts, and how many it leaves out because their path is
/// longer than one hop, so that no cloud stood over its middle.
struct CloudCounts
{
    qint32 counted = 0;
    qint32 beyondOneHop = 0;
};

[[nodiscard]] CloudCounts cloudCounts(const MapScene &scene);

/// How densely the middles of the Es paths stand, as a picture to be stretched over a part of the viewport.
struct CloudPicture
{
    QImage image; ///< null when there is nothing in sight
    QRectF place;
};

[[nodiscard]] CloudPicture cloudPicture(
    const MapScene &scene, const MapViewport &viewport, const MapStyle &style);

/// Where the panel with the highest MUF of each hour is painted; empty when nothing is to tell.
[[nodiscard]] QRectF mufPanelPlace(const MapScene &scene, QSizeF size, const QFont &font);

/// Paints the panel: a bar for each hour that has a MUF, the highest with its number.
void paintMufPanel(
    QPainter &painter, const QRectF &place, const MapScene &scene, const MapStyle &style, const QFont &font);

/// What is said above the map: what the view of the clouds counts, or that there is nothing to show.
[[nodiscard]] QString mapMessage(const MapScene &scene, bool clouds);

} // namespace quillon
