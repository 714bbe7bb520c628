#include "geo/ui/maplabels.h"

#include <QFontMetricsF>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>

namespace quillon {

namespace {

// Copies of the letters around them are painted many times as fast as an outline, but a drawing would keep
// each.
void paintHalo(
    QPainter &painter, QPointF baseline, const QFont &font, const QString &text, const QColor &halo)
{
    constexpr double reach = 1.4;
    if (painter.paintEngine()->type() == QPaintEngine::SVG) {
        QPainterPath outline;
        outline.addText(baseline, font, text);
        painter.strokePath(outline, QPen(halo, 2 * reach, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        return;
    }
    painter.setFont(font);
    painter.setPen(halo);
    for (const double x : {-reach, 0.0, reach}) {
        for (const double y : {-reach, 0.0, reach}) {
            painter.drawText(baseline + QPointF(x, y), text);
        }
    }
}

} // namespace

bool LabelRoom::isFree(const QRectF &place) const
{
    return m_area.contains(place)
        && std::ranges::none_of(m_taken, [&place](const QRectF &taken) { return taken.intersects(place); });
}

std::optional<QRectF> LabelRoom::beside(QPointF point, QSizeF size, double gap)
{
    struct Side
    {
        double x;
        double y;
    };
    // Where the middle of the text stands, in halves of its size from the point.
    static constexpr std::array<Side, 8> sides {
        {{1, 0}, {-1, 0}, {0, -1}, {0, 1}, {1, -1}, {-1, -1}, {1, 1}, {-1, 1}}};
    for (const double distance : {gap, 3 * gap}) {
        for (const Side &side : sides) {
            const QPointF middle = point
                + QPointF(side.x * (size.width() / 2 + distance), side.y * (size.height() / 2 + distance));
            const QRectF place(middle - QPointF(size.width(), size.height()) / 2, size);
            if (isFree(place)) {
                take(place);
                return place;
            }
        }
    }
    return std::nullopt;
}

QSizeF textSize(const QFont &font, const QString &text)
{
    const QFontMetricsF metrics(font);
    return {metrics.horizontalAdvance(text) + 2, metrics.height()};
}

void paintHaloText(QPainter &painter, const QRectF &place, const QFont &font, const QString &text,
    const QColor &colour, const QColor &halo)
{
    const QPointF baseline(place.left() + 1, place.top() + QFontMetricsF(font).ascent());
    paintHalo(painter, baseline, font, text, halo);
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(baseline, text);
}

} // namespace quillon
