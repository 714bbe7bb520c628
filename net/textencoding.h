#pragma once

#include "platform/codepage.h"

#include <QString>
#include <QStringView>

namespace quillon {

/// Text for a URL or a form body: digits and letters A to Z, a to z stay, a blank becomes "+", everything
/// else "%" and its code in the code page in upper-case hexadecimal without leading zeros (a tab is %9).
[[nodiscard]] QString URLEncode(QStringView text, const CodePage &codePage);

/// Text for HTML and KML: digits, letters A to Z, a to z and blanks stay, everything else becomes "&#", its
/// code in the code page in decimal, and ";".
[[nodiscard]] QString W3CEncode(QStringView text, const CodePage &codePage);

/// The text without its character references of exactly three digits ("&#233;"): for each one that begins
/// before the last six characters, in order, all that are equal to it at that moment are removed. So one in
/// the last six characters stays, unless the same one stands earlier.
[[nodiscard]] QString StripCharRefs(const QString &text);

} // namespace quillon
