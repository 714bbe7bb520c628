#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace quillon {

/// The text of the bytes in the charset of that name (IANA, any case), as far as the system's `iconv`
/// knows it: "UTF-16", "ISO-8859-15", "KOI8-R", "Shift_JIS". Each byte that cannot be decoded becomes U+FFFD,
/// what follows it is read on; a byte order mark at the beginning is left out. Nothing for a name that is
/// unknown.
[[nodiscard]] std::optional<QString> decodedFrom(QByteArrayView charset, QByteArrayView bytes);

} // namespace quillon
