#pragma once

#include <QString>
#include <QStringView>

#include <array>
#include <compare>
#include <optional>

class QLocale;

namespace quillon {

/// A moment on the calendar, to the second, with no time zone attached.
struct DateTime
{
    /// Seconds since 1970-01-01 00:00:00 on the proleptic Gregorian calendar.
    qint64 seconds = 0;

    auto operator<=>(const DateTime &) const = default;
};

/// The parts of a DateTime: year 100 to 9999, month 1 to 12, day 1 to 31, hour 0 to 23.
struct CivilTime
{
    int year = 1970;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

inline constexpr qint64 secondsPerDay = 86400;

/// Month names of a language, in their standalone form and without a full stop.
struct MonthNames
{
    std::array<QString, 12> abbreviated;
    std::array<QString, 12> full;

    [[nodiscard]] static MonthNames of(const QLocale &locale);
};

/// The moment with these parts; nothing when there is no such day or time of day.
[[nodiscard]] std::optional<DateTime> fromCivil(const CivilTime &civil);

/// The parts of a moment.
[[nodiscard]] CivilTime civil(DateTime moment);

/// The characters of `dd/mm/yyyy hh:nn:ss`, the one text form of a moment.
[[nodiscard]] std::array<char, 19> generalCharacters(DateTime moment);

/// The same for many moments, quickest where one is of the same day as the one before.
class GeneralCharacters
{
public:
    /// Valid until the next call.
    [[nodiscard]] const std::array<char, 19> &of(DateTime moment);

private:
    std::array<char, 19> m_text {};
    std::optional<qint64> m_day;
};
/// The same as a text.
[[nodiscard]] QString generalText(DateTime moment);

/// `dd/mm/yyyy`, as offered in input boxes.
[[nodiscard]] QString dateText(DateTime moment);

/// The moment in a pattern of yyyy, mmm, mm, m, dd, d, hh, nn, ss; every other character stands for itself.
/// For instance "dd-mmm-yyyy hh:nn" gives 05-Jul-2010 21:34.
[[nodiscard]] QString formatted(DateTime moment, QStringView pattern, const MonthNames &months);

/// Reads day-month-year or year-month-day with "/", "-" or "." between, the month also as an English name or
/// one of `months`, years of two digits as 1930 to 2029, then optionally a blank and h:nn or h:nn:ss with
/// optional AM or PM. Blanks around are ignored. Nothing for any other text: never month first, never a time
/// alone, never an impossible date.
[[nodiscard]] std::optional<DateTime> parseDateTime(QStringView text, const MonthNames &months);

/// As parseDateTime; throws "Type mismatch" with `doing` and the offending text when it is no date-time.
[[nodiscard]] DateTime toDateTime(QStringView text, const MonthNames &months, const QString &doing);

/// The wall clock in UTC. Also right while the local zone keeps daylight saving time.
[[nodiscard]] DateTime UtcNow();

/// The wall clock in the local time zone.
[[nodiscard]] DateTime localNow();

} // namespace quillon
