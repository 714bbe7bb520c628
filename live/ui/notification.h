#pragma once

#include <QString>

namespace quillon {

/// Shows a notification of the desktop, by org.freedesktop.Notifications on the session bus; where nobody
/// answers to that, nothing happens. Does not wait. `text` may be taken for markup: it is to be the program's
/// own.
void notifyDesktop(const QString &title, const QString &text);

} // namespace quillon
