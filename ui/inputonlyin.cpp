#include "ui/inputonlyin.h"

#include <QApplication>
#include <QEvent>
#include <QShortcut>
#include <QWidget>
#include <QWindow>

namespace quillon {

namespace {

bool isInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

} // namespace

InputOnlyIn::InputOnlyIn(QWidget &window)
    : m_window(window)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool InputOnlyIn::eventFilter(QObject *watched, QEvent *event)
{
    // A modal box lets nothing through by itself.
    const bool dropped = isInput(event->type()) && !QApplication::activeModalWidget() && !mayPass(watched);
    return dropped || QObject::eventFilter(watched, event);
}

// An action or a shortcut belongs to the widget that it was made for.
bool InputOnlyIn::mayPass(const QObject *object) const
{
    const auto *const shortcut = qobject_cast<const QShortcut *>(object);
    if (shortcut && shortcut->context() == Qt::ApplicationShortcut) {
        return true;
    }
    for (; object; object = object->parent()) {
        if (const auto *widget = qobject_cast<const QWidget *>(object)) {
            return widget->window() == &m_window;
        }
        if (object == m_window.windowHandle()) {
            return true;
        }
    }
    return false;
}

} // namespace quillon
