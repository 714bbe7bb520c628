#pragma once

#include <QString>

namespace quillon {

/// What can be typed into the filter's box, as markup for its tip.
[[nodiscard]] QString filterTip();

} // namespace quillon
