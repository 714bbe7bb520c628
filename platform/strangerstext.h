#pragma once

#include <QString>
#include <QStringView>

namespace quillon {

inline constexpr qsizetype longestPs = 8;
inline constexpr qsizetype longestRadiotext = 64;

/// A text that came from the air or the network, fit to be shown and logged: at most `longest` characters,
/// without control and formatting characters (those that turn the direction of writing included), each line
/// break and tab a blank, half characters gone.
[[nodiscard]] QString strangersText(QStringView text, qsizetype longest);

} // namespace quillon
