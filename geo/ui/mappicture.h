#pragma once

#include "geo/ui/mapscene.h"
#include "geo/ui/mapstyle.h"
#include "geo/ui/mapviewport.h"

#include <QByteArray>
#include <QFont>
#include <QImage>
#include <QSize>

namespace quillon {

/// What a picture of the map is made of.
struct MapPicture
{
    const MapScene &scene;
    MapViewport viewport; ///< all that it shows is in the picture
    MapStyle style;
    QFont font;
    bool clouds = false;
};

/// The largest side of a picture, pixels.
inline constexpr int largestPicture = 10000;

/// The map with its legend in that size; a larger picture has larger letters. Throws "Invalid procedure call"
/// when the system has no room for it.
[[nodiscard]] QImage mapImage(const MapPicture &picture, QSize size);

/// The same as an SVG document.
[[nodiscard]] QByteArray mapSvg(const MapPicture &picture, QSize size);

/// The bytes of a PNG, or of an SVG where the name ends in ".svg" in any case.
[[nodiscard]] QByteArray pictureBytes(const MapPicture &picture, QSize size, const QString &name);

} // namespace quillon
