#include "geo/ui/mapground.h"

#include "geo/azimuthal.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quillon {

namespace {

using Points = std::vector<QPointF>;

// Pixels that a clipped ring may stand out of sight, so that its cut edges are not seen.
constexpr double margin = 16;
// Steps of a line that are shorter than this, in pixels, are left out.
constexpr double finestStep = 0.75;

// One side of the rectangle that rings are cut to: what is kept has sign * (coordinate - limit) >= 0.
struct Side
{
    bool vertical;
    double limit;
    double sign;

    [[nodiscard]] double of(QPointF point) const
    {
        return sign * ((vertical ? point.x() : point.y()) - limit);
    }
};

// Sutherland and Hodgman's cut of a ring along one line.
void cut(const Points &ring, const Side &side, Points &kept)
{
    kept.clear();
    if (ring.empty()) {
        return;
    }
    QPointF from = ring.back();
    double fromOff = side.of(from);
    for (const QPointF to : ring) {
        const double toOff = side.of(to);
        if ((fromOff >= 0) != (toOff >= 0)) {
            kept.push_back(from + (to - from) * (fromOff / (fromOff - toOff)));
        }
        if (toOff >= 0) {
            kept.push_back(to);
        }
        from = to;
        fromOff = toOff;
    }
}

// QRectF::intersects knows no rectangle without an area, which a straight line has.
bool meet(const QRectF &one, const QRectF &other)
{
    return one.left() <= other.right() && other.left() <= one.right() && one.top() <= other.bottom()
        && other.top() <= one.bottom();
}

class GroundPainter
{
public:
    GroundPainter(QPainter &painter, const MapViewport &viewport, const MapStyle &style)
        : m_painter(painter)
        , m_viewport(viewport)
        , m_style(style)
        , m_seen(viewport.planeRect(margin))
    {
    }

    void globe() const
    {
        m_painter.fillRect(QRectF({0, 0}, m_viewport.size()), m_style.beyond);
        m_painter.setPen(cosmetic(m_style.coast));
        m_painter.setBrush(m_style.sea);
        const double farthestCorner = std::max({length(m_seen.topLeft()), length(m_seen.topRight()),
            length(m_seen.bottomLeft()), length(m_seen.bottomRight())});
        if (farthestCorner < antipodeDistance) {
            m_painter.fillRect(QRectF({0, 0}, m_viewport.size()), m_style.sea);
        } else {
            circle(antipodeDistance);
        }
    }

    void land(const std::vector<PlaneLine> &rings) const
    {
        QPainterPath path;
        path.setFillRule(Qt::OddEvenFill);
        Points clipped;
        for (const PlaneLine &ring : rings) {
            if (!meet(m_seen, ring.bounds)) {
                continue;
            }
            const bool whole = m_seen.contains(ring.bounds);
            if (!whole) {
                clip(ring.points, clipped);
            }
            const QPolygonF polygon = toPixels(whole ? ring.points : clipped);
            if (polygon.size() > 2) {
                path.addPolygon(polygon);
                path.closeSubpath();
            }
        }
        // The line along the coast covers the steps of the quick fill.
        const bool smooth = m_painter.testRenderHint(QPainter::Antialiasing);
        m_painter.setRenderHint(QPainter::Antialiasing, false);
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(m_style.land);
        m_painter.drawPath(path);
        m_painter.setRenderHint(QPainter::Antialiasing, smooth);
        m_painter.setPen(cosmetic(m_style.coast));
        m_painter.setBrush(Qt::NoBrush);
        m_painter.drawPath(path);
    }

    void borders(const std::vector<PlaneLine> &lines) const
    {
        m_painter.setPen(cosmetic(m_style.border));
        for (const PlaneLine &line : lines) {
            if (meet(m_seen, line.bounds)) {
                m_painter.drawPolyline(toPixels(line.points));
            }
        }
    }

