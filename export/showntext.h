#pragma once

#include "export/shownlog.h"

#include <QByteArray>

namespace quillon {

/// The receptions as a table of text in UTF-8, as the grid shows them: a heading, a rule, a line for each,
/// ended by CR LF. Columns are as wide as their widest cell, but never over 60 characters: a longer cell
/// moves what follows it. Numbers stand at the right of their column.
[[nodiscard]] QByteArray shownText(const ShownLog &shown);

} // namespace quillon
