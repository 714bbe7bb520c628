#include "core/filterreader.h"

#include "core/foldedtext.h"
#include "platform/numbers.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <limits>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<FilterKey, logFieldCount> keys {{
    {u"date", LogField::DateTime, FilterTest::Begins, true},
    {u"pi", LogField::PiCode, FilterTest::Begins, false},
    {u"freq", LogField::Freq, FilterTest::IsNumber, true},
    {u"ps", LogField::RdsName, FilterTest::Begins, false},
    {u"itu", LogField::Country, FilterTest::Begins, false},
    {u"site", LogField::Transmitter, FilterTest::Contains, false},
    {u"km", LogField::Dist, FilterTest::IsNumber, true},
    {u"kw", LogField::Power, FilterTest::IsNumber, true},
    {u"notes", LogField::Notes, FilterTest::Contains, false},
    {u"prop", LogField::Prop, FilterTest::Begins, false},
    {u"fml", LogField::FMList, FilterTest::Begins, false},
    {u"uid", LogField::Uid, FilterTest::Begins, false},
}};

// A term as it stands in the box.
struct RawTerm
{
    bool excludes = false;
    QStringView key; ///< empty for a word
    QStringView sign; ///< ":", "==", "<" or ">" behind the key
    QStringView value;
    bool isQuoted = false;
    QStringView whole;
};

const FilterKey *keyOf(QStringView text)
{
    const auto *key = std::ranges::find_if(
        keys, [text](const FilterKey &known) { return !text.compare(known.key, Qt::CaseInsensitive); });
    return key == keys.end() ? nullptr : key;
}

// The sign that a text begins with; empty for none.
QStringView signOf(QStringView text)
{
    constexpr std::array<QStringView, 4> signs {u":", u"<", u">", u"=="};
    const auto *sign = std::ranges::find_if(signs, [text](QStringView one) { return text.startsWith(one); });
    return sign == signs.end() ? QStringView() : *sign;
}

// Takes the terms of a text one by one.
class Scanner
{
public:
    explicit Scanner(QStringView text)
        : m_text(text)
    {
    }

    bool next(RawTerm &term)
    {
        while (m_at < m_text.size() && m_text[m_at].isSpace()) {
            ++m_at;
        }
        if (m_at == m_text.size()) {
            return false;
        }
        const qsizetype start = m_at;
        term = {};
        term.excludes = m_text[m_at] == u'-';
        m_at += term.excludes ? 1 : 0;
        takeKey(term);
        takeValue(term);
        term.whole = m_text.sliced(start, m_at - start);
        return true;
    }

private:
    void takeKey(RawTerm &term)
    {
        qsizetype end = m_at;
        while (end < m_text.size() && m_text[end].isLetter()) {
            ++end;
        }
        const QStringView sign = signOf(m_text.sliced(end));
        if (end > m_at && !sign.isEmpty()) {
            term.key = m_text.sliced(m_at, end - m_at);
            term.sign = sign;
            m_at = end + sign.size();
        }
    }

    void takeValue(RawTerm &term)
    {
        term.isQuoted = m_at < m_text.size() && m_text[m_at] == u'"';
        m_at += term.isQuoted ? 1 : 0;
        qsizetype end = m_at;
        while (end < m_text.size() && !(term.isQuoted ? m_text[end] == u'"' : m_text[end].isSpace())) {
            ++end;
        }
        term.value = m_text.sliced(m_at, end - m_at);
        m_at = term.isQuoted && end < m_text.size() ? end + 1 : end;
    }

    QStringView m_text;
    qsizetype m_at = 0;
};

QString shortened(QStringView text)
{
    constexpr qsizetype longest = 40;
    return text.size() <= longest ? text.toString() : QString(text.first(longest) + u'…');
}

// True when `text` is the beginning of a date-time in the form of `pattern`, in which "d" is a digit.
bool isBeginningOf(QStringView pattern, QStringView text)
{
    return text.size() <= pattern.size()
        && std::ranges::equal(text, pattern.first(text.size()),
            [](QChar c, QChar wanted) { return wanted == u'd' ? isDigit(c) : c == wanted; });
}

// True when some moment's text begins so: one of the endings makes a date-time of it.
bool canBecomeMoment(QStringView text, std::span<const QStringView> endings, const MonthNames &months)
{
    return std::ranges::any_of(endings, [&](QStringView ending) {
        return parseDateTime(QString(text + ending.sliced(text.size())), months).has_value();
    });
}

// True when the text is what the moments of either form can begin with.
bool beginsMoment(QStringView text, const MonthNames &months)
{
    constexpr std::array<QStringView, 4> yearFirst {
        u"2001-01-01 00:00:00", u"2010-10-10 10:10:10", u"2011-11-11 11:11:11", u"2012-12-20 20:20:20"};
    constexpr std::array<QStringView, 4> dayFirst {
        u"01/01/2001 00:00:00", u"10/10/2010 10:10:10", u"11/11/2011 11:11:11", u"20/12/2012 20:20:20"};
    return (isBeginningOf(u"dddd-dd-dd dd:dd:dd", text) && canBecomeMoment(text, yearFirst, months))
        || (isBeginningOf(u"dd/dd/dddd dd:dd:dd", text) && canBecomeMoment(text, dayFirst, months));
}

QString listed(bool (*wanted)(const FilterKey &))
{
    QStringList names;
    for (const FilterKey &key : keys) {
        if (wanted(key)) {
            names += key.key.toString();
        }
    }
    const QString last = names.takeLast();
    return names.join(", "_L1) + " and "_L1 + last;
}

