#pragma once

#include <QWidget>

namespace quillon {

/// The window of this kind that `parent` has open, brought to the front: a command that is given twice opens
/// one window. Null when none is open.
template<typename Window>
[[nodiscard]] Window *openWindow(const QWidget &parent)
{
    const QList<Window *> windows = parent.findChildren<Window *>(Qt::FindDirectChildrenOnly);
    for (Window *window : windows) {
        if (window->isVisible()) {
            window->raise();
            window->activateWindow();
            return window;
        }
    }
    return nullptr;
}

} // namespace quillon
