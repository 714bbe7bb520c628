#include "geo/ui/mapview.h"

#include "geo/ui/mapaccessible.h"
#include "geo/ui/mapground.h"
#include "geo/ui/maplegend.h"
#include "geo/ui/mapoverlay.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// After the last step of a move, ms.
constexpr int pause = 120;

} // namespace

MapView::MapView(QWidget *parent)
    : QWidget(parent)
    , m_legend(new MapLegend(this))
    , m_noHome(new QLabel(this))
{
    makeMapAccessible();
    setObjectName(u"map"_s);
    setAccessibleName(u"Map of the receptions"_s);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    grabGesture(Qt::PinchGesture);
    m_noHome->setObjectName(u"mapNoHome"_s);
    m_noHome->setAlignment(Qt::AlignCenter);
    m_noHome->setWordWrap(true);
    connect(m_noHome, &QLabel::linkActivated, this, [this] { Q_EMIT setupWanted(); });
    connect(m_legend, &MapLegend::modeToggled, this, &MapView::setModeShown);
    m_settling.setSingleShot(true);
    connect(&m_settling, &QTimer::timeout, this, &MapView::settle);
    applyStyle();
}

void MapView::setData(MapData newData)
{
    const bool otherHome = newData.home != m_scene.data().home;
    if (otherHome || newData.unit != m_scene.data().unit) {
        m_groundOf.reset();
    }
    const bool nothingSeen = m_untouched && m_scene.dots().empty();
    m_scene.setData(std::move(newData));
    if (otherHome || nothingSeen) {
        m_untouched = true;
        m_viewport = wholeViewport();
        m_settling.start(pause);
    }
    m_legend->show(m_scene, m_style);
    dotsChanged();
}

void MapView::setPath(std::optional<MapPath> path)
{
    m_scene.setPath(std::move(path));
    update();
}

void MapView::setClouds(bool shown)
{
    m_clouds = shown;
    dotsChanged();
}

void MapView::setModeShown(std::size_t mode, bool shown)
{
    m_scene.setModeShown(mode, shown);
    m_legend->show(m_scene, m_style);
    dotsChanged();
}

void MapView::dotsChanged()
{
    ++m_generation;
    m_inView.reset();
    m_pointed.reset();
    m_cloudsOf.reset();
    setAccessibleDescription(m_clouds && m_scene.data().home ? mapMessage(m_scene, true) : QString());
    updateMessage();
    arrange();
    update();
}

const std::vector<std::size_t> &MapView::dotsInView() const
{
    if (!m_inView) {
        m_inView = m_clouds ? std::vector<std::size_t>() : quillon::dotsInView(m_scene, m_viewport);
    }
    return *m_inView;
}

void MapView::chooseDot(std::size_t dot)
{
    Q_EMIT receptionChosen(m_scene.dots()[dot].lastEntry);
}

// What was received, with some room around it; a continent when that is little.
MapViewport MapView::wholeViewport() const
{
    constexpr double room = 1.12;
    constexpr double least = 900;
    constexpr double nothing = 3000;
    const double reach = m_scene.dots().empty() ? nothing : std::max(least, m_scene.reach() * room);
    return MapViewport::around(std::min(reach, antipodeDistance * room), QSizeF(size()));
}

void MapView::showAll()
{
    m_untouched = true;
    look(wholeViewport());
}

void MapView::look(const MapViewport &viewport)
{
    m_viewport = viewport;
    m_inView.reset();
    m_pointed.reset();
    update();
}

// By the user: while the map moves each frame has to be quick, so outlines come one step coarser.
void MapView::moveTo(const MapViewport &viewport)
{
    m_untouched = false;
    moving();
    look(viewport);
}

void MapView::moving()
{
    m_moving = true;
    m_settling.start(pause);
}

