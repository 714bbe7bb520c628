#pragma once

#include "core/logfields.h"

#include <QString>

namespace quillon {

/// What is typed into a field as the log keeps it: the PI code without blanks around it and in upper case,
/// the power in upper case, the blanks of an RDS name as "_". Notes end their lines with CR LF, whatever
/// ended them; every other field is one line.
[[nodiscard]] QString typedField(LogField field, const QString &text);

} // namespace quillon