// Reads one term. Its problem is empty when it could be read.
class TermReader
{
public:
    TermReader(const RawTerm &raw, const MonthNames &months)
        : m_raw(raw)
        , m_months(months)
    {
        m_term.excludes = raw.excludes;
        if (raw.key.isEmpty()) {
            readWord();
        } else {
            readKey();
        }
    }

    [[nodiscard]] const FilterTerm &term() const { return m_term; }
    [[nodiscard]] const QString &problem() const { return m_problem; }

private:
    void readWord()
    {
        m_term.text = folded(m_raw.value);
        if (m_raw.value.contains(u'.') || m_raw.value.contains(u',')) {
            m_term.number = numeric(m_raw.value);
        }
    }

    void readKey()
    {
        const FilterKey *key = keyOf(m_raw.key);
        if (!key) {
            tell(u"there is no key \"%1\" (a word with \"%2\" in it goes between quotes)"_s.arg(
                shortened(m_raw.key), m_raw.sign));
            return;
        }
        m_term.field = key->field;
        if (m_raw.sign == u"<" || m_raw.sign == u">") {
            readOrder(*key);
        } else if (m_raw.value.trimmed().isEmpty()) {
            m_term.test = FilterTest::IsEmpty;
        } else if (key->field == LogField::DateTime) {
            readDate();
        } else if (key->withColon == FilterTest::IsNumber) {
            m_term.test = FilterTest::IsNumber;
            readNumber();
        } else {
            m_term.test = m_raw.sign == u"==" ? FilterTest::Is : key->withColon;
            m_term.text = folded(m_raw.value);
        }
    }

    void readOrder(const FilterKey &key)
    {
        m_term.test = m_raw.sign == u"<" ? FilterTest::Below : FilterTest::Above;
        if (!key.hasOrder) {
            tell(u"\"<\" and \">\" are for %1"_s.arg(
                listed([](const FilterKey &one) { return one.hasOrder; })));
        } else if (key.field != LogField::DateTime) {
            readNumber();
        } else if (const auto span = momentSpan(m_raw.value, m_months)) {
            m_term.span = *span;
        } else {
            tellNoDate();
        }
    }

    void readNumber()
    {
        m_term.number = numeric(m_raw.value);
        if (!m_term.number) {
            tell(m_raw.value.isEmpty() ? u"a number belongs behind it"_s
                                       : u"\"%1\" is not a number"_s.arg(shortened(m_raw.value)));
        }
    }

    void readDate()
    {
        const QStringView value = m_raw.value.trimmed();
        if (beginsMoment(value, m_months)) {
            m_term.test = FilterTest::Begins;
            m_term.text = value.toString();
        } else if (const auto span = momentSpan(value, m_months)) {
            m_term.test = FilterTest::InSpan;
            m_term.span = *span;
        } else {
            tellNoDate();
        }
    }

    void tellNoDate()
    {
        tell(m_raw.value.isEmpty()
                ? u"a date belongs behind it"_s
                : u"\"%1\" is not a date such as 2025-06-30"_s.arg(shortened(m_raw.value)));
    }

    void tell(const QString &what) { m_problem = shortened(m_raw.whole) + ": "_L1 + what; }

    const RawTerm &m_raw;
    const MonthNames &m_months;
    FilterTerm m_term;
    QString m_problem;
};

// The first moment of the month after that of `moment`; the end of all time when there is none.
DateTime nextMonth(DateTime moment)
{
    CivilTime parts = civil(moment);
    parts.month = parts.month % 12 + 1;
    parts.year += parts.month == 1 ? 1 : 0;
    return fromCivil({parts.year, parts.month, 1}).value_or(DateTime {std::numeric_limits<qint64>::max()});
}

} // namespace

std::span<const FilterKey> filterKeys()
{
    return keys;
}

std::optional<MomentSpan> momentSpan(QStringView text, const MonthNames &months)
{
    const QStringView value = text.trimmed();
    const bool beginsWithYear = value.size() >= 4 && std::ranges::all_of(value.first(4), isDigit);
    if (beginsWithYear && value.size() == 4) {
        if (const auto first = parseDateTime(QString(value + "-1-1"_L1), months)) {
            return MomentSpan {*first, nextMonth({first->seconds + 340 * secondsPerDay})};
        }
        return std::nullopt;
    }
    if (beginsWithYear) {
        // parseDateTime wants the same separator twice.
        if (const auto first = parseDateTime(QString(value + value[4] + u'1'), months)) {
            return MomentSpan {*first, nextMonth(*first)};
        }
    }
    const auto first = parseDateTime(value, months);
    if (!first) {
        return std::nullopt;
    }
    const qsizetype colons = value.count(u':');
    const qint64 length = colons == 0 ? secondsPerDay : colons == 1 ? 60 : 1;
    return MomentSpan {*first, {first->seconds + length}};
}

QString filterTerm(LogField field, const QString &value)
{
    const auto *key = std::ranges::find(keys, field, &FilterKey::field);
    const qsizetype quote = value.indexOf(u'"');
    const QString wanted = quote < 0 ? value : value.first(quote);
    const bool isOneWord = std::ranges::none_of(wanted, [](QChar c) { return c.isSpace(); });
    return key->key + (quote < 0 ? u"==" : u":") + (isOneWord ? wanted : QString(u'"' + wanted + u'"'));
}

FilterReading readFilter(QStringView text, const MonthNames &months)
{
    FilterReading reading;
    Scanner scanner(text);
    RawTerm raw;
    while (scanner.next(raw)) {
        if (raw.key.isEmpty() && raw.value.isEmpty()) {
            continue; // just being begun
        }
        const TermReader term(raw, months);
        if (!term.problem().isEmpty()) {
            return {{}, term.problem()};
        }
        reading.terms.push_back(term.term());
    }
    return reading;
}

} // namespace quillon
