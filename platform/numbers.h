#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace quillon {

/// How the user's locale writes a number.
struct NumberFormat
{
    QChar decimal = u'.';

    /// The format of LC_ALL, else LC_NUMERIC, else LANG.
    [[nodiscard]] static NumberFormat fromEnvironment();
};

/// True for the ten ASCII digits alone.
[[nodiscard]] constexpr bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// The number that a text holds: blanks around, a sign, ASCII digits with one "," or "." as the decimal
/// separator, an exponent. Nothing for every other text, for "NaN" and for what a double cannot hold.
[[nodiscard]] std::optional<double> numeric(QStringView text);

/// True when the locale writes 3.6 with a comma.
[[nodiscard]] bool DecimalCommaLocale(NumberFormat format);

/// The number text with the decimal separator of the locale: "-1" for an empty text and for what is no number
/// then, otherwise the text with every "," replaced by "." or, with `decimalComma`, every "." by ",".
[[nodiscard]] QString NormalizeDecimal(const QString &text, bool decimalComma);

/// The nearest number with `places` decimal places, halves to even, taken on the scaled binary value.
[[nodiscard]] double rounded(double value, int places);

/// Plain decimal notation with at most 15 significant digits, "." and no trailing zeros: 1234.5, 812, 0.
[[nodiscard]] QString plainText(double value);
/// The same with at most 7 significant digits, all that a single holds.
[[nodiscard]] QString plainText(float value);

/// plainText with the decimal separator of the locale.
[[nodiscard]] QString localText(double value, NumberFormat format);
/// plainText with the decimal separator of the locale.
[[nodiscard]] QString localText(float value, NumberFormat format);

/// The text as a whole number of 16 bits, rounded with halves to even. Throws "Type mismatch" with `doing`
/// when it is no number, "Overflow" when it does not fit.
[[nodiscard]] qint16 toInt16(QStringView text, const QString &doing);

} // namespace quillon
