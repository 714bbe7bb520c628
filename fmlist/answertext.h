#pragma once

#include "platform/codepage.h"

#include <QByteArrayView>
#include <QString>

namespace quillon {

/// The text of an answer by the charset that its Content-Type names: UTF-8, ISO 8859-1, US-ASCII or a Windows
/// page of one byte. Any other is read in `codePage`, as is an answer that names none.
[[nodiscard]] QString answerText(QByteArrayView body, QByteArrayView contentType, const CodePage &codePage);

} // namespace quillon
