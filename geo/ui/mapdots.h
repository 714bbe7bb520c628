#pragma once

#include "geo/ui/mapscene.h"
#include "geo/ui/mapstyle.h"
#include "geo/ui/mapviewport.h"

#include <QHash>
#include <QPixmap>

#include <optional>
#include <vector>

class QPainter;

namespace quillon {

/// The radius of a dot of so many receptions, logical pixels.
[[nodiscard]] double dotRadius(qint32 receptions);

/// Paints a dot as it is on the map and in the legend: today's solid and ringed, others paler.
void paintDot(QPainter &painter, QPointF centre, double radius, const QColor &colour, const MapStyle &style,
    bool today);

/// The number, in the scene's dots, of the topmost dot under a pixel.
[[nodiscard]] std::optional<std::size_t> dotAt(
    const MapScene &scene, const MapViewport &viewport, QPointF pixel);

/// The numbers, in the scene's dots, of those whose centre is in sight.
[[nodiscard]] std::vector<std::size_t> dotsInView(const MapScene &scene, const MapViewport &viewport);

/// Paints all dots of a scene, from pictures of each kind of dot that it keeps.
class DotPainter
{
public:
    void paint(QPainter &painter, const MapScene &scene, const MapViewport &viewport, const MapStyle &style);
    /// As shapes in place of pictures, for a drawing that can be enlarged.
    static void paintShapes(
        QPainter &painter, const MapScene &scene, const MapViewport &viewport, const MapStyle &style);

private:
    struct Kind
    {
        QRgb colour;
        int radius; ///< in quarters of a pixel
        bool today;
        int scale; ///< pixels of the device to a logical one, in hundredths

        bool operator==(const Kind &) const = default;
        friend std::size_t qHash(const Kind &kind, std::size_t seed) noexcept
        {
            return qHashMulti(seed, kind.colour, kind.radius, kind.today, kind.scale);
        }
    };

    [[nodiscard]] const QPixmap &picture(const Kind &kind, const MapStyle &style);

    QHash<Kind, QPixmap> m_pictures;
};

} // namespace quillon
