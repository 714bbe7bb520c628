#pragma once

#include "platform/datetime.h"

#include <QString>
#include <QStringView>

#include <optional>

namespace quillon {

/// In which order a date of three numbers has its day and month.
enum class DateOrder {
    DayFirst,
    MonthFirst, ///< where the year does not come first
};

/// A number with its separators of thousands taken out and "." as its decimal sign; nothing for what is none.
/// "1.234,5" is 1234.5 with a decimal comma; "98,5" and "98.5" are 98.5 whatever the decimal sign is.
[[nodiscard]] std::optional<QString> plainNumber(QStringView text, bool decimalComma);

/// A frequency in MHz as the log writes it: "98.50 MHz", "98,50", "98500" (kHz) and "98500000" (Hz). Nothing
/// for what is no number above 0.
[[nodiscard]] std::optional<QString> importedFrequency(QStringView text, bool decimalComma);

/// A PI code as a file has it.
struct ImportedPi
{
    QString code; ///< upper case, empty for none
    bool doubtful = false; ///< it stood with a "?"
};

/// "d3c2", "0xD3C2", "D3C2?"; none for an empty text and for strokes. Nothing for what is no PI code.
[[nodiscard]] std::optional<ImportedPi> importedPi(QStringView text);

/// The first four hexadecimal digits that stand by themselves in a text, in upper case; empty when there are
/// none.
[[nodiscard]] QString piWithin(QStringView text);

/// Midnight of a day: day, month and year of two or four digits with "/", "-" or "." between them, the year
/// first or last, the month also as a word, or yyyymmdd. Nothing for what is no day.
[[nodiscard]] std::optional<DateTime> importedDate(
    QStringView text, DateOrder order, const MonthNames &months);

/// A time of day.
struct ImportedTime
{
    qint64 seconds = 0; ///< since midnight
    bool isUtc = false; ///< it says so: "Z", "UTC"
};

/// "18:30:05", "18:30", "6:30 PM", "1830", and without its leading zeros "930" or "5". Nothing for what is no
/// time of day.
[[nodiscard]] std::optional<ImportedTime> importedTime(QStringView text);

/// By how many seconds a time is ahead of UTC: "+2", "-3.5", "+05:30", "UTC+1". Nothing for what is none.
[[nodiscard]] std::optional<qint64> importedOffset(QStringView text);

/// A moment with what it says of its zone.
struct ImportedMoment
{
    DateTime moment; ///< in UTC when `isUtc`
    bool isUtc = false; ///< it says so: "Z", "UTC", or an offset, which is taken off
};

/// Date and time with a blank or a "T" between them: "2025-11-21T18:30:00Z", "21/11/2025 18:30:00". Nothing
/// for what is no moment.
[[nodiscard]] std::optional<ImportedMoment> importedMoment(
    QStringView text, DateOrder order, const MonthNames &months);

} // namespace quillon
