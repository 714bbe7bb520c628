#include "stats/ui/rosechart.h"

#include "core/manyentries.h"
#include "stats/charttable.h"
#include "stats/collectionrules.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostRings = 5;

qint32 sumOf(const std::array<qint32, mapModeCount> &counts)
{
    return std::accumulate(counts.begin(), counts.end(), 0);
}

QPointF centreOf(QSize size)
{
    return {size.width() / 2.0, size.height() / 2.0};
}

qreal radiusOf(QSize size, const QFontMetricsF &font)
{
    return std::max(std::min(size.width(), size.height()) / 2.0 - 2 * font.height(), 10.0);
}

// The point in that direction, clockwise from north.
QPointF pointAt(QPointF centre, qreal degrees, qreal length)
{
    const qreal angle = degrees * std::numbers::pi / 180;
    return centre + QPointF(std::sin(angle), -std::cos(angle)) * length;
}

QPainterPath sector(QPointF centre, std::size_t direction, qreal inner, qreal outer)
{
    constexpr qreal gap = 0.6;
    // Qt counts from the east, against the clock.
    const qreal start = 90 - static_cast<qreal>(direction) * directionStep - gap;
    const qreal sweep = -(directionStep - 2 * gap);
    const auto square = [centre](qreal radius) {
        return QRectF(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
    };
    QPainterPath path;
    path.arcMoveTo(square(outer), start);
    path.arcTo(square(outer), start, sweep);
    if (inner > 0) {
        path.arcTo(square(inner), start + sweep, -sweep);
    } else {
        path.lineTo(centre);
    }
    path.closeSubpath();
    return path;
}

} // namespace

RoseChart::RoseChart(QWidget *parent)
    : PaintedChart(parent)
{
    constexpr int least = 200;
    setMinimumSize(least, least);
}

void RoseChart::setFigures(std::shared_ptr<const DirectionFigures> figures)
{
    m_figures = std::move(figures);
    m_modes.clear();
    m_most = 0;
    for (std::size_t mode = 0; mode < mapModeCount; ++mode) {
        if (std::ranges::any_of(m_figures->counts, [mode](const auto &counts) { return counts[mode] > 0; })) {
            m_modes.push_back(mode);
        }
    }
    for (const auto &counts : m_figures->counts) {
        m_most = std::max(m_most, sumOf(counts));
    }
    update();
}

int RoseChart::pictureHeight(int width, const QFont & /*font*/) const
{
    return width * 3 / 4;
}

QPoint RoseChart::placeOf(std::size_t direction) const
{
    const qreal middle = (static_cast<qreal>(direction) + 0.5) * directionStep;
    return pointAt(centreOf(size()), middle, radiusOf(size(), fontMetrics()) - 3).toPoint();
}

void RoseChart::paintChart(QPainter &painter, QSize size, const ChartStyle &style) const
{
    const QPointF centre = centreOf(size);
    const qreal radius = radiusOf(size, QFontMetricsF(painter.font()));
    if (m_most == 0) {
        painter.setPen(style.quiet);
        painter.drawText(QRect(QPoint(), size), Qt::AlignCenter | Qt::TextWordWrap,
            u"No directions yet.\nThey need your home in the setup, and sites with their places."_s);
        return;
    }
    paintRings(painter, centre, radius, style);
    const qreal perReception = radius / axisScale(m_most, mostRings).maximum;
    painter.setPen(Qt::NoPen);
    for (std::size_t direction = 0; direction < directionCount; ++direction) {
        qreal inner = 0;
        for (std::size_t i = 0; i < m_modes.size(); ++i) {
            const qreal outer = inner + m_figures->counts[direction][m_modes[i]] * perReception;
            if (outer > inner) {
                painter.setBrush(style.series(static_cast<int>(i), static_cast<int>(m_modes.size())));
                painter.drawPath(sector(centre, direction, inner, outer));
            }
            inner = outer;
        }
    }
    const AxisScale scale = axisScale(m_most, mostRings);
    painter.setPen(style.text);
    for (int count = scale.step; count < scale.maximum; count += scale.step) {
        painter.drawText(pointAt(centre, 0, count * perReception) + QPointF(3, -2), QString::number(count));
    }
    const qreal line = QFontMetricsF(painter.font()).height();
    paintLegend(painter, {line, line}, style);
}

