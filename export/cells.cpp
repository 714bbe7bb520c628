#include "export/cells.h"

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QString reformatted(const QString &text, QStringView pattern, const MonthNames &months)
{
    const auto moment = parseDateTime(text, months);
    return moment ? formatted(*moment, pattern, months) : text;
}

// Blanks only: a tab or a no-break space is part of what was received.
QStringView withoutBlanks(QStringView text)
{
    while (text.startsWith(u' ')) {
        text = text.sliced(1);
    }
    while (text.endsWith(u' ')) {
        text.chop(1);
    }
    return text;
}

} // namespace

QString blankCell(const QString &text)
{
    return text.isEmpty() ? u"&nbsp;"_s : text;
}

QString blankCount(const QString &text)
{
    return text > "0"_L1 ? text : u"&nbsp;"_s;
}

QString logDate(const QString &text, const MonthNames &months)
{
    return reformatted(text, logDatePattern, months);
}

QString logDayAndTime(const QString &text, const MonthNames &months)
{
    return reformatted(text, u"dd-mmm hh:nn", months);
}

QString logTime(const QString &text, const MonthNames &months)
{
    return reformatted(text, u"hh:nn", months);
}

QString leftAligned(QStringView text, qsizetype width)
{
    return withoutBlanks(text).left(width).toString().leftJustified(width);
}

QString rightAligned(QStringView text, qsizetype width)
{
    return withoutBlanks(text).left(width).toString().rightJustified(width);
}

} // namespace quillon
