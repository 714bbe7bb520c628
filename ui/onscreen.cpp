#include "ui/onscreen.h"

#include <algorithm>

namespace quillon {

namespace {

qint64 areaOf(const QRect &area)
{
    return area.isEmpty() ? 0 : qint64(area.width()) * area.height();
}

} // namespace

QRect onScreen(const QRect &window, const QList<QRect> &screens)
{
    if (screens.isEmpty()) {
        return window;
    }
    const QRect screen = *std::ranges::max_element(
        screens, {}, [&](const QRect &one) { return areaOf(one.intersected(window)); });
    QRect placed(window.topLeft(), window.size().boundedTo(screen.size()));
    placed.moveLeft(std::clamp(placed.left(), screen.left(), screen.right() + 1 - placed.width()));
    placed.moveTop(std::clamp(placed.top(), screen.top(), screen.bottom() + 1 - placed.height()));
    return placed;
}

} // namespace quillon
