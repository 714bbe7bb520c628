#pragma once

#include <QString>

namespace quillon {

/// A text of strangers as a tooltip that shows it as it is written: a tooltip takes for markup what looks
/// like it. Long lines wrap.
[[nodiscard]] QString wrappedTip(const QString &text);

/// The same where lines stay as long as they are: untouched unless it would be taken for markup.
[[nodiscard]] QString plainTip(const QString &text);

} // namespace quillon
