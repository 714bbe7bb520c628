#pragma once

#include "platform/codepage.h"

#include <QString>
#include <QStringView>

namespace quillon {

inline constexpr int lowestFreq = 64; ///< MHz, the band of the OIRT countries
inline constexpr int highestFreq = 108; ///< MHz
inline constexpr qsizetype rdsNameLength = 8; ///< characters

/// What is typed into a field, as far as its check goes.
enum class FieldKind {
    Freq, ///< MHz
    PiCode,
    RdsName,
    Latitude, ///< decimal degrees, kept in the transmitter list
    Longitude,
    Notes, ///< several lines
    PlainText, ///< any other text that the log or the transmitter list keeps
    HomeLatitude, ///< decimal degrees, kept in the settings
    HomeLongitude,
    Setting, ///< any other text that the settings keep
};

/// What is odd about the text of a field, as one short sentence for the listener, without a full stop; empty
/// when nothing is. Tells of a text that the file would not give back as it was typed (a separator, a letter
/// that the code page lacks, "CRLF" in notes), and of values that no reception has: a frequency outside 64 to
/// 108 MHz, a PI code that is not four hexadecimal digits, a name over eight characters, a position that is
/// none. An empty text is never odd. The length of the sentence is bounded.
[[nodiscard]] QString fieldProblem(FieldKind kind, QStringView text, const CodePage &codePage);

/// Why a reception of these texts is not added: the message that Add shows. Empty when it can be added.
[[nodiscard]] QString addRefusal(
    QStringView freq, QStringView piCode, QStringView rdsName, QStringView country);

} // namespace quillon
