#include "platform/datetime.h"

#include "platform/runtimeerror.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <chrono>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int lowestYear = 100;
constexpr int highestYear = 9999;

void appendNumber(QString &text, int value, int digits)
{
    QChar buffer[4];
    for (int i = digits - 1; i >= 0; --i) {
        buffer[i] = QChar(u'0' + value % 10);
        value /= 10;
    }
    text.append(buffer, digits);
}

DateTime moment(const QDateTime &time)
{
    const QDate date = time.date();
    const QTime clock = time.time();
    return *fromCivil({date.year(), date.month(), date.day(), clock.hour(), clock.minute(), clock.second()});
}

// Longest first, so that "mmm" is not taken for "mm" and "m".
constexpr std::array<QStringView, 9> patternTokens {
    u"yyyy", u"mmm", u"mm", u"m", u"dd", u"d", u"hh", u"nn", u"ss"};

QStringView tokenAt(QStringView pattern)
{
    const auto found =
        std::ranges::find_if(patternTokens, [&](QStringView token) { return pattern.startsWith(token); });
    return found == patternTokens.end() ? QStringView() : *found;
}

void appendToken(QString &text, QStringView token, const CivilTime &parts, const MonthNames &months)
{
    if (token == u"yyyy") {
        appendNumber(text, parts.year, 4);
    } else if (token == u"mmm") {
        text += months.abbreviated[static_cast<std::size_t>(parts.month - 1)];
    } else if (token == u"mm") {
        appendNumber(text, parts.month, 2);
    } else if (token == u"m") {
        text += QString::number(parts.month);
    } else if (token == u"dd") {
        appendNumber(text, parts.day, 2);
    } else if (token == u"d") {
        text += QString::number(parts.day);
    } else if (token == u"hh") {
        appendNumber(text, parts.hour, 2);
    } else if (token == u"nn") {
        appendNumber(text, parts.minute, 2);
    } else {
        appendNumber(text, parts.second, 2);
    }
}

} // namespace

MonthNames MonthNames::of(const QLocale &locale)
{
    MonthNames names;
    for (int month = 1; month <= 12; ++month) {
        const auto index = static_cast<std::size_t>(month - 1);
        names.abbreviated[index] = locale.standaloneMonthName(month, QLocale::ShortFormat).remove(u'.');
        names.full[index] = locale.standaloneMonthName(month, QLocale::LongFormat);
    }
    return names;
}

std::optional<DateTime> fromCivil(const CivilTime &civil)
{
    using namespace std::chrono;
    if (civil.year < lowestYear || civil.year > highestYear || civil.month < 1 || civil.month > 12
        || civil.day < 1 || civil.hour < 0 || civil.hour > 23 || civil.minute < 0 || civil.minute > 59
        || civil.second < 0 || civil.second > 59) {
        return std::nullopt;
    }
    const year_month_day date {year {civil.year}, month {static_cast<unsigned>(civil.month)},
        day {static_cast<unsigned>(civil.day)}};
    if (!date.ok()) {
        return std::nullopt;
    }
    const qint64 days = sys_days {date}.time_since_epoch().count();
    return DateTime {
        days * secondsPerDay + qint64(civil.hour) * 3600 + qint64(civil.minute) * 60 + civil.second};
}

namespace {

// Days since the epoch, also before it.
qint64 dayOf(DateTime moment)
{
    using namespace std::chrono;
    return floor<days>(seconds {moment.seconds}).count();
}

} // namespace

CivilTime civil(DateTime moment)
{
    using namespace std::chrono;
    const qint64 day = dayOf(moment);
    const year_month_day date {sys_days {days {day}}};
    const int rest = static_cast<int>(moment.seconds - day * secondsPerDay);
    return {static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
        static_cast<int>(static_cast<unsigned>(date.day())), rest / 3600, rest / 60 % 60, rest % 60};
}

const std::array<char, 19> &GeneralCharacters::of(DateTime moment)
{
    const auto put = [this](std::size_t at, int value) {
        m_text[at] = static_cast<char>('0' + value / 10);
        m_text[at + 1] = static_cast<char>('0' + value % 10);
    };
    const qint64 day = dayOf(moment);
    if (m_day != day) {
        m_day = day;
        m_text = {"00/00/0000 00:00:0"};
        const CivilTime parts = civil(moment);
        put(0, parts.day);
        put(3, parts.month);
        put(6, parts.year / 100);
        put(8, parts.year % 100);
    }
    const auto rest = static_cast<int>(moment.seconds - day * secondsPerDay);
    put(11, rest / 3600);
    put(14, rest / 60 % 60);
    put(17, rest % 60);
    return m_text;
}

std::array<char, 19> generalCharacters(DateTime moment)
{
    return GeneralCharacters().of(moment);
}

QString generalText(DateTime moment)
{
    const std::array<char, 19> text = generalCharacters(moment);
    return QString::fromLatin1(text.data(), text.size());
}

QString dateText(DateTime moment)
{
    return generalText(moment).left(10);
}

QString formatted(DateTime moment, QStringView pattern, const MonthNames &months)
{
    const CivilTime parts = civil(moment);
    QString text;
    while (!pattern.isEmpty()) {
        const QStringView token = tokenAt(pattern);
        if (token.isEmpty()) {
            text += pattern.front();
            pattern = pattern.mid(1);
        } else {
            appendToken(text, token, parts, months);
            pattern = pattern.mid(token.size());
        }
    }
    return text;
}

DateTime toDateTime(QStringView text, const MonthNames &months, const QString &doing)
{
    const auto read = parseDateTime(text, months);
    if (!read) {
        throw RuntimeError(
            ErrorName::TypeMismatch, doing + u": \""_s + text + u"\" is not a date and time"_s);
    }
    return *read;
}

DateTime UtcNow()
{
    return moment(QDateTime::currentDateTimeUtc());
}

DateTime localNow()
{
    return moment(QDateTime::currentDateTime());
}

} // namespace quillon
