#pragma once

#include <QString>

namespace quillon {

/// The text on one line: each CR LF as the four letters "CRLF".
[[nodiscard]] QString foldedLineBreaks(QString text);

/// What foldedLineBreaks folded; "CRLF" that somebody typed becomes a line break too.
[[nodiscard]] QString unfoldedLineBreaks(QString text);

/// The text with a blank for each CR LF and LF: what has to be one line and cannot fold. A lone CR ends no
/// line of a file.
[[nodiscard]] QString withoutLineBreaks(QString text);

/// The text with its lines ended by CR LF, whether a LF, a CR LF or one of the separators of a text box ended
/// them. A lone CR stays.
[[nodiscard]] QString withLineEnds(QString text);

} // namespace quillon
