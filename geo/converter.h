#pragma once

#include <QString>

namespace quillon {

/// A position in the compact notation, in the pieces that one types: 51, 30, 25, N.
struct PositionParts
{
    QString degrees;
    QString minutes;
    QString hundredths; ///< of a minute; one digit alone is tenths, as in 30.5
    QString hemisphere; ///< "N", "S", "E" or "W"

    bool operator==(const PositionParts &) const = default;
};

/// The pieces of a compact text such as 5130.25N, 00130.25W.
[[nodiscard]] PositionParts splitCompact(const QString &compact);

/// The compact text of the pieces, blanks around them left out.
[[nodiscard]] QString compactText(const PositionParts &parts);

/// What the box of the hundredths shows for what was typed there: 50 for 5, anything else as it is.
[[nodiscard]] QString fullHundredths(const QString &typed);

// What is wrong with a text that was typed, in words for the one who typed it; empty when it can be
// converted.

/// Decimal degrees with comma or point: -90 to 90 for a latitude, -180 to 180 for a longitude.
[[nodiscard]] QString decimalProblem(const QString &text, bool Lat);

/// What is wrong with the pieces of a position, and which of them.
struct PartsProblem
{
    enum class Piece { Degrees, Minutes, Hundredths };

    QString text;
    Piece piece = Piece::Degrees;
};

/// Degrees up to 90 or 180, minutes as two digits up to 59, hundredths as two digits, one or none.
[[nodiscard]] PartsProblem partsProblem(const PositionParts &parts, bool Lat);

/// Six characters of a locator: A to R twice, two digits, A to X twice, in any case.
[[nodiscard]] QString locatorProblem(const QString &text);

} // namespace quillon
