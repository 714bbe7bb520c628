#include "export/cells.h"

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

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

QString leftAligned(QStringView text, qsizetype width)
{
    return withoutBlanks(text).left(width).toString().leftJustified(width);
}

} // namespace quillon
