#pragma once

#include <QByteArray>
#include <QStringView>

namespace quillon {

/// Appends a text in UTF-8 as it stands in HTML and XML: "&", "<", ">" and quotes as references, control
/// characters that XML cannot hold as U+FFFD.
void appendMarkup(QByteArray &bytes, QStringView text);

} // namespace quillon
