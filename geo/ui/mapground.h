#pragma once

#include "geo/leg.h"
#include "geo/planeoutlines.h"
#include "geo/ui/mapstyle.h"
#include "geo/ui/mapviewport.h"

class QPainter;

namespace quillon {

/// The outlines that are fine enough for a scale; one step coarser where they have to be painted quickly.
[[nodiscard]] OutlineDetail detailFor(double kmPerPixel, bool quick = false);

/// Paints the globe as far as it is seen: sea, land, borders, rings of distance each 500 of the unit, rays in
/// the 16 directions. Quickly means with stepped lines.
void paintGround(QPainter &painter, const MapViewport &viewport, const PlaneOutlines &outlines,
    const MapStyle &style, DistanceUnit unit, bool quick = false);

/// Km between the rings.
[[nodiscard]] double ringStep(DistanceUnit unit);

} // namespace quillon
