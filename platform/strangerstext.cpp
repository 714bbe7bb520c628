#include "platform/strangerstext.h"

namespace quillon {

namespace {

bool isLineEnd(QChar c)
{
    return c == u'\n' || c == u'\r' || c == u'\t' || c == QChar::LineSeparator
        || c == QChar::ParagraphSeparator;
}

} // namespace

QString strangersText(QStringView text, qsizetype longest)
{
    QString clean;
    for (qsizetype i = 0; i < text.size() && clean.size() < longest; ++i) {
        const QChar c = text[i];
        if (isLineEnd(c)) {
            clean += u' ';
        } else if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            const char32_t whole = QChar::surrogateToUcs4(c, text[i + 1]);
            if (QChar::isPrint(whole) && clean.size() + 2 <= longest) {
                clean += text.mid(i, 2);
            }
            ++i;
        } else if (!c.isSurrogate() && c.isPrint() && c.category() != QChar::Other_Format) {
            clean += c;
        }
    }
    return clean;
}

} // namespace quillon
