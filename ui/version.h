#pragma once

#include <QString>

namespace quillon {

/// The version of this build, such as "2.0.0".
[[nodiscard]] QString versionNumber();

/// "V" and the version.
[[nodiscard]] QString versionText();

/// "Quillon V" and the version.
[[nodiscard]] QString versionLabel();

} // namespace quillon
