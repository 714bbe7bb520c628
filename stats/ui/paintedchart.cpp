#include "stats/ui/paintedchart.h"

#include "ui/plaintip.h"

#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

namespace quillon {

PaintedChart::PaintedChart(QWidget *parent)
    : QWidget(parent)
{
    setMouseTracking(true);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
}

QImage PaintedChart::picture() const
{
    constexpr int width = 1920;
    constexpr qreal enlargement = 1.5;
    const QFont pictureFont = scaledFont(font(), enlargement);
    const QSize size(width, pictureHeight(width, pictureFont));
    QImage image(size, QImage::Format_RGB32);
    const ChartStyle style = ChartStyle::of(lightPalette());
    image.fill(style.ground);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(pictureFont);
    paintChart(painter, size, style);
    return image;
}

void PaintedChart::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintChart(painter, size(), ChartStyle::of(palette()));
}

void PaintedChart::mouseMoveEvent(QMouseEvent *event)
{
    const QString told = tip(event->position().toPoint());
    setCursor(told.isEmpty() ? Qt::ArrowCursor : Qt::PointingHandCursor);
    if (told.isEmpty()) {
        QToolTip::hideText();
    } else {
        QToolTip::showText(event->globalPosition().toPoint(), plainTip(told), this);
    }
}

void PaintedChart::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        choose(event->position().toPoint());
    }
}

QColor between(const QColor &first, const QColor &second, float shareOfSecond)
{
    const auto mix = [shareOfSecond](float a, float b) { return a + (b - a) * shareOfSecond; };
    return QColor::fromRgbF(mix(first.redF(), second.redF()), mix(first.greenF(), second.greenF()),
        mix(first.blueF(), second.blueF()));
}

} // namespace quillon
