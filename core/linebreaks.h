#pragma once

#include <QString>

namespace quillon {

/// The text on one line: each CR LF as the four letters "CRLF".
[[nodiscard]] QString foldedLineBreaks(QString text);

/// What foldedLineBreaks folded; "CRLF" that somebody typed becomes a line break too.
[[nodiscard]] QString unfoldedLineBreaks(QString text);

} // namespace quillon
