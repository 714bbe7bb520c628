#include "fmlist/answertext.h"

#include <QList>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// The value of the charset parameter in lower case: utf-8 in `text/plain; charset="UTF-8"`.
QByteArray charsetOf(QByteArrayView contentType)
{
    const QList<QByteArray> parameters = contentType.toByteArray().toLower().split(';');
    for (const QByteArray &parameter : parameters) {
        const QByteArray trimmed = parameter.trimmed();
        if (trimmed.startsWith("charset=")) {
            return trimmed.mid(8).replace('"', "").trimmed();
        }
    }
    return {};
}

} // namespace

QString answerText(QByteArrayView body, QByteArrayView contentType, const CodePage &codePage)
{
    const QByteArray charset = charsetOf(contentType);
    if (charset == "utf-8" || charset == "utf8") {
        return QString::fromUtf8(body);
    }
    if (charset == "iso-8859-1" || charset == "latin1" || charset == "us-ascii") {
        return QString::fromLatin1(body);
    }
    for (const QByteArrayView prefix : {QByteArrayView("windows-"), QByteArrayView("cp")}) {
        if (charset.startsWith(prefix)) {
            const int number = charset.mid(prefix.size()).toInt();
            const CodePage named(number);
            return (named.number() == number ? named : codePage).decode(body);
        }
    }
    return codePage.decode(body);
}

} // namespace quillon