void RoseChart::paintRings(QPainter &painter, QPointF centre, qreal radius, const ChartStyle &style) const
{
    const AxisScale scale = axisScale(m_most, mostRings);
    const QFontMetricsF font(painter.font());
    painter.setBrush(Qt::NoBrush);
    for (int count = scale.step; count <= scale.maximum; count += scale.step) {
        const qreal ring = radius * count / scale.maximum;
        painter.setPen(style.grid);
        painter.drawEllipse(centre, ring, ring);
    }
    painter.setPen(style.text);
    for (const auto &[degrees, name] : {std::pair(0, u"N"_s), {45, u"NE"_s}, {90, u"E"_s}, {135, u"SE"_s},
             {180, u"S"_s}, {225, u"SW"_s}, {270, u"W"_s}, {315, u"NW"_s}}) {
        const QPointF middle = pointAt(centre, degrees, radius + font.height());
        const QRectF place(
            middle - QPointF(font.height(), font.height() / 2), QSizeF(2 * font.height(), font.height()));
        painter.drawText(place, Qt::AlignCenter, name);
    }
}

void RoseChart::paintLegend(QPainter &painter, QPointF corner, const ChartStyle &style) const
{
    const QFontMetricsF font(painter.font());
    for (std::size_t i = 0; i < m_modes.size(); ++i) {
        const QRectF square(corner, QSizeF(font.ascent(), font.ascent()));
        painter.setPen(Qt::NoPen);
        painter.setBrush(style.series(static_cast<int>(i), static_cast<int>(m_modes.size())));
        painter.drawRect(square);
        painter.setPen(style.text);
        painter.drawText(square.bottomRight() + QPointF(6, -2), mapModeName(m_modes[i]));
        corner.ry() += font.height() + 2;
    }
    if (m_figures->unknown > 0) {
        painter.setPen(style.quiet);
        painter.drawText(corner + QPointF(0, font.ascent()),
            u"%1 without a direction"_s.arg(receptionCount(m_figures->unknown)));
    }
}

std::optional<std::size_t> RoseChart::directionAt(QPoint place) const
{
    const QPointF away = place - centreOf(size());
    const qreal length = std::hypot(away.x(), away.y());
    if (m_most == 0 || length < 2 || length > radiusOf(size(), fontMetrics())) {
        return std::nullopt;
    }
    const qreal degrees = std::atan2(away.x(), -away.y()) * 180 / std::numbers::pi;
    const auto direction = static_cast<std::size_t>((degrees < 0 ? degrees + 360 : degrees) / directionStep);
    return direction % directionCount;
}

QString RoseChart::tip(QPoint place) const
{
    const auto direction = directionAt(place);
    if (!direction) {
        return {};
    }
    const auto from = static_cast<int>(*direction) * directionStep;
    QString text = u"%1° to %2°: %3"_s.arg(QString::number(from), QString::number(from + directionStep - 1),
        receptionCount(sumOf(m_figures->counts[*direction])));
    for (const std::size_t mode : m_modes) {
        if (const qint32 count = m_figures->counts[*direction][mode]; count > 0) {
            text += u'\n' + mapModeName(mode) + u": "_s + QString::number(count);
        }
    }
    return text;
}

void RoseChart::choose(QPoint place)
{
    const auto direction = directionAt(place);
    if (direction && sumOf(m_figures->counts[*direction]) > 0) {
        Q_EMIT directionChosen(*direction);
    }
}

} // namespace quillon
