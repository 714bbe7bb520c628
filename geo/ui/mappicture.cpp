#include "geo/ui/mappicture.h"

#include "geo/ui/mapclouds.h"
#include "geo/ui/mapdots.h"
#include "geo/ui/mapground.h"
#include "geo/ui/maplabels.h"
#include "geo/ui/mapoverlay.h"
#include "platform/runtimeerror.h"

#include <QBuffer>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QPainter>
#include <QSvgGenerator>

#include <algorithm>
#include <vector>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// The legend without its boxes to tick.
class LegendPainter
{
public:
    LegendPainter(const MapPicture &picture, const QFont &font, QSizeF size)
        : m_picture(picture)
        , m_font(font)
        , m_line(QFontMetricsF(m_font).height() + 2)
    {
        double width = 0;
        for (std::size_t mode = 0; mode < mapModeCount; ++mode) {
            if (picture.scene.receptions(mode) > 0 && picture.scene.isModeShown(mode)) {
                m_modes.push_back(mode);
                width = std::max(width, textSize(m_font, words(mode)).width());
            }
        }
        const double height = m_line * static_cast<double>(m_modes.size()) + 2 * padding;
        m_place = {8, size.height() - height - 8, width + textLeft + padding, height};
    }

    [[nodiscard]] bool isEmpty() const { return m_modes.empty(); }
    [[nodiscard]] QRectF place() const { return m_place; }

    void paint(QPainter &painter) const
    {
        painter.setPen(m_picture.style.border);
        painter.setBrush(m_picture.style.halo);
        painter.drawRoundedRect(m_place, 4, 4);
        double top = m_place.top() + padding;
        for (const std::size_t mode : m_modes) {
            const QPointF dot(m_place.left() + padding + 6, top + m_line / 2);
            paintDot(painter, dot, 4.5, m_picture.style.mode(mode), m_picture.style, false);
            painter.setFont(m_font);
            painter.setPen(m_picture.style.text);
            painter.drawText(
                QPointF(m_place.left() + textLeft, top + QFontMetricsF(m_font).ascent() + 1), words(mode));
            top += m_line;
        }
    }

private:
    static constexpr double padding = 6;
    static constexpr double textLeft = 24;

    [[nodiscard]] QString words(std::size_t mode) const
    {
        return mapModeName(mode) + u"  "_s + QString::number(m_picture.scene.receptions(mode));
    }

    const MapPicture &m_picture;
    QFont m_font;
    double m_line;
    std::vector<std::size_t> m_modes;
    QRectF m_place;
};

void paintPicture(QPainter &painter, const MapPicture &picture, QSize size)
{
    // Up to this side letters keep the size that they have on the screen.
    constexpr double plain = 900;
    const double scale = std::max(1.0, std::min(size.width(), size.height()) / plain);
    const QSizeF logical = QSizeF(size) / scale;
    painter.scale(scale, scale);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setClipRect(QRectF({0, 0}, logical));
    painter.fillRect(QRectF({0, 0}, logical), picture.style.beyond);
    if (!picture.scene.data().home) {
        return;
    }
    const QSizeF shown = picture.viewport.size();
    const double kmPerPixel = picture.viewport.kmPerPixel()
        * std::max(shown.width() / logical.width(), shown.height() / logical.height());
    const MapViewport viewport(picture.viewport.centre(), kmPerPixel, logical);
    // In points a letter would follow the resolution of the device.
    QFont font = picture.font;
    font.setPixelSize(QFontInfo(picture.font).pixelSize());

    paintGround(painter, viewport, picture.scene.outlines(detailFor(kmPerPixel / scale)), picture.style,
        picture.scene.data().unit);
    const LegendPainter legend(picture, font, logical);
    MapOverlay overlay {font, !picture.clouds, {}, {}, mapMessage(picture.scene, picture.clouds)};
    if (picture.clouds) {
        const CloudPicture clouds = cloudPicture(picture.scene, viewport, picture.style);
        const QRectF panel = mufPanelPlace(picture.scene, logical, font);
        painter.drawImage(clouds.place, clouds.image);
        overlay.covered.push_back(panel);
        paintOverlay(painter, picture.scene, viewport, picture.style, overlay);
        if (!panel.isEmpty()) {
            paintMufPanel(painter, panel, picture.scene, picture.style, font);
        }
        return;
    }
    DotPainter::paintShapes(painter, picture.scene, viewport, picture.style);
    overlay.covered.push_back(legend.place());
    paintOverlay(painter, picture.scene, viewport, picture.style, overlay);
    if (!legend.isEmpty()) {
        legend.paint(painter);
    }
}

} // namespace

QImage mapImage(const MapPicture &picture, QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) {
        throw RuntimeError(ErrorName::InvalidProcedureCall,
            u"Making a picture of %1 x %2 pixels"_s.arg(
                QString::number(size.width()), QString::number(size.height())));
    }
    QPainter painter(&image);
    paintPicture(painter, picture, size);
    return image;
}

QByteArray mapSvg(const MapPicture &picture, QSize size)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(size);
    generator.setViewBox(QRect({0, 0}, size));
    constexpr int screen = 96;
    generator.setResolution(screen);
    generator.setTitle(u"Map of receptions"_s);
    QPainter painter(&generator);
    paintPicture(painter, picture, size);
    painter.end();
    return bytes;
}

QByteArray pictureBytes(const MapPicture &picture, QSize size, const QString &name)
{
    if (name.endsWith(u".svg", Qt::CaseInsensitive)) {
        return mapSvg(picture, size);
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!mapImage(picture, size).save(&buffer, "PNG")) {
        throw RuntimeError(ErrorName::InvalidProcedureCall, u"Making a PNG of the map"_s);
    }
    return bytes;
}

} // namespace quillon
