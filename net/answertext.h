#pragma once

#include "platform/codepage.h"

#include <QByteArrayView>
#include <QString>

namespace quillon {

/// The text of an answer by the charset that its Content-Type names, as far as decodedFrom knows it; bytes
/// that are no character of it become U+FFFD. An answer of an unknown charset is read in `codePage`, as is
/// one that names none; one that calls itself ISO 8859-1 or ASCII is read as windows-1252.
[[nodiscard]] QString answerText(QByteArrayView body, QByteArrayView contentType, const CodePage &codePage);

} // namespace quillon
