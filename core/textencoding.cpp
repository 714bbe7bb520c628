#include "core/textencoding.h"

#include <QStringList>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype referenceLength = 6;

bool isKept(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool isReference(QStringView six)
{
    return six[0] == u'&' && six[1] == u'#' && isDigit(six[2]) && isDigit(six[3]) && isDigit(six[4])
        && six[5] == u';';
}

} // namespace

QString URLEncode(QStringView text, const CodePage &codePage)
{
    QString encoded;
    encoded.reserve(text.size() * 3);
    for (const QChar c : text) {
        if (isKept(c)) {
            encoded += c;
        } else if (c == u' ') {
            encoded += u'+';
        } else {
            encoded += u'%' + QString::number(codePage.byteOf(c), 16).toUpper();
        }
    }
    return encoded;
}

QString W3CEncode(QStringView text, const CodePage &codePage)
{
    QString encoded;
    encoded.reserve(text.size());
    for (const QChar c : text) {
        if (isKept(c) || c == u' ') {
            encoded += c;
        } else {
            encoded += "&#"_L1 + QString::number(codePage.byteOf(c)) + u';';
        }
    }
    return encoded;
}

QString StripCharRefs(const QString &text)
{
    // At most a thousand different references, so the removals stay linear in the length of the text.
    QStringList references;
    for (qsizetype i = 0; i < text.size() - referenceLength; ++i) {
        const QStringView six = QStringView(text).sliced(i, referenceLength);
        if (text[i] == u'&' && isReference(six) && !references.contains(six)) {
            references += six.toString();
        }
    }
    QString result = text;
    for (const QString &reference : references) {
        result.remove(reference);
    }
    return result;
}

} // namespace quillon
