#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace quillon {

/// Which part of the plane of the map is seen, and how large. Points of the plane are km, x to the east and y
/// to the north of home; pixels are logical ones from the top left corner.
class MapViewport
{
public:
    MapViewport() = default;
    MapViewport(QPointF centre, double kmPerPixel, QSizeF size);

    /// Home in the middle, and everything within `radius` km of it in sight.
    [[nodiscard]] static MapViewport around(double radius, QSizeF size);

    [[nodiscard]] QPointF centre() const { return m_centre; }
    [[nodiscard]] double kmPerPixel() const { return m_kmPerPixel; }
    [[nodiscard]] QSizeF size() const { return m_size; }

    [[nodiscard]] QPointF toPixel(QPointF plane) const;
    [[nodiscard]] QPointF toPlane(QPointF pixel) const;
    /// What is seen of the plane, `margin` pixels around it included; its top is the south.
    [[nodiscard]] QRectF planeRect(double margin = 0) const;

    /// `factor` times as large, the point at `pixel` staying there; bounded at both ends.
    [[nodiscard]] MapViewport zoomed(double factor, QPointF pixel) const;
    /// What is seen when the map is dragged by so many pixels; the globe cannot be lost from sight.
    [[nodiscard]] MapViewport dragged(QPointF pixels) const;
    /// The same centre and scale in another size.
    [[nodiscard]] MapViewport resized(QSizeF size) const;

    bool operator==(const MapViewport &) const = default;

private:
    QPointF m_centre;
    double m_kmPerPixel = 1;
    QSizeF m_size {1, 1};
};

} // namespace quillon
