#include "core/linebreaks.h"

namespace quillon {

using namespace Qt::StringLiterals;

QString foldedLineBreaks(QString text)
{
    return text.replace("\r\n"_L1, "CRLF"_L1);
}

QString unfoldedLineBreaks(QString text)
{
    return text.replace("CRLF"_L1, "\r\n"_L1);
}

QString withoutLineBreaks(QString text)
{
    return text.replace("\r\n"_L1, " "_L1).replace(u'\n', u' ');
}

QString withLineEnds(QString text)
{
    text.replace("\r\n"_L1, "\n"_L1)
        .replace(QChar::ParagraphSeparator, u'\n')
        .replace(QChar::LineSeparator, u'\n');
    return text.replace(u'\n', "\r\n"_L1);
}

} // namespace quillon
