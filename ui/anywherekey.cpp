#include "ui/anywherekey.h"

#include <QApplication>
#include <QKeyEvent>
#include <QShortcut>
#include <QWidget>

namespace quillon {

AnywhereKey::AnywhereKey(Qt::Key key, QWidget &window)
    : QObject(&window)
    , m_key(key)
{
    auto *const shortcut = new QShortcut(key, &window);
    shortcut->setContext(Qt::ApplicationShortcut);
    shortcut->setAutoRepeat(false);
    connect(shortcut, &QShortcut::activated, this, &AnywhereKey::pressed);
    QCoreApplication::instance()->installEventFilter(this);
}

// Below a modal box no shortcut of another window works, and its key comes to the box.
bool AnywhereKey::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && watched->isWidgetType() && QApplication::activeModalWidget()) {
        const auto &press = static_cast<const QKeyEvent &>(*event);
        if (press.key() == m_key && press.modifiers() == Qt::NoModifier) {
            if (!press.isAutoRepeat()) {
                Q_EMIT pressed();
            }
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace quillon
