#pragma once

#include "export/shownlog.h"

#include <QByteArray>

namespace quillon {

/// The receptions as comma-separated values by RFC 4180, in UTF-8, under the captions of the columns; cells
/// as dataText gives them. A cell that a spreadsheet would take for a formula, because it begins with "=",
/// "+",
/// "-" or "@" and is no number, has an apostrophe in front; so has one that begins with an apostrophe.
[[nodiscard]] QByteArray shownCsv(const ShownLog &shown);

} // namespace quillon
