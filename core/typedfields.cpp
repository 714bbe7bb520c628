#include "core/typedfields.h"

#include "core/fieldchecks.h"
#include "core/linebreaks.h"

#include <algorithm>

namespace quillon {

namespace {

bool areDigits(QStringView text)
{
    return !text.isEmpty() && std::ranges::all_of(text, [](QChar c) { return c >= u'0' && c <= u'9'; });
}

bool isInBand(QStringView megahertz)
{
    const int number = megahertz.toInt();
    return number >= lowestFreq && number <= highestFreq;
}

// How many of the digits stand before the point; 0 where they are no frequency.
qsizetype wholeDigits(QStringView digits)
{
    constexpr qsizetype most = 6;
    const qsizetype whole = digits.startsWith(u'1') ? 3 : 2;
    const bool fits = digits.size() >= whole && digits.size() <= most && isInBand(digits.first(whole));
    const bool isBeyond = fits && digits.first(whole).toInt() == highestFreq
        && digits.sliced(whole).count(u'0') < digits.size() - whole;
    return fits && !isBeyond ? whole : 0;
}

} // namespace

QString usualFrequency(const QString &text)
{
    const QString number = text.trimmed().replace(u',', u'.');
    const qsizetype point = number.indexOf(u'.');
    if (point < 0) {
        const qsizetype whole = areDigits(number) ? wholeDigits(number) : 0;
        return whole == 0 || whole == number.size()
            ? withoutLineBreaks(text)
            : usualFrequency(number.first(whole) + u'.' + number.sliced(whole));
    }
    if (!areDigits(number.first(point)) || !areDigits(number.sliced(point + 1))) {
        return withoutLineBreaks(text);
    }
    qsizetype length = number.size();
    while (length > point + 2 && number[length - 1] == u'0') {
        --length;
    }
    return number.first(length);
}

QString typedField(LogField field, const QString &text)
{
    switch (field) {
    case LogField::Notes:
        return withLineEnds(text);
    case LogField::PiCode:
        return withoutLineBreaks(text.trimmed().toUpper());
    case LogField::RdsName:
        return withoutLineBreaks(QString(text).replace(u' ', u'_'));
    case LogField::Power:
        return withoutLineBreaks(text.toUpper());
    default:
        return withoutLineBreaks(text);
    }
}

} // namespace quillon
