#include "fmlist/webaddress.h"

#include "platform/runtimeerror.h"

#include <QUrl>

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

bool isSendable(char byte)
{
    return byte > ' ' && byte < 0x7F && !QByteArrayView("\"#<>\\^`{|}").contains(byte);
}

[[noreturn]] void refuse(const QByteArray &url, const QString &reason)
{
    throw RuntimeError(
        ErrorName::InvalidProcedureCall, u"Opening \""_s + QString::fromLatin1(url) + u"\": "_s + reason);
}

} // namespace

QByteArray sendable(QStringView text, const CodePage &codePage)
{
    return sendable(codePage.encode(text));
}

QByteArray sendable(QByteArrayView bytes)
{
    QByteArray result;
    result.reserve(bytes.size());
    for (const char byte : bytes) {
        if (isSendable(byte)) {
            result += byte;
        } else {
            result += '%' + QByteArray(1, byte).toHex().toUpper();
        }
    }
    return result;
}

WebAddress webAddress(const QByteArray &url)
{
    if (!std::ranges::all_of(url, isSendable)) {
        refuse(url, u"it holds a character that no web address can hold"_s);
    }
    const QByteArray scheme = url.left(url.indexOf("://")).toLower();
    if (scheme != "http" && scheme != "https") {
        refuse(url, u"only http and https addresses can be opened"_s);
    }
    const qsizetype begin = scheme.size() + 3;
    const auto isEnd = [](char c) { return c == '/' || c == '?'; };
    const auto end = std::distance(url.begin(), std::find_if(url.begin() + begin, url.end(), isEnd));
    WebAddress address;
    address.isSecure = scheme == "https";
    address.authority = url.sliced(begin, end - begin);
    const QUrl parsed = QUrl::fromEncoded(scheme + "://" + address.authority, QUrl::StrictMode);
    if (!parsed.isValid() || parsed.host().isEmpty() || !parsed.userInfo().isEmpty()) {
        refuse(url, u"it names no host"_s);
    }
    address.host = parsed.host();
    address.port = static_cast<quint16>(parsed.port(address.isSecure ? 443 : 80));
    address.target = url.sliced(end);
    if (!address.target.startsWith('/')) {
        address.target.prepend('/');
    }
    return address;
}

QByteArray redirected(const QByteArray &from, const QByteArray &location)
{
    const QByteArray target = sendable(QByteArrayView(location.split('#').first()));
    const WebAddress base = webAddress(from);
    const QByteArray scheme = base.isSecure ? "https:" : "http:";
    QByteArray result;
    if (target.startsWith("//")) {
        result = scheme + target;
    } else if (target.startsWith('/')) {
        result = scheme + "//" + base.authority + target;
    } else if (target.contains("://")) {
        result = target;
    } else {
        result = QUrl::fromEncoded(from).resolved(QUrl::fromEncoded(target)).toEncoded();
    }
    (void)webAddress(result);
    return result;
}

} // namespace quillon
