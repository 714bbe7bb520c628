#pragma once

#include "platform/filecalls.h"

#include <QByteArray>
#include <QString>

namespace quillon {

/// writeFile, unless the file holds exactly these bytes already. Most months of a log never change again, and
/// a file that is left alone costs no wait for the disk and no upload of the site. Throws as writeFile does.
void writePageFile(const QString &path, const QByteArray &bytes, FileCalls &calls);

/// Removes the file when there is one. Throws the run-time error of what failed.
void removePageFile(const QString &path, FileCalls &calls);

} // namespace quillon
