#pragma once

#include "core/logfields.h"

#include <QString>

namespace quillon {

/// What is typed into a field as the log keeps it: the PI code without blanks around it and in upper case,
/// the power in upper case, the blanks of an RDS name as "_". Notes end their lines with CR LF, whatever
/// ended them; every other field is one line.
[[nodiscard]] QString typedField(LogField field, const QString &text);

/// A frequency in MHz in its usual spelling, which the log keeps only where it was typed so: with a decimal
/// point ("87,6" is 87.6), without needless zeros
/// ("87.60"; one decimal stays), and where digits alone are no frequency, with the point that makes them one
/// of 64 to 108 MHz ("876" is 87.6, "1047" is 104.7). Any other text stays as it is.
[[nodiscard]] QString usualFrequency(const QString &text);

} // namespace quillon
