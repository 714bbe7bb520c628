#include "geo/planeoutlines.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quillon {

namespace {

using Points = std::vector<QPointF>;

double length(QPointF vector)
{
    return std::hypot(vector.x(), vector.y());
}

GeoPosition between(const GeoPosition &from, const GeoPosition &to)
{
    const double east = std::remainder(to.longitude - from.longitude, 360);
    return {(from.latitude + to.latitude) / 2, from.longitude + east / 2};
}

// The points of the rim from one direction to another, the short way round, without the ends.
void followRim(QPointF from, QPointF to, Points &points)
{
    constexpr double step = 1;
    const double begin = azimuthOf(from);
    const double turn = std::remainder(azimuthOf(to) - begin, 360);
    const int steps = static_cast<int>(std::abs(turn) / step);
    for (int i = 1; i < steps; ++i) {
        const double angle = (begin + turn * i / steps) * std::numbers::pi / 180;
        points.emplace_back(antipodeDistance * std::sin(angle), antipodeDistance * std::cos(angle));
    }
}

// Follows lines of the globe on the plane.
class Tracer
{
public:
    Tracer(const AzimuthalEquidistant &projection, double tolerance)
        : m_projection(projection)
        , m_tolerance(tolerance)
    {
    }

    [[nodiscard]] Points ring(const GeoLine &line) const
    {
        Points points = traced(line);
        edge({line.back(), points.back()}, {line.front(), points.front()}, deepest, points);
        points.pop_back();
        return points;
    }

    [[nodiscard]] Points traced(const GeoLine &line) const
    {
        Points points;
        points.reserve(line.size());
        points.push_back(m_projection.project(line.front()));
        Stop from {line.front(), points.front()};
        for (std::size_t i = 1; i < line.size(); ++i) {
            const Stop to {line[i], m_projection.project(line[i])};
            edge(from, to, deepest, points);
            from = to;
        }
        return points;
    }

private:
    struct Stop
    {
        GeoPosition place;
        QPointF point;
    };

    // Halves of an edge: enough to come within a metre of the antipode.
    static constexpr int deepest = 24;
    // Shorter edges are straight on the near half of the map.
    static constexpr double straight = 100;
    // What is left between the ends of a halved edge is a jump from one side of the antipode to the other.
    static constexpr double jump = 500;

    // Adds the points after `from` up to `to`.
    void edge(const Stop &from, const Stop &to, int depth, Points &points) const
    {
        const double span = length(to.point - from.point);
        if (span > m_tolerance && (span > straight || length(to.point) > antipodeDistance / 2)) {
            const GeoPosition place = between(from.place, to.place);
            const Stop middle {place, m_projection.project(place)};
            const double off = length(middle.point - (from.point + to.point) / 2);
            if (off > m_tolerance && depth > 0) {
                edge(from, middle, depth - 1, points);
                edge(middle, to, depth - 1, points);
                return;
            }
            if (span > jump && off > m_tolerance) {
                followRim(from.point, to.point, points);
            }
        }
        points.push_back(to.point);
    }

    const AzimuthalEquidistant &m_projection;
    double m_tolerance;
};

// In km². The plane is nowhere smaller than the globe, so a ring around half the globe or more encloses more
// than this, and rounding gives the narrowest island never as much.
constexpr double quarterOfTheGlobe = 1.2e8;

double signedArea(const Points &ring)
{
    double twice = 0;
    QPointF from = ring.back();
    for (const QPointF to : ring) {
        twice += from.x() * to.y() - to.x() * from.y();
        from = to;
    }
    return twice / 2;
}

Points rim()
{
    Points points;
    const QPointF north(0, antipodeDistance);
    points.push_back(north);
    followRim(north, {1, 0}, points);
    followRim({1, 0}, {0, -1}, points);
    followRim({0, -1}, {-1, 0}, points);
    followRim({-1, 0}, north, points);
    return points;
}

PlaneLine bounded(Points points)
{
    const auto [west, east] = std::ranges::minmax_element(points, {}, &QPointF::x);
    const auto [south, north] = std::ranges::minmax_element(points, {}, &QPointF::y);
    const QRectF bounds(QPointF(west->x(), south->y()), QPointF(east->x(), north->y()));
    return {std::move(points), bounds};
}

} // namespace

PlaneOutlines projected(const Outlines &outlines, const AzimuthalEquidistant &projection, double tolerance)
{
    const Tracer tracer(projection, tolerance);
    PlaneOutlines result;
    bool antipodeInside = false;
    for (const GeoLine &line : outlines.land) {
        Points ring = tracer.ring(line);
        // The projection keeps the sense of turning: a ring with its smaller part on the left has a positive
        // area, unless the antipode lies in that part, which then is all that is outside on the plane.
        antipodeInside = antipodeInside != (signedArea(ring) < -quarterOfTheGlobe);
        result.land.push_back(bounded(std::move(ring)));
    }
    if (antipodeInside) {
        result.land.push_back(bounded(rim()));
    }
    for (const GeoLine &line : outlines.borders) {
        result.borders.push_back(bounded(tracer.traced(line)));
    }
    return result;
}

} // namespace quillon
