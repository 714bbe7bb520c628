#pragma once

#include <QString>

namespace quillon {

/// Why the folder of an outside program cannot be listed, and where to set another; empty when it is there.
[[nodiscard]] QString missingFolderText(const QString &folder, const QString &program);

} // namespace quillon
