#include "geo/ui/mapviewport.h"

#include "geo/azimuthal.h"

#include <algorithm>
#include <cmath>

namespace quillon {

namespace {

// The outlines are good to a kilometre or so.
constexpr double finest = 0.05;

// The whole globe with its rose in sight.
double coarsest(QSizeF size)
{
    constexpr double room = 1.25;
    return 2 * antipodeDistance * room / std::min(size.width(), size.height());
}

} // namespace

MapViewport::MapViewport(QPointF centre, double kmPerPixel, QSizeF size)
    : m_centre(centre)
    , m_size(size.expandedTo(QSizeF(1, 1)))
{
    m_kmPerPixel = std::clamp(kmPerPixel, finest, coarsest(m_size));
    const double distance = std::hypot(centre.x(), centre.y());
    if (distance > antipodeDistance) {
        m_centre *= antipodeDistance / distance;
    }
}

MapViewport MapViewport::around(double radius, QSizeF size)
{
    return {{0, 0}, 2 * radius / std::max(1.0, std::min(size.width(), size.height())), size};
}

QPointF MapViewport::toPixel(QPointF plane) const
{
    return {m_size.width() / 2 + (plane.x() - m_centre.x()) / m_kmPerPixel,
        m_size.height() / 2 - (plane.y() - m_centre.y()) / m_kmPerPixel};
}

QPointF MapViewport::toPlane(QPointF pixel) const
{
    return {m_centre.x() + (pixel.x() - m_size.width() / 2) * m_kmPerPixel,
        m_centre.y() - (pixel.y() - m_size.height() / 2) * m_kmPerPixel};
}

QRectF MapViewport::planeRect(double margin) const
{
    const QSizeF size = (m_size + QSizeF(2 * margin, 2 * margin)) * m_kmPerPixel;
    return {m_centre - QPointF(size.width(), size.height()) / 2, size};
}

MapViewport MapViewport::zoomed(double factor, QPointF pixel) const
{
    const MapViewport scaled(m_centre, m_kmPerPixel / factor, m_size);
    return {m_centre + toPlane(pixel) - scaled.toPlane(pixel), scaled.m_kmPerPixel, m_size};
}

MapViewport MapViewport::dragged(QPointF pixels) const
{
    return {m_centre + QPointF(-pixels.x(), pixels.y()) * m_kmPerPixel, m_kmPerPixel, m_size};
}

MapViewport MapViewport::resized(QSizeF size) const
{
    return {m_centre, m_kmPerPixel, size};
}

} // namespace quillon
