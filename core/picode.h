#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace quillon {

/// The four hexadecimal digits as a number; nothing for any other text.
[[nodiscard]] std::optional<quint16> piCodeOf(QStringView text);
/// Four hexadecimal digits, upper case.
[[nodiscard]] QString piText(quint16 pi);

/// True for codes that differ in their second digit alone, which is 4 to F in both: regional variants of one
/// programme (IEC 62106, annex D).
[[nodiscard]] constexpr bool areRegionalVariants(quint16 one, quint16 other)
{
    constexpr unsigned area = 0x0F00;
    constexpr unsigned firstRegion = 0x0400;
    return one != other && ((one ^ other) & ~area) == 0 && (one & area) >= firstRegion
        && (other & area) >= firstRegion;
}

} // namespace quillon
