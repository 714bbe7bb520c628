#pragma once

#include <QString>

namespace quillon {

/// Hands a URL or the path of a file to the desktop, which opens it with its default handler. Whether it did
/// is not checked.
void HyperJump(const QString &url);

/// Hands a file to the desktop, as HyperJump does.
void openFile(const QString &path);

} // namespace quillon
