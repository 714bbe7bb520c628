#include "geo/converter.h"

#include "geo/maidenhead.h"
#include "platform/numbers.h"

#include <algorithm>
#include <cmath>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

int degreeLimit(bool Lat)
{
    return Lat ? 90 : 180;
}

QString axis(bool Lat)
{
    return Lat ? u"latitude"_s : u"longitude"_s;
}

QString outOfRange(bool Lat)
{
    return u"A %1 goes from -%2 to %2 degrees"_s.arg(axis(Lat)).arg(degreeLimit(Lat));
}

QString quoted(const QString &text)
{
    constexpr qsizetype shown = 16;
    const QString start = text.size() > shown ? text.first(shown) + u'…' : text;
    return u"“"_s + start.simplified() + u"”"_s;
}

bool allDigits(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

bool isTwoDigits(const QString &text)
{
    return text.size() == 2 && allDigits(text);
}

bool isWithin(QChar letter, QChar last)
{
    return letter.toUpper() >= u'A' && letter.toUpper() <= last;
}

} // namespace

PositionParts splitCompact(const QString &compact)
{
    const qsizetype minutesAt = std::max<qsizetype>(compact.indexOf(u'.') - 2, 0);
    return {
        compact.first(minutesAt), compact.mid(minutesAt, 2), compact.mid(minutesAt + 3, 2), compact.right(1)};
}

QString compactText(const PositionParts &parts)
{
    return parts.degrees.trimmed() + parts.minutes.trimmed() + u'.'
        + fullHundredths(parts.hundredths).trimmed() + parts.hemisphere;
}

QString fullHundredths(const QString &typed)
{
    const QString text = typed.trimmed();
    return text.size() == 1 && allDigits(text) ? text + u'0' : typed;
}

QString decimalProblem(const QString &text, bool Lat)
{
    if (text.trimmed().isEmpty()) {
        return u"Enter the %1 in decimal degrees"_s.arg(axis(Lat));
    }
    const auto value = numeric(text);
    if (!value) {
        return quoted(text) + u" is not a number"_s;
    }
    return std::abs(*value) > degreeLimit(Lat) ? outOfRange(Lat) : QString();
}

PartsProblem partsProblem(const PositionParts &parts, bool Lat)
{
    const QString degrees = parts.degrees.trimmed();
    if (degrees.isEmpty()) {
        return {u"Enter the degrees"_s};
    }
    if (!allDigits(degrees)) {
        return {u"Degrees: "_s + quoted(degrees) + u" is not a whole number"_s};
    }
    if (!isTwoDigits(parts.minutes.trimmed()) || parts.minutes.trimmed() > u"59"_s) {
        return {u"Minutes: two digits, 00 to 59"_s, PartsProblem::Piece::Minutes};
    }
    const QString hundredths = fullHundredths(parts.hundredths).trimmed();
    if (!hundredths.isEmpty() && !isTwoDigits(hundredths)) {
        return {u"Hundredths of a minute: two digits, 00 to 99"_s, PartsProblem::Piece::Hundredths};
    }
    const double minutes = numeric(degrees).value_or(HUGE_VAL) * 60 + parts.minutes.toInt();
    const bool beyond = minutes + hundredths.toInt() / 100.0 > degreeLimit(Lat) * 60;
    return {beyond ? outOfRange(Lat) : QString()};
}

QString locatorProblem(const QString &text)
{
    if (text.trimmed().isEmpty()) {
        return u"Enter a locator, for instance JO50VA"_s;
    }
    if (!isLocator(text)) {
        return quoted(text.trimmed()) + u" is not two letters, two digits, two letters"_s;
    }
    const QString loc = text.trimmed();
    if (!isWithin(loc[0], u'R') || !isWithin(loc[1], u'R')) {
        return u"The first two letters go from A to R"_s;
    }
    if (!isWithin(loc[4], u'X') || !isWithin(loc[5], u'X')) {
        return u"The last two letters go from A to X"_s;
    }
    return {};
}

} // namespace quillon