void MapView::settle()
{
    const bool moved = std::exchange(m_moving, false);
    if (moved) {
        m_groundOf.reset();
        update();
    }
    if (!isVisible() || !m_scene.data().home) {
        return;
    }
    if (moved) {
        // Here, and not in the frame: each by itself takes little time.
        (void)ground();
    }
    // The first step of the next move is not to wait for its outlines.
    (void)m_scene.outlines(detailFor(m_viewport.kmPerPixel() / devicePixelRatioF(), true));
}

MapPicture MapView::picture() const
{
    return {m_scene, m_viewport, m_style, font(), m_clouds};
}

void MapView::copyPicture(QSize size) const
{
    QGuiApplication::clipboard()->setImage(mapImage(picture(), size));
}

void MapView::applyStyle()
{
    m_style = MapStyle::of(palette());
    m_dots = {};
    m_groundOf.reset();
    m_cloudsOf.reset();
    m_legend->show(m_scene, m_style);
    updateMessage();
    arrange();
    update();
}

void MapView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange
        || event->type() == QEvent::StyleChange) {
        applyStyle();
    }
}

void MapView::updateMessage()
{
    const bool home = m_scene.data().home.has_value();
    m_legend->setVisible(home && !m_clouds && !m_legend->isEmpty());
    m_noHome->setText(
        u"The map is drawn around home, and home is not set.<br>"_s + m_style.linked(u"Set home…"_s));
    m_noHome->setVisible(!home);
}

void MapView::arrange()
{
    constexpr int fromEdge = 8;
    m_legend->move(fromEdge, height() - m_legend->height() - fromEdge);
    m_noHome->setGeometry(rect().adjusted(fromEdge, fromEdge, -fromEdge, -fromEdge));
}

void MapView::resizeEvent(QResizeEvent *)
{
    const MapViewport resized = m_untouched ? wholeViewport() : m_viewport.resized(QSizeF(size()));
    if (m_groundOf && isVisible()) {
        // One step of many, as when the edge of the dock is dragged.
        moving();
    }
    look(resized);
    arrange();
}

const QPixmap &MapView::ground()
{
    const QSize pixels = (QSizeF(size()) * devicePixelRatioF()).toSize();
    if (m_groundOf != m_viewport || m_ground.size() != pixels) {
        if (m_ground.size() != pixels) {
            m_ground = QPixmap(pixels);
        }
        m_ground.setDevicePixelRatio(devicePixelRatioF());
        QPainter painter(&m_ground);
        const OutlineDetail detail = detailFor(m_viewport.kmPerPixel() / devicePixelRatioF(), m_moving);
        paintGround(painter, m_viewport, m_scene.outlines(detail), m_style, m_scene.data().unit, m_moving);
        m_groundOf = m_viewport;
    }
    return m_ground;
}

void MapView::paintClouds(QPainter &painter)
{
    if (m_cloudsOf != m_viewport) {
        m_cloudPicture = cloudPicture(m_scene, m_viewport, m_style);
        m_cloudsOf = m_viewport;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(m_cloudPicture.place, m_cloudPicture.image);
}

void MapView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (!m_scene.data().home) {
        painter.fillRect(rect(), m_style.beyond);
        return;
    }
    painter.drawPixmap(0, 0, ground());
    MapOverlay overlay {font(), !m_clouds, m_pointed, {}, mapMessage(m_scene, m_clouds)};
    if (m_clouds) {
        paintClouds(painter);
        const QRectF panel = mufPanelPlace(m_scene, QSizeF(size()), font());
        overlay.covered.push_back(panel);
        paintOverlay(painter, m_scene, m_viewport, m_style, overlay);
        if (!panel.isEmpty()) {
            painter.setRenderHint(QPainter::Antialiasing);
            paintMufPanel(painter, panel, m_scene, m_style, font());
        }
        return;
    }
    m_dots.paint(painter, m_scene, m_viewport, m_style);
    if (m_legend->isVisible()) {
        overlay.covered.emplace_back(m_legend->geometry());
    }
    paintOverlay(painter, m_scene, m_viewport, m_style, overlay);
}

} // namespace quillon
