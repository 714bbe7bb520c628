#include "import/importvalues.h"

#include "core/picode.h"
#include "platform/numbers.h"

#include <QList>

#include <algorithm>
#include <cmath>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 secondsPerHour = 3600;
constexpr qint64 secondsPerMinute = 60;

bool isDigits(QStringView text)
{
    return !text.isEmpty() && std::ranges::all_of(text, isDigit);
}

// True for a number in groups of three with `sign` between them.
bool isGrouped(QStringView text, QChar sign)
{
    const auto groups = text.split(sign);
    return groups.size() > 1 && groups.front().size() <= 3 && isDigits(groups.front())
        && std::all_of(groups.begin() + 1, groups.end(),
            [](QStringView group) { return group.size() == 3 && isDigits(group); });
}

// Takes a word off the end, in any case.
bool chopWord(QStringView &text, QStringView word)
{
    if (!text.endsWith(word, Qt::CaseInsensitive)) {
        return false;
    }
    text = text.chopped(word.size()).trimmed();
    return true;
}

// The time of day of hour, minute and second; nothing when it is none.
std::optional<qint64> secondsOf(qint64 hour, qint64 minute, qint64 second)
{
    if (hour > 23 || minute > 59 || second > 59) {
        return std::nullopt;
    }
    return hour * secondsPerHour + minute * secondsPerMinute + second;
}

// hhmm without its leading zeros, or hhmmss.
std::optional<qint64> secondsOfDigits(QStringView digits)
{
    const int number = digits.toInt();
    if (digits.size() <= 4) {
        return secondsOf(number / 100, number % 100, 0);
    }
    return digits.size() <= 6 ? secondsOf(number / 10000, number / 100 % 100, number % 100) : std::nullopt;
}

// h:mm or h:mm:ss, with parts of a second, which are dropped.
std::optional<qint64> secondsOfParts(QStringView text)
{
    const QChar colon = text.contains(u':') ? u':' : u'.';
    auto parts = text.split(colon);
    if (colon == u':' && parts.size() == 3) {
        const QStringView second = parts[2];
        const qsizetype point =
            std::ranges::find_if(second, [](QChar c) { return c == u'.' || c == u','; }) - second.begin();
        if (point < second.size() && !isDigits(second.sliced(point + 1))) {
            return std::nullopt;
        }
        parts[2] = second.first(point);
    }
    const bool wellFormed = (parts.size() == 2 || parts.size() == 3)
        && std::ranges::all_of(parts, [](QStringView part) { return part.size() <= 2 && isDigits(part); });
    return wellFormed
        ? secondsOf(parts[0].toInt(), parts[1].toInt(), parts.size() == 3 ? parts[2].toInt() : 0)
        : std::nullopt;
}

// "11/21/2025" as "21/11/2025"; what does not begin with two numbers of one or two digits stays.
QString dayBeforeMonth(QStringView text)
{
    for (const QChar separator : {u'/', u'-', u'.'}) {
        const auto parts = text.split(separator);
        if (parts.size() == 3 && parts[0].size() <= 2 && isDigits(parts[0]) && isDigits(parts[1])) {
            return parts[1].toString() + separator + parts[0] + separator + parts[2];
        }
    }
    return text.toString();
}

// Where a sign stands that begins an offset at the end of a time: behind its first colon.
qsizetype offsetIn(QStringView time)
{
    const qsizetype colon = time.indexOf(u':');
    for (qsizetype at = std::max(colon, qsizetype(0)); colon >= 0 && at < time.size(); ++at) {
        if (time[at] == u'+' || time[at] == u'-') {
            return at;
        }
    }
    return -1;
}

} // namespace

std::optional<QString> plainNumber(QStringView text, bool decimalComma)
{
    text = text.trimmed();
    const QChar thousands = decimalComma ? u'.' : u',';
    const QChar decimal = decimalComma ? u',' : u'.';
    QString number = text.toString();
    const qsizetype sign = number.startsWith(u'-') || number.startsWith(u'+') ? 1 : 0;
    const qsizetype point = number.indexOf(decimal);
    if (isGrouped(QStringView(number).mid(sign, (point < 0 ? number.size() : point) - sign), thousands)) {
        number.remove(thousands);
    }
    number.replace(u',', u'.');
    return numeric(number) ? std::optional(number) : std::nullopt;
}

std::optional<QString> importedFrequency(QStringView text, bool decimalComma)
{
    text = text.trimmed();
    double perMegahertz = 0;
    if (chopWord(text, u"MHz")) {
        perMegahertz = 1;
    } else if (chopWord(text, u"kHz")) {
        perMegahertz = 1e3;
    } else if (chopWord(text, u"Hz")) {
        perMegahertz = 1e6;
    }
    auto number = plainNumber(text, decimalComma);
    const auto value = number ? numeric(*number) : std::nullopt;
    if (!value || *value <= 0) {
        return std::nullopt;
    }
    if (perMegahertz == 0) {
        perMegahertz = *value >= 1e6 ? 1e6 : *value >= 1e3 ? 1e3 : 1;
    }
    if (perMegahertz == 1 && std::ranges::all_of(*number, [](QChar c) { return isDigit(c) || c == u'.'; })) {
        return number;
    }
    return plainText(*value / perMegahertz);
}

