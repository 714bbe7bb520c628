#pragma once

#include <QString>

namespace quillon {

// Positions as text. Three notations:
//   decimal degrees   51.504167, -1.25      north and east positive
//   dotted            51.30.25N, 001.15.00W degrees "." minutes "." hundredths of a minute, hemisphere
//   compact           5130.25N,  00115.00W  the same with the minutes glued to the degrees
// Longitude degrees are padded to three digits, latitude degrees are not padded. Hemisphere letters are upper
// case. Readers take "," and "." as the decimal separator whatever the locale, writers write ".".

/// Decimal degrees of a text `degrees "." minutes hemisphere`, the dotted notation for instance: 51.30.25N is
/// 51.504166. The minutes are read up to the first character that is no part of a number; the last character
/// decides the sign. -1 when the text holds none of N, S, E, W; 0 when it cannot be read.
[[nodiscard]] float convertLatORLontoDecimal(const QString &text);

/// Decimal degrees, to single precision, of a text in the compact notation, a latitude with `Lat`: 5130.25N
/// is 51.504166. What cannot be read gives -1 or 0, as in convertLatORLontoDecimal.
[[nodiscard]] double convertRXLatORLonToDecimal(const QString &fromINLatORLon, bool Lat);

/// Decimal degrees, a latitude with `Lat`, in the dotted or the compact notation. The hundredths of a minute
/// are cut off, not rounded: 51.123456 is 51.07.40N. Zero is north or east. A value that is not finite gives
/// the notation's zero: "00.00.00N", "000.00.00W", "0000.00N" or "00000.00W".
[[nodiscard]] QString convertDecimaltoLatORLon(double value, bool Lat, bool dotted);

/// `result` is the signed minutes of arc in the compact notation, with latitude degrees padded to two digits:
/// 3090.25 is 5130.25N. `minutes` is left as what remains beside the whole degrees. The degrees are taken
/// from the minutes rounded to a whole number, so 179.6 is 03-00.40N. Throws "Overflow" for minutes
/// beyond 32 bits; nothing has changed then.
void convertMinutestoLatORLon(float &minutes, QString &result, bool longitude);

/// The remainder of the largest whole number not above `a` after division by `b` rounded to a whole number
/// (halves to even), both of 32 bits; it has the sign of the dividend. Throws "Division by zero" when b
/// rounds to 0, "Overflow" beyond 32 bits.
[[nodiscard]] double fMod(double a, double b);

// Interfaces for maps, which nothing in the program calls.

/// The pixel row or column of a compact text on a map of `scale` degrees per pixel: (first - degrees) /
/// scale, rounded to the nearest, halves to even. `first` and `second` are the top and bottom edge for a
/// latitude, the left and right edge for a longitude (its scale is negative for columns that grow to the
/// east). -1 outside the edges, for a text without a hemisphere letter, and for a result beyond 32 bits.
[[nodiscard]] qint32 convertLatORLontoXY(
    const QString &text, float scale, float first, float second, bool Lat);

/// a / b without its nearest whole number (halves to even), plus 0.1 when that is negative, times b:
/// ddfMod(-0.3, 1) is -0.2. Throws "Division by zero" for b = 0, "Overflow" for a quotient beyond a double.
[[nodiscard]] double ddfMod(double a, double b);

} // namespace quillon
