#include "geo/ui/mapdots.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace quillon {

namespace {

constexpr double quarter = 0.25;
constexpr double hundredth = 0.01;
// Around a dot, for its edge and ring.
constexpr double surround = 3;

double roundedRadius(qint32 receptions)
{
    return std::round(dotRadius(receptions) / quarter) * quarter;
}

bool isNear(QPointF pixel, const QSizeF &size, double margin)
{
    return pixel.x() > -margin && pixel.y() > -margin && pixel.x() < size.width() + margin
        && pixel.y() < size.height() + margin;
}

} // namespace

double dotRadius(qint32 receptions)
{
    constexpr double smallest = 3;
    constexpr double growth = 0.85;
    constexpr double largest = 11;
    return std::min(largest, smallest + growth * std::log2(static_cast<double>(std::max(1, receptions))));
}

void paintDot(
    QPainter &painter, QPointF centre, double radius, const QColor &colour, const MapStyle &style, bool today)
{
    constexpr int pale = 215;
    if (today) {
        painter.setPen(QPen(style.dark ? Qt::white : Qt::black, 1.5));
        painter.setBrush(style.dark ? QColor(colour).lighter(110) : colour);
        painter.drawEllipse(centre, radius + 1, radius + 1);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(255, 255, 255, 230));
        painter.drawEllipse(centre, radius * 0.4, radius * 0.4);
        return;
    }
    QColor fill = colour;
    fill.setAlpha(pale);
    painter.setPen(QPen(style.edge(), 0.8));
    painter.setBrush(fill);
    painter.drawEllipse(centre, radius, radius);
}

std::optional<std::size_t> dotAt(const MapScene &scene, const MapViewport &viewport, QPointF pixel)
{
    constexpr double slack = 2;
    const auto &dots = scene.dots();
    for (std::size_t i = dots.size(); i-- > 0;) {
        const QPointF off = viewport.toPixel(dots[i].point) - pixel;
        if (std::hypot(off.x(), off.y()) <= dotRadius(dots[i].count) + slack) {
            return i;
        }
    }
    return std::nullopt;
}

std::vector<std::size_t> dotsInView(const MapScene &scene, const MapViewport &viewport)
{
    std::vector<std::size_t> seen;
    for (std::size_t i = 0; i < scene.dots().size(); ++i) {
        if (isNear(viewport.toPixel(scene.dots()[i].point), viewport.size(), 0)) {
            seen.push_back(i);
        }
    }
    return seen;
}

const QPixmap &DotPainter::picture(const Kind &kind, const MapStyle &style)
{
    QPixmap &picture = m_pictures[kind];
    if (picture.isNull()) {
        const double radius = kind.radius * quarter;
        const double scale = kind.scale * hundredth;
        const int side = static_cast<int>(std::ceil((radius + surround) * scale)) * 2 + 1;
        picture = QPixmap(side, side);
        picture.fill(Qt::transparent);
        picture.setDevicePixelRatio(scale);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        const double middle = side / scale / 2;
        paintDot(painter, {middle, middle}, radius, QColor::fromRgba(kind.colour), style, kind.today);
    }
    return picture;
}

void DotPainter::paint(
    QPainter &painter, const MapScene &scene, const MapViewport &viewport, const MapStyle &style)
{
    constexpr qsizetype most = 1000;
    if (m_pictures.size() > most) {
        m_pictures.clear();
    }
    const double scale = painter.device()->devicePixelRatioF();
    const int hundredths = static_cast<int>(std::lround(scale / hundredth));
    for (const MapDot &dot : scene.dots()) {
        const QPointF centre = viewport.toPixel(dot.point);
        if (!isNear(centre, viewport.size(), 20)) {
            continue;
        }
        const int quarters = static_cast<int>(std::lround(dotRadius(dot.count) / quarter));
        const QPixmap &pixmap = picture({style.mode(dot.mode).rgb(), quarters, dot.today, hundredths}, style);
        // On whole pixels of the device a picture is copied, not resampled.
        const double half = pixmap.width() / scale / 2;
        const auto aligned = [scale, half](
                                 double value) { return std::round((value - half) * scale) / scale; };
        painter.drawPixmap(QPointF(aligned(centre.x()), aligned(centre.y())), pixmap);
    }
}

void DotPainter::paintShapes(
    QPainter &painter, const MapScene &scene, const MapViewport &viewport, const MapStyle &style)
{
    for (const MapDot &dot : scene.dots()) {
        const QPointF centre = viewport.toPixel(dot.point);
        if (isNear(centre, viewport.size(), 20)) {
            paintDot(painter, centre, roundedRadius(dot.count), style.mode(dot.mode), style, dot.today);
        }
    }
}

} // namespace quillon
