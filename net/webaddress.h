#pragma once

#include "platform/codepage.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QStringView>

namespace quillon {

/// The bytes of the text in the code page, with "%" and two hexadecimal digits for every byte that no web
/// address can hold (RFC 3986): blanks, controls, "#", quotes, angle brackets, "\", "^", "`", braces, "|" and
/// everything above 126. A "%" stays as it is, whatever follows it.
[[nodiscard]] QByteArray sendable(QStringView text, const CodePage &codePage);
/// The same for bytes.
[[nodiscard]] QByteArray sendable(QByteArrayView bytes);

} // namespace quillon
