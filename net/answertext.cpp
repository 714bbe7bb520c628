#include "net/answertext.h"

#include "net/charset.h"

#include <QList>

#include <algorithm>
#include <array>
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

// Who names these sends windows-1252, and that is what browsers read (WHATWG Encoding Standard, 4.2).
constexpr std::array<QByteArrayView, 15> latin1Names {"iso-8859-1", "iso8859-1", "iso88591", "iso_8859-1",
    "iso_8859-1:1987", "iso-ir-100", "csisolatin1", "latin1", "l1", "cp819", "ibm819", "us-ascii", "ascii",
    "ansi_x3.4-1968", "x-cp1252"};

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
    if (std::ranges::find(latin1Names, QByteArrayView(charset)) != latin1Names.end()) {
        return CodePage(1252).decode(body);
    }
    if (const auto page = windowsPage(charset)) {
        return page->decode(body);
    }
    const auto text = decodedFrom(charset, body);
    return text ? *text : codePage.decode(body);
}

} // namespace quillon
