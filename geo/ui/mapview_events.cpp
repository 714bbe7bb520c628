#include "geo/ui/mapview.h"

#include <QAccessible>
#include <QApplication>
#include <QGestureEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPinchGesture>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr double zoomStep = 1.4;
constexpr double doubleClickStep = 2;

} // namespace

void MapView::zoom(double factor, QPointF pixel)
{
    // What a touchpad tells may shrink the map to nothing and beyond.
    if (m_scene.data().home && factor > 0 && std::isfinite(factor)) {
        moveTo(m_viewport.zoomed(factor, pixel));
    }
}

// The pointer when it is over the map, else the middle.
QPointF MapView::zoomPoint() const
{
    return underMouse() ? QPointF(mapFromGlobal(QCursor::pos())) : QRectF(rect()).center();
}

void MapView::zoomIn()
{
    zoom(zoomStep, QRectF(rect()).center());
}

void MapView::zoomOut()
{
    zoom(1 / zoomStep, QRectF(rect()).center());
}

// To the next dot in sight in that direction, from the pointed one or from the middle.
void MapView::goToDot(QPointF direction)
{
    const QPointF from =
        m_pointed ? m_viewport.toPixel(m_scene.dots()[*m_pointed].point) : QRectF(rect()).center();
    std::optional<std::size_t> next;
    double nearest = 0;
    for (const std::size_t dot : dotsInView()) {
        const QPointF way = m_viewport.toPixel(m_scene.dots()[dot].point) - from;
        const double along = QPointF::dotProduct(way, direction);
        const double aside = std::abs(way.x() * direction.y() - way.y() * direction.x());
        // Whatever lies within 45 degrees, what lies straight ahead rather than what is a little nearer.
        if (dot != m_pointed && along > 0 && aside <= along && (!next || along + aside < nearest)) {
            next = dot;
            nearest = along + aside;
        }
    }
    if (!next) {
        return;
    }
    m_pointed = next;
    update();
    const QPoint pixel = m_viewport.toPixel(m_scene.dots()[*next].point).toPoint();
    showTip(pixel, *next);
    tellPointed();
}

// A click on a dot, or Enter: its latest reception, with Ctrl its site.
void MapView::pick(std::size_t dot, Qt::KeyboardModifiers modifiers)
{
    if (!modifiers.testFlag(Qt::ControlModifier)) {
        chooseDot(dot);
        return;
    }
    const MapSite &site = m_scene.data().sites[m_scene.dots()[dot].site];
    // The answer may bring other data.
    const QString name = site.name;
    const QString country = site.country;
    Q_EMIT siteChosen(name, country);
}

void MapView::keyPressEvent(QKeyEvent *event)
{
    constexpr double step = 80;
    const bool toDot = event->modifiers().testFlag(Qt::ControlModifier);
    const auto move = [this, toDot](double x, double y) {
        toDot ? goToDot({-x / step, -y / step}) : moveTo(m_viewport.dragged({x, y}));
    };
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        return zoom(zoomStep, zoomPoint());
    case Qt::Key_Minus:
        return zoom(1 / zoomStep, zoomPoint());
    case Qt::Key_Home:
        return showAll();
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (m_pointed) {
            return pick(*m_pointed, event->modifiers());
        }
        return QWidget::keyPressEvent(event);
    case Qt::Key_Left:
        return move(step, 0);
    case Qt::Key_Right:
        return move(-step, 0);
    case Qt::Key_Up:
        return move(0, step);
    case Qt::Key_Down:
        return move(0, -step);
    default:
        QWidget::keyPressEvent(event);
    }
}

void MapView::wheelEvent(QWheelEvent *event)
{
    constexpr double notch = 120;
    if (event->angleDelta().y() != 0) {
        zoom(std::pow(zoomStep, event->angleDelta().y() / notch), event->position());
    }
    event->accept();
}

void MapView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && m_scene.data().home) {
        m_drag = Drag {event->position(), m_viewport, false};
    }
}

void MapView::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_drag) {
        point(event->position());
        return;
    }
    const QPointF way = event->position() - m_drag->pressed;
    if (!m_drag->moved && way.manhattanLength() < QApplication::startDragDistance()) {
        return;
    }
    m_drag->moved = true;
    setCursor(Qt::ClosedHandCursor);
    moveTo(m_drag->viewport.dragged(way));
}

void MapView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_drag) {
        return;
    }
    const bool moved = m_drag->moved;
    m_drag.reset();
    unsetCursor();
    point(event->position());
    if (!moved && m_pointed) {
        pick(*m_pointed, event->modifiers());
    }
}

void MapView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        zoom(doubleClickStep, event->position());
    }
}

void MapView::leaveEvent(QEvent *event)
{
    QWidget::leaveEvent(event);
    if (m_pointed) {
        m_pointed.reset();
        update();
    }
}

void MapView::point(QPointF pixel)
{
    const auto dot = m_clouds ? std::nullopt : dotAt(m_scene, m_viewport, pixel);
    if (dot != m_pointed) {
        m_pointed = dot;
        setCursor(dot ? Qt::PointingHandCursor : Qt::ArrowCursor);
        update();
    }
}

void MapView::showTip(QPoint pixel, std::size_t dot)
{
    // Names come from strangers: nothing in them is taken for markup.
    const QString text = m_scene.linesOf(m_scene.dots()[dot]).join(u'\n').toHtmlEscaped();
    const QRect area(pixel - QPoint(4, 4), QSize(9, 9));
    QToolTip::showText(mapToGlobal(pixel), u"<p style=\"white-space:pre\">"_s + text + u"</p>"_s, this, area);
}

// Assistive tools read the dot that the keys have come to.
void MapView::tellPointed()
{
    QAccessibleInterface *map = QAccessible::queryAccessibleInterface(this);
    const auto &dots = dotsInView();
    const auto place = std::ranges::find(dots, *m_pointed) - dots.begin();
    if (map && QAccessible::isActive()) {
        QAccessibleEvent focus(this, QAccessible::Focus);
        focus.setChild(map->childCount() - static_cast<int>(dots.size() - static_cast<std::size_t>(place)));
        QAccessible::updateAccessibility(&focus);
    }
}

bool MapView::gesture(QEvent *event)
{
    if (event->type() == QEvent::NativeGesture) {
        const auto *native = static_cast<QNativeGestureEvent *>(event);
        if (native->gestureType() == Qt::ZoomNativeGesture) {
            zoom(1 + native->value(), native->position());
            return true;
        }
        return false;
    }
    auto *gestures = static_cast<QGestureEvent *>(event);
    const auto *pinch = static_cast<QPinchGesture *>(gestures->gesture(Qt::PinchGesture));
    if (!pinch) {
        return false;
    }
    zoom(pinch->scaleFactor(), mapFromGlobal(pinch->centerPoint()));
    gestures->accept();
    return true;
}

bool MapView::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::ToolTip: {
        const QPoint pixel = static_cast<QHelpEvent *>(event)->pos();
        if (const auto dot = m_clouds ? std::nullopt : dotAt(m_scene, m_viewport, QPointF(pixel))) {
            showTip(pixel, *dot);
        } else {
            QToolTip::hideText();
            event->ignore();
        }
        return true;
    }
    case QEvent::Gesture:
    case QEvent::NativeGesture:
        return gesture(event) || QWidget::event(event);
    default:
        return QWidget::event(event);
    }
}

} // namespace quillon
