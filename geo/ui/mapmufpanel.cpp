#include "geo/ui/mapclouds.h"
#include "geo/ui/maplabels.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr double padding = 8;
constexpr double barStep = 11;
constexpr double barHeight = 56;
constexpr double fromEdge = 8;

QString title()
{
    return u"Highest Es MUF of each hour, MHz"_s;
}

double highestOf(const MapScene &scene)
{
    return *std::ranges::max_element(scene.data().highestMuf);
}

} // namespace

QRectF mufPanelPlace(const MapScene &scene, QSizeF size, const QFont &font)
{
    const double line = QFontMetricsF(font).height();
    const double width = std::max(textSize(font, title()).width(),
                             barStep * static_cast<double>(scene.data().highestMuf.size()))
        + 2 * padding;
    const double height = barHeight + 3 * line + 2 * padding;
    const bool fits = width + 2 * fromEdge < size.width() && height + 2 * fromEdge < size.height();
    if (highestOf(scene) <= 0 || !fits) {
        return {};
    }
    return {size.width() - width - fromEdge, size.height() - height - fromEdge, width, height};
}

void paintMufPanel(
    QPainter &painter, const QRectF &place, const MapScene &scene, const MapStyle &style, const QFont &font)
{
    const double line = QFontMetricsF(font).height();
    painter.setFont(font);
    painter.setPen(style.border);
    painter.setBrush(style.halo);
    painter.drawRoundedRect(place, 4, 4);
    const QRectF inner = place.adjusted(padding, padding, -padding, -padding);
    painter.setPen(style.text);
    painter.drawText(inner, Qt::AlignTop | Qt::AlignLeft, title());

    const auto &hours = scene.data().highestMuf;
    const double highest = highestOf(scene);
    const double bottom = inner.bottom() - line;
    const double step = inner.width() / static_cast<double>(hours.size());
    bool named = false;
    for (std::size_t hour = 0; hour < hours.size(); ++hour) {
        const double left = inner.left() + step * static_cast<double>(hour);
        const double height = barHeight * hours[hour] / highest;
        const bool best = !named && hours[hour] == highest;
        const QRectF bar(left + 1, bottom - height, step - 2, height);
        painter.fillRect(bar, best ? style.mode(esMode) : style.quiet);
        if (best) {
            named = true;
            const QString number = QString::number(highest, 'f', 1);
            const double width = textSize(font, number).width();
            const double x = std::clamp(bar.center().x() - width / 2, inner.left(), inner.right() - width);
            painter.drawText(QRectF(x, bar.top() - line, width, line), Qt::AlignCenter, number);
        }
        if (hour % 6 == 0) {
            painter.drawText(QPointF(left, bottom + QFontMetricsF(font).ascent()), QString::number(hour));
        }
    }
    painter.setPen(style.ring);
    painter.drawLine(QPointF(inner.left(), bottom), QPointF(inner.right(), bottom));
}

} // namespace quillon
