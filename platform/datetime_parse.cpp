#include "platform/datetime.h"
#include "platform/numbers.h"

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<QStringView, 12> englishMonths {u"january", u"february", u"march", u"april", u"may",
    u"june", u"july", u"august", u"september", u"october", u"november", u"december"};

// Reads the text from the left; every take* leaves it as it was when what it wants is not there.
class Reader
{
public:
    explicit Reader(QStringView text)
        : m_rest(text)
    {
    }

    [[nodiscard]] bool atEnd() const { return m_rest.isEmpty(); }

    bool takeBlanks()
    {
        const qsizetype before = m_rest.size();
        while (!m_rest.isEmpty() && m_rest.front().isSpace()) {
            m_rest = m_rest.mid(1);
        }
        return m_rest.size() < before;
    }

    bool take(QChar c)
    {
        if (m_rest.isEmpty() || m_rest.front() != c) {
            return false;
        }
        m_rest = m_rest.mid(1);
        return true;
    }

    // The separator of a date, or nothing.
    QChar takeSeparator()
    {
        if (m_rest.isEmpty() || !QStringView(u"/-.").contains(m_rest.front())) {
            return {};
        }
        const QChar separator = m_rest.front();
        m_rest = m_rest.mid(1);
        return separator;
    }

    // A whole number of at most four ASCII digits; `digits` receives how many there were, 0 when none.
    int takeNumber(int &digits)
    {
        int value = 0;
        digits = 0;
        while (digits < m_rest.size() && digits < 5 && isDigit(m_rest[digits])) {
            value = value * 10 + (m_rest[digits].unicode() - u'0');
            ++digits;
        }
        m_rest = m_rest.mid(digits);
        return value;
    }

    // A run of letters.
    QStringView takeWord()
    {
        qsizetype length = 0;
        while (length < m_rest.size() && (m_rest[length].isLetter() || m_rest[length].isMark())) {
            ++length;
        }
        const QStringView word = m_rest.left(length);
        m_rest = m_rest.mid(length);
        return word;
    }

private:
    QStringView m_rest;
};

bool sameWord(QStringView left, QStringView right)
{
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

int monthOfName(QStringView word, const MonthNames &months)
{
    for (std::size_t i = 0; i < 12 && !word.isEmpty(); ++i) {
        if (sameWord(word, englishMonths[i]) || sameWord(word, englishMonths[i].left(3))
            || sameWord(word, months.abbreviated[i]) || sameWord(word, months.full[i])) {
            return static_cast<int>(i) + 1;
        }
    }
    return 0;
}

int fullYear(int year, int digits)
{
    if (digits == 4) {
        return year;
    }
    if (digits == 2) {
        return year < 30 ? 2000 + year : 1900 + year;
    }
    return -1;
}

// Day-month-year or year-month-day; false when the text does not begin with a date.
bool readDate(Reader &reader, const MonthNames &months, CivilTime &parts)
{
    int firstDigits = 0;
    const int first = reader.takeNumber(firstDigits);
    if (firstDigits == 0) {
        return false;
    }
    const QChar separator = reader.takeSeparator();
    int monthDigits = 0;
    parts.month = reader.takeNumber(monthDigits);
    if (monthDigits == 0) {
        parts.month = monthOfName(reader.takeWord(), months);
        // A locale's abbreviation may be typed with its full stop.
        if (separator != u'.') {
            reader.take(u'.');
        }
    }
    if (separator.isNull() || monthDigits > 2 || !reader.take(separator)) {
        return false;
    }
    int lastDigits = 0;
    const int last = reader.takeNumber(lastDigits);
    const bool yearFirst = firstDigits == 4;
    parts.year = yearFirst ? first : fullYear(last, lastDigits);
    parts.day = yearFirst ? last : first;
    return (yearFirst ? lastDigits : firstDigits) <= 2 && lastDigits > 0;
}

bool readHalfOfDay(Reader &reader, CivilTime &parts)
{
    const QStringView word = reader.takeWord();
    if (word.isEmpty()) {
        return true;
    }
    const bool afternoon = sameWord(word, u"PM");
    if ((!afternoon && !sameWord(word, u"AM")) || parts.hour > 12) {
        return false;
    }
    parts.hour = parts.hour % 12 + (afternoon ? 12 : 0);
    return true;
}

bool readTime(Reader &reader, CivilTime &parts)
{
    int digits = 0;
    parts.hour = reader.takeNumber(digits);
    if (digits < 1 || digits > 2 || !reader.take(u':')) {
        return false;
    }
    parts.minute = reader.takeNumber(digits);
    if (digits < 1 || digits > 2) {
        return false;
    }
    if (reader.take(u':')) {
        parts.second = reader.takeNumber(digits);
        if (digits < 1 || digits > 2) {
            return false;
        }
    }
    reader.takeBlanks();
    return readHalfOfDay(reader, parts);
}

// The form in which the program writes, read without any searching.
std::optional<DateTime> readGeneralText(QStringView text)
{
    constexpr QStringView shape = u"00/00/0000 00:00:00";
    if (text.size() != shape.size()) {
        return std::nullopt;
    }
    std::array<int, 19> digit {};
    for (qsizetype i = 0; i < shape.size(); ++i) {
        if (shape[i] == u'0' ? !isDigit(text[i]) : text[i] != shape[i]) {
            return std::nullopt;
        }
        digit[static_cast<std::size_t>(i)] = text[i].unicode() - u'0';
    }
    const auto two = [&](std::size_t at) { return digit[at] * 10 + digit[at + 1]; };
    return fromCivil({two(6) * 100 + two(8), two(3), two(0), two(11), two(14), two(17)});
}

} // namespace

std::optional<DateTime> parseDateTime(QStringView text, const MonthNames &months)
{
    if (const auto quick = readGeneralText(text)) {
        return quick;
    }
    const QStringView trimmed = text.trimmed();
    Reader reader(trimmed);
    CivilTime parts;
    if (!readDate(reader, months, parts)) {
        return std::nullopt;
    }
    if (!reader.atEnd() && (!reader.takeBlanks() || !readTime(reader, parts) || !reader.atEnd())) {
        return std::nullopt;
    }
    return fromCivil(parts);
}

} // namespace quillon
