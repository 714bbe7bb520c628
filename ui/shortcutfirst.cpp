#include "ui/shortcutfirst.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include <utility>

namespace quillon {

ShortcutFirst::ShortcutFirst(QWidget &window, QList<QKeySequence> shortcuts)
    : QObject(&window)
    , m_window(window)
    , m_shortcuts(std::move(shortcuts))
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool ShortcutFirst::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto *widget = qobject_cast<const QWidget *>(watched);
        const QKeySequence keys(static_cast<const QKeyEvent *>(event)->keyCombination());
        if (widget && widget->window() == &m_window && m_shortcuts.contains(keys)) {
            // Nobody may claim the key for editing.
            event->ignore();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace quillon
