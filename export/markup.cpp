#include "export/markup.h"

#include <QString>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

bool isForbidden(QChar c)
{
    return (c < u' ' && c != u'\t' && c != u'\r' && c != u'\n') || (c >= u'\x7F' && c <= u'\x9F')
        || c >= u'\xFFFE';
}

} // namespace

void appendMarkup(QByteArray &bytes, QStringView text)
{
    QString safe;
    safe.reserve(text.size());
    for (const QChar c : text) {
        switch (c.unicode()) {
        case u'&':
            safe += "&amp;"_L1;
            break;
        case u'<':
            safe += "&lt;"_L1;
            break;
        case u'>':
            safe += "&gt;"_L1;
            break;
        case u'"':
            safe += "&quot;"_L1;
            break;
        default:
            safe += isForbidden(c) ? QChar(QChar::ReplacementCharacter) : c;
        }
    }
    bytes += safe.toUtf8();
}

} // namespace quillon
