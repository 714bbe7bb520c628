#pragma once

#include <QList>
#include <QRect>

namespace quillon {

/// The place nearest to `window` that lies wholly on one of the screens, the one that shows most of it, else
/// the first; no larger than that screen. Without a screen it stays as it is.
[[nodiscard]] QRect onScreen(const QRect &window, const QList<QRect> &screens);

} // namespace quillon
