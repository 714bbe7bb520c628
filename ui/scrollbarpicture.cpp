#include "ui/scrollbarpicture.h"

#include <QPainter>
#include <QPixmapCache>
#include <QStyleOptionSlider>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// Everything that such a bar is drawn by; of its range and value, where the slider is in pixels.
QString keyOf(const QStyleOptionSlider &option, QRect slider, qreal ratio)
{
    const QPoint start = slider.topLeft() - option.rect.topLeft();
    QString key = u"scroll bar"_s;
    for (const int part : {option.rect.width(), option.rect.height(), static_cast<int>(option.orientation),
             start.x(), start.y(), slider.width(), slider.height(), int {option.minimum == option.maximum},
             int {option.sliderPosition == option.minimum}, int {option.sliderPosition == option.maximum},
             int {option.upsideDown}, static_cast<int>(option.direction), static_cast<int>(option.state),
             static_cast<int>(option.subControls), static_cast<int>(option.activeSubControls),
             qRound(ratio * 1000)}) {
        key += u' ' + QString::number(part, 36);
    }
    return key + u' ' + QString::number(option.palette.cacheKey(), 36);
}

} // namespace

void drawScrollBar(QPainter &painter, const QStyleOptionSlider &option, QRect slider,
    const std::function<void(QPainter &)> &draw)
{
    const qreal ratio = painter.device()->devicePixelRatioF();
    const QString key = keyOf(option, slider, ratio);
    QPixmap picture;
    if (!QPixmapCache::find(key, &picture)) {
        picture = QPixmap(option.rect.size() * ratio);
        picture.setDevicePixelRatio(ratio);
        picture.fill(Qt::transparent);
        QPainter painterOfPicture(&picture);
        painterOfPicture.translate(-option.rect.topLeft());
        draw(painterOfPicture);
        painterOfPicture.end();
        QPixmapCache::insert(key, picture);
    }
    painter.drawPixmap(option.rect.topLeft(), picture);
}

} // namespace quillon
