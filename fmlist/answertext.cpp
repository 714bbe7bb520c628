#include "fmlist/answertext.h"

#include "platform/charset.h"

#include <QList>

#include <optional>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// The value of the charset parameter in lower case: utf-8 in `text/plain; charset="UTF-8"`.
QByteArray charsetOf(QByteArrayView contentType)
{
    const QList<QByteArray> parameters = contentType.toByteArray().toLower().split(';');
    for (const QByteArray &parameter : parameters) {
        const qsizetype sign = parameter.indexOf('=');
        if (sign >= 0 && parameter.first(sign).trimmed() == "charset") {
            return parameter.sliced(sign + 1).replace('"', "").trimmed();
        }
    }
    return {};
}

// In the Windows pages of the program every byte is a character.
std::optional<CodePage> windowsPage(const QByteArray &charset)
{
    for (const QByteArrayView prefix : {QByteArrayView("windows-"), QByteArrayView("cp")}) {
        if (charset.startsWith(prefix)) {
            const int number = charset.sliced(prefix.size()).toInt();
            const CodePage named(number);
            return named.number() == number ? std::optional(named) : std::nullopt;
        }
    }
    return std::nullopt;
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
    if (const auto page = windowsPage(charset)) {
        return page->decode(body);
    }
    const auto text = decodedFrom(charset, body);
    return text ? *text : codePage.decode(body);
}

} // namespace quillon
