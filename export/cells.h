#pragma once

#include <QString>
#include <QStringView>

namespace quillon {

/// "&nbsp;" for an empty text, any other as it is.
[[nodiscard]] QString blankCell(const QString &text);

/// "&nbsp;" for an empty text and for one that does not come after "0" in the order of the character codes
/// ("0" itself, "-1"); any other as it is.
[[nodiscard]] QString blankCount(const QString &text);

/// How the log writes a moment: day, month, year, hours and minutes, for instance 05-Jul-2010 21:34.
inline constexpr QStringView logDatePattern = u"dd-mmm-yyyy hh:nn";

/// The text without blanks around it, filled with blanks on the right to `width` characters, or cut to its
/// first `width` ones.
[[nodiscard]] QString leftAligned(QStringView text, qsizetype width);

} // namespace quillon
