#include "geo/ui/mapoverlay.h"

#include "geo/ui/mapdots.h"
#include "geo/ui/mapground.h"
#include "geo/ui/maplabels.h"
#include "ui/chartcontrol_style.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr double small = 0.85;
constexpr double gap = 6;

class OverlayPainter
{
public:
    OverlayPainter(QPainter &painter, const MapScene &scene, const MapViewport &viewport,
        const MapStyle &style, const MapOverlay &overlay)
        : m_painter(painter)
        , m_scene(scene)
        , m_viewport(viewport)
        , m_style(style)
        , m_overlay(overlay)
        , m_area(QRectF({0, 0}, viewport.size()).adjusted(4, 4, -4, -4))
        , m_room(m_area)
        , m_home(viewport.toPixel({0, 0}))
        , m_smallFont(scaledFont(overlay.font, small))
    {
        for (const QRectF &covered : overlay.covered) {
            m_room.take(covered);
        }
        m_room.take(QRectF(m_home - QPointF(9, 9), QSizeF(18, 18)));
    }

    void rose()
    {
        for (int i = 0; i < 16; ++i) {
            const double azimuth = 22.5 * i;
            const double angle = azimuth * std::numbers::pi / 180;
            const QString name = compassPoint(azimuth);
            const QFont &font = i % 2 == 0 ? m_overlay.font : m_smallFont;
            const QSizeF size = textSize(font, name);
            const auto point = edgePoint({std::sin(angle), -std::cos(angle)}, size);
            if (!point) {
                continue;
            }
            const QRectF place(*point - QPointF(size.width(), size.height()) / 2, size);
            if (m_room.isFree(place)) {
                m_room.take(place);
                text(place, font, name, m_style.quiet);
            }
        }
    }

    // One line at the top, in the middle.
    void message()
    {
        const QSizeF size = textSize(m_overlay.font, m_overlay.message);
        const QPointF top(m_area.center().x() - size.width() / 2, m_area.top() + size.height() * 1.25);
        const QRectF place(top, size);
        m_room.take(place);
        text(place, m_overlay.font, m_overlay.message, m_style.text);
    }

    void homeMark() const
    {
        m_painter.setPen(QPen(m_style.halo, 4));
        m_painter.setBrush(Qt::NoBrush);
        m_painter.drawEllipse(m_home, 6, 6);
        m_painter.setPen(QPen(m_style.path, 2));
        m_painter.drawEllipse(m_home, 6, 6);
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(m_style.path);
        m_painter.drawEllipse(m_home, 2, 2);
    }

    void path()
    {
        if (!m_scene.path()) {
            return;
        }
        const MapPath &path = *m_scene.path();
        const QPointF plane = m_scene.pointOf(path.to);
        const QPointF end = m_viewport.toPixel(plane);
        const QPointF middle = m_viewport.toPixel(plane / 2);
        m_painter.setPen(QPen(m_style.halo, 5, Qt::SolidLine, Qt::RoundCap));
        m_painter.drawLine(m_home, end);
        m_painter.setPen(QPen(m_style.path, 2, Qt::SolidLine, Qt::RoundCap));
        m_painter.drawLine(m_home, end);
        m_painter.setBrush(Qt::NoBrush);
        m_painter.drawEllipse(end, 8, 8);
        const QPointF up(0, 6);
        const QPointF right(6, 0);
        m_painter.setBrush(m_style.path);
        m_painter.setPen(QPen(m_style.halo, 1.5));
        m_painter.drawConvexPolygon(QPolygonF({middle - up, middle + right, middle + up, middle - right}));
        m_painter.setPen(m_style.path);
        m_room.take(QRectF(end - QPointF(8, 8), QSizeF(16, 16)));
        m_room.take(QRectF(middle - right - up, middle + right + up));
        const Leg leg = legBetween(*m_scene.data().home, path.to);
        label(middle, distanceText(leg.kilometres, m_scene.data().unit) + u", "_s + azimuthText(leg.azimuth),
            m_overlay.font, gap);
        label(end, shortened(path.name), m_overlay.font, gap + 2);
    }

    void pointed() const
    {
        if (m_overlay.pointed && *m_overlay.pointed < m_scene.dots().size()) {
            const MapDot &dot = m_scene.dots()[*m_overlay.pointed];
            const double radius = dotRadius(dot.count) + 3;
            m_painter.setBrush(Qt::NoBrush);
            m_painter.setPen(QPen(m_style.path, 2));
            m_painter.drawEllipse(m_viewport.toPixel(dot.point), radius, radius);
        }
    }

