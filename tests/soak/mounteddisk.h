#pragma once

#include <QByteArray>

namespace quillon::soak {

/// Puts a small disk in memory on this folder, seen by this process alone; false where that is not allowed.
[[nodiscard]] bool mountDisk(const QByteArray &folder);

/// Leaves so many pages on it: its smallest unit.
void leavePages(const QByteArray &folder, qint64 pages);
/// Leaves more than anything takes.
void leaveManyPages(const QByteArray &folder);

} // namespace quillon::soak
