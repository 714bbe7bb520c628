#include "ui/keptpictures.h"

#include <QPainter>
#include <QStyleOptionComboBox>
#include <QStyleOptionFrame>
#include <QStyleOptionSlider>

#include <cmath>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

void append(QString &key, quint32 part)
{
    key += QChar(static_cast<char16_t>(part));
    key += QChar(static_cast<char16_t>(part >> 16U));
}

// Colours by what they are: a palette that was set anew with the same ones has another key.
void appendColours(QString &key, const QPalette &palette)
{
    for (int role = 0; role < QPalette::NColorRoles; ++role) {
        const QBrush &brush = palette.brush(static_cast<QPalette::ColorRole>(role));
        append(key, brush.color().rgba());
        append(key, static_cast<quint32>(brush.style()));
        if (brush.style() > Qt::DiagCrossPattern) {
            append(key, static_cast<quint32>(palette.cacheKey() >> 32));
            append(key, static_cast<quint32>(palette.cacheKey()));
        }
    }
}

} // namespace

// Draws what looks the same wherever `parts`, its size, its state and its colours are the same.
void KeptPictures::drawKept(Pictures &pictures, QPainter &painter, const QStyleOption &option, QString key,
    std::initializer_list<int> parts, const Draw &draw)
{
    const qreal ratio = painter.device()->devicePixelRatioF();
    if (ratio != std::floor(ratio)) {
        // A picture would lie between the pixels.
        draw(painter);
        return;
    }
    for (const int part : parts) {
        append(key, static_cast<quint32>(part));
    }
    for (const int part : {option.rect.width(), option.rect.height(), static_cast<int>(option.direction),
             static_cast<int>(option.state), static_cast<int>(option.palette.currentColorGroup()),
             static_cast<int>(option.fontMetrics.fontDpi()), qRound(ratio)}) {
        append(key, static_cast<quint32>(part));
    }
    appendColours(key, option.palette);
    QPixmap picture;
    if (const QPixmap *kept = pictures.object(key)) {
        picture = *kept;
    } else {
        picture = QPixmap(option.rect.size() * ratio);
        picture.setDevicePixelRatio(ratio);
        picture.fill(Qt::transparent);
        QPainter painterOfPicture(&picture);
        painterOfPicture.translate(-option.rect.topLeft());
        draw(painterOfPicture);
        painterOfPicture.end();
        pictures.insert(
            key, new QPixmap(picture), qsizetype {option.rect.width()} * option.rect.height() * 4);
    }
    painter.drawPixmap(option.rect.topLeft(), picture);
}

void KeptPictures::drawScrollBar(
    QPainter &painter, const QStyleOptionSlider &option, QRect slider, const Draw &draw)
{
    // Of its range and value, where the slider is in pixels.
    const QPoint start = slider.topLeft() - option.rect.topLeft();
    drawKept(m_scrollBars, painter, option, u"scroll bar"_s,
        {static_cast<int>(option.orientation), start.x(), start.y(), slider.width(), slider.height(),
            int {option.minimum == option.maximum}, int {option.sliderPosition == option.minimum},
            int {option.sliderPosition == option.maximum}, int {option.upsideDown},
            static_cast<int>(option.subControls), static_cast<int>(option.activeSubControls)},
        draw);
}

void KeptPictures::drawCombo(QPainter &painter, const QStyleOptionComboBox &option, const Draw &draw)
{
    drawKept(m_pictures, painter, option, u"combo"_s,
        {int {option.editable}, int {option.frame}, static_cast<int>(option.subControls),
            static_cast<int>(option.activeSubControls)},
        draw);
}

void KeptPictures::drawFieldPanel(QPainter &painter, const QStyleOptionFrame &option, const Draw &draw)
{
    drawKept(m_pictures, painter, option, u"field"_s,
        {option.lineWidth, option.midLineWidth, static_cast<int>(option.features.toInt()),
            static_cast<int>(option.frameShape)},
        draw);
}

void KeptPictures::drawGroupFrame(QPainter &painter, const QStyleOptionFrame &option, const Draw &draw)
{
    drawKept(m_pictures, painter, option, u"group"_s,
        {option.fontMetrics.height(), option.lineWidth, option.midLineWidth,
            static_cast<int>(option.features.toInt())},
        draw);
}

} // namespace quillon