std::optional<ImportedPi> importedPi(QStringView text)
{
    text = text.trimmed();
    ImportedPi pi;
    while (text.endsWith(u'?')) {
        text = text.chopped(1).trimmed();
        pi.doubtful = true;
    }
    if (std::ranges::all_of(text, [](QChar c) { return c == u'-' || c == u'_'; })) {
        return ImportedPi {};
    }
    if (text.startsWith(u"0x", Qt::CaseInsensitive)) {
        text = text.sliced(2);
    }
    if (!piCodeOf(text)) {
        return std::nullopt;
    }
    pi.code = text.toString().toUpper();
    return pi;
}

QString piWithin(QStringView text)
{
    for (qsizetype begin = 0; begin < text.size();) {
        qsizetype end = begin;
        while (end < text.size() && text[end].isLetterOrNumber()) {
            ++end;
        }
        const QStringView word = text.sliced(begin, end - begin);
        if (piCodeOf(word)) {
            return word.toString().toUpper();
        }
        begin = end + 1;
    }
    return {};
}

std::optional<DateTime> importedDate(QStringView text, DateOrder order, const MonthNames &months)
{
    text = text.trimmed();
    if (text.size() == 8 && isDigits(text)) {
        return fromCivil(
            {text.first(4).toInt(), text.sliced(4, 2).toInt(), text.sliced(6, 2).toInt(), 0, 0, 0});
    }
    if (text.contains(u' ') || text.contains(u':')) {
        return std::nullopt;
    }
    return order == DateOrder::MonthFirst ? parseDateTime(dayBeforeMonth(text), months)
                                          : parseDateTime(text, months);
}

std::optional<ImportedTime> importedTime(QStringView text)
{
    text = text.trimmed();
    ImportedTime time;
    time.isUtc = chopWord(text, u"UTC") || chopWord(text, u"Z") || chopWord(text, u"GMT");
    const bool afternoon = chopWord(text, u"PM");
    const bool twelve = chopWord(text, u"AM") || afternoon;
    const auto seconds = isDigits(text) && text.size() <= 6 ? secondsOfDigits(text) : secondsOfParts(text);
    if (!seconds) {
        return std::nullopt;
    }
    time.seconds = *seconds;
    if (twelve) {
        constexpr qint64 noon = 12 * secondsPerHour;
        if (time.seconds < secondsPerHour || time.seconds >= noon + secondsPerHour) {
            return std::nullopt;
        }
        time.seconds = time.seconds % noon + (afternoon ? noon : 0);
    }
    return time;
}

std::optional<qint64> importedOffset(QStringView text)
{
    text = text.trimmed();
    if (text.startsWith(u"UTC", Qt::CaseInsensitive) || text.startsWith(u"GMT", Qt::CaseInsensitive)) {
        text = text.sliced(3).trimmed();
        if (text.isEmpty()) {
            return 0;
        }
    }
    constexpr double mostHours = 26;
    const bool negative = text.startsWith(u'-') || text.startsWith(QChar(u'\u2212'));
    if (negative || text.startsWith(u'+')) {
        text = text.sliced(1);
    }
    std::optional<double> hours;
    if (text.contains(u':')) {
        const auto time = secondsOfParts(text);
        hours = time ? std::optional(double(*time) / secondsPerHour) : std::nullopt;
    } else if (text.size() == 4 && isDigits(text)) {
        hours = text.first(2).toInt() + text.sliced(2).toInt() / 60.0;
    } else if (chopWord(text, u"h"); !text.startsWith(u'-') && !text.startsWith(u'+')) {
        hours = numeric(text);
    }
    if (!hours || *hours > mostHours) {
        return std::nullopt;
    }
    const auto seconds = static_cast<qint64>(std::llround(*hours * secondsPerHour));
    return negative ? -seconds : seconds;
}

std::optional<ImportedMoment> importedMoment(QStringView text, DateOrder order, const MonthNames &months)
{
    text = text.trimmed();
    qsizetype gap = text.indexOf(u' ');
    if (gap < 0) {
        gap = text.indexOf(u'T', 4);
    }
    if (gap < 0) {
        return std::nullopt;
    }
    QStringView clock = text.sliced(gap + 1).trimmed();
    qint64 ahead = 0;
    bool hasOffset = false;
    if (const qsizetype sign = offsetIn(clock); sign >= 0) {
        const auto offset = importedOffset(clock.sliced(sign));
        if (!offset) {
            return std::nullopt;
        }
        ahead = *offset;
        hasOffset = true;
        clock = clock.first(sign).trimmed();
    }
    const auto date = importedDate(text.first(gap), order, months);
    const auto time = importedTime(clock);
    if (!date || !time) {
        return std::nullopt;
    }
    return ImportedMoment {{date->seconds + time->seconds - ahead}, time->isUtc || hasOffset};
}

} // namespace quillon
