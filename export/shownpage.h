#pragma once

#include "export/shownlog.h"

#include <QByteArray>

namespace quillon {

/// The receptions as a table on an HTML page of its own, in UTF-8, as the grid shows them. The page needs
/// nothing beside it, lets no script run, and reads well on a phone, on paper and in dark mode.
[[nodiscard]] QByteArray shownPage(const ShownLog &shown);

} // namespace quillon
