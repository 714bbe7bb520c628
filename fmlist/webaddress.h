#pragma once

#include "platform/codepage.h"

#include <QByteArray>
#include <QString>

namespace quillon {

/// The parts of an http or https address that a request needs.
struct WebAddress
{
    bool isSecure = false; ///< https
    QString host; ///< name or number, without brackets
    quint16 port = 80;
    QByteArray authority; ///< host and port as written
    QByteArray target; ///< path and query, exactly as written; at least "/"
};

/// The bytes of the text in the code page, with "%" and two hexadecimal digits for every byte that no web
/// address can hold (RFC 3986): blanks, controls, "#", quotes, angle brackets, "\", "^", "`", braces, "|" and
/// everything above 126. A "%" stays as it is, whatever follows it.
[[nodiscard]] QByteArray sendable(QStringView text, const CodePage &codePage);
/// The same for bytes.
[[nodiscard]] QByteArray sendable(QByteArrayView bytes);

/// The parts of an address. Throws "Invalid procedure call" when it is none, holds a byte that no address can
/// hold or a user name, or is neither http nor https.
[[nodiscard]] WebAddress webAddress(const QByteArray &url);

/// The address that a redirect leads to: `location` as `from` understands it. Throws what webAddress throws.
[[nodiscard]] QByteArray redirected(const QByteArray &from, const QByteArray &location);

} // namespace quillon