    void farthest()
    {
        for (const MapScene::Farthest &each : m_scene.farthest()) {
            const MapDot &dot = m_scene.dots()[each.dot];
            const MapSite &site = m_scene.data().sites[dot.site];
            const double kilometres = legBetween(*m_scene.data().home, site.place).kilometres;
            const QString words = mapModeName(each.mode) + u": "_s + shortened(site.name) + u", "_s
                + distanceText(kilometres, m_scene.data().unit);
            label(m_viewport.toPixel(dot.point), words, m_smallFont, dotRadius(dot.count) + gap / 2);
        }
    }

    // Along the ray to the north or south of home, or through what is seen when home is not.
    void ringDistances()
    {
        const double unit = kilometresPer(m_scene.data().unit);
        const double step = ringStep(m_scene.data().unit);
        const double pixels = step / m_viewport.kmPerPixel();
        const double least = 42;
        const int every = std::max(1, static_cast<int>(std::ceil(least / pixels)));
        QPointF direction(0, m_home.y() > m_viewport.size().height() / 2 ? 1 : -1);
        if (!m_area.contains(m_home)) {
            direction = m_viewport.centre() / std::hypot(m_viewport.centre().x(), m_viewport.centre().y());
        }
        for (int ring = every; ring * step < antipodeDistance; ring += every) {
            const QPointF point = m_viewport.toPixel(direction * (ring * step));
            const QString words =
                QString::number(std::lround(ring * step / unit)) + u' ' + unitName(m_scene.data().unit);
            const QSizeF size = textSize(m_smallFont, words);
            const QRectF place(point - QPointF(size.width(), size.height()) / 2, size);
            if (m_room.isFree(place)) {
                m_room.take(place);
                text(place, m_smallFont, words, m_style.quiet);
            }
        }
    }

private:
    // Where a ray from home leaves the globe or what is seen, drawn in by the size of a text there.
    [[nodiscard]] std::optional<QPointF> edgePoint(QPointF direction, QSizeF size) const
    {
        const double rim = antipodeDistance / m_viewport.kmPerPixel() + size.height();
        const QRectF inner = m_area.adjusted(
            size.width() / 2 + 2, size.height() / 2 + 2, -size.width() / 2 - 2, -size.height() / 2 - 2);
        double enter = 0;
        double leave = rim;
        const auto bound = [&](double from, double step, double low, double high) {
            if (step == 0) {
                leave = from < low || from > high ? -1 : leave;
                return;
            }
            const auto [first, last] = std::minmax({(low - from) / step, (high - from) / step});
            enter = std::max(enter, first);
            leave = std::min(leave, last);
        };
        // A sine of a half turn is not exactly 0.
        const auto clean = [](double value) { return std::abs(value) < 1e-12 ? 0 : value; };
        bound(m_home.x(), clean(direction.x()), inner.left(), inner.right());
        bound(m_home.y(), clean(direction.y()), inner.top(), inner.bottom());
        const double least = 40;
        return leave > std::max(enter, least) ? std::optional(m_home + direction * leave) : std::nullopt;
    }

    void label(QPointF point, const QString &words, const QFont &font, double off)
    {
        if (!m_area.contains(point)) {
            return;
        }
        if (const auto place = m_room.beside(point, textSize(font, words), off)) {
            text(*place, font, words, m_style.text);
        }
    }

    void text(const QRectF &place, const QFont &font, const QString &words, const QColor &colour) const
    {
        paintHaloText(m_painter, place, font, words, colour, m_style.halo);
    }

    QPainter &m_painter;
    const MapScene &m_scene;
    const MapViewport &m_viewport;
    const MapStyle &m_style;
    const MapOverlay &m_overlay;
    QRectF m_area;
    LabelRoom m_room;
    QPointF m_home;
    QFont m_smallFont;
};

} // namespace

void paintOverlay(QPainter &painter, const MapScene &scene, const MapViewport &viewport,
    const MapStyle &style, const MapOverlay &overlay)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    OverlayPainter over(painter, scene, viewport, style, overlay);
    if (!overlay.message.isEmpty()) {
        over.message();
    }
    over.path();
    over.homeMark();
    over.pointed();
    if (overlay.farthest) {
        over.farthest();
    }
    over.rose();
    over.ringDistances();
    painter.restore();
}

} // namespace quillon