    void rings(double step) const
    {
        // Where they would stand too close, every second, fourth ... is drawn.
        constexpr double least = 22;
        while (step / m_viewport.kmPerPixel() < least) {
            step *= 2;
        }
        m_painter.setBrush(Qt::NoBrush);
        m_painter.setPen(cosmetic(m_style.ring));
        for (int ring = 1; ring * step < antipodeDistance; ++ring) {
            if (isSeen(ring * step)) {
                circle(ring * step);
            }
        }
    }

    void rays(double from) const
    {
        QColor faint = m_style.ring;
        faint.setAlphaF(faint.alphaF() * 0.6F);
        m_painter.setPen(cosmetic(faint));
        constexpr int directions = 16;
        for (int i = 0; i < directions; ++i) {
            const double angle = 2 * std::numbers::pi * i / directions;
            const QPointF direction(std::sin(angle), std::cos(angle));
            m_painter.drawLine(
                m_viewport.toPixel(direction * from), m_viewport.toPixel(direction * antipodeDistance));
        }
    }

private:
    static double length(QPointF point) { return std::hypot(point.x(), point.y()); }

    static QPen cosmetic(const QColor &colour)
    {
        QPen pen(colour, 1);
        pen.setCosmetic(true);
        return pen;
    }

    void circle(double radius) const
    {
        const double pixels = radius / m_viewport.kmPerPixel();
        m_painter.drawEllipse(m_viewport.toPixel({0, 0}), pixels, pixels);
    }

    // True when a circle around home crosses what is seen.
    [[nodiscard]] bool isSeen(double radius) const
    {
        const QPointF nearest(
            std::clamp(0.0, m_seen.left(), m_seen.right()), std::clamp(0.0, m_seen.top(), m_seen.bottom()));
        const QPointF farthest(std::max(std::abs(m_seen.left()), std::abs(m_seen.right())),
            std::max(std::abs(m_seen.top()), std::abs(m_seen.bottom())));
        return length(nearest) <= radius && radius <= length(farthest);
    }

    void clip(const Points &ring, Points &clipped) const
    {
        Points other;
        cut(ring, {true, m_seen.left(), 1}, clipped);
        cut(clipped, {true, m_seen.right(), -1}, other);
        cut(other, {false, m_seen.top(), 1}, clipped);
        cut(clipped, {false, m_seen.bottom(), -1}, other);
        clipped.swap(other);
    }

    [[nodiscard]] QPolygonF toPixels(const Points &points) const
    {
        QPolygonF polygon;
        polygon.reserve(static_cast<qsizetype>(points.size()));
        QPointF last;
        for (std::size_t i = 0; i < points.size(); ++i) {
            const QPointF pixel = m_viewport.toPixel(points[i]);
            const bool end = i == 0 || i + 1 == points.size();
            if (end || (pixel - last).manhattanLength() >= finestStep) {
                polygon.append(pixel);
                last = pixel;
            }
        }
        return polygon;
    }

    QPainter &m_painter;
    const MapViewport &m_viewport;
    const MapStyle &m_style;
    QRectF m_seen;
};

} // namespace

OutlineDetail detailFor(double kmPerPixel, bool quick)
{
    constexpr double medium = 4;
    constexpr double coarse = 14;
    const double scale = quick ? kmPerPixel * coarse / medium : kmPerPixel;
    return scale < medium ? OutlineDetail::Fine
        : scale < coarse  ? OutlineDetail::Medium
                          : OutlineDetail::Coarse;
}

void paintGround(QPainter &painter, const MapViewport &viewport, const PlaneOutlines &outlines,
    const MapStyle &style, DistanceUnit unit, bool quick)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, !quick);
    const GroundPainter ground(painter, viewport, style);
    ground.globe();
    ground.land(outlines.land);
    ground.borders(outlines.borders);
    ground.rings(ringStep(unit));
    ground.rays(ringStep(unit));
    painter.restore();
}

double ringStep(DistanceUnit unit)
{
    constexpr double step = 500;
    return step * kilometresPer(unit);
}

} // namespace quillon
