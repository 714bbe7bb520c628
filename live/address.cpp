#include "live/address.h"

#include "platform/numbers.h"

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

std::optional<quint16> portOf(QStringView text)
{
    bool ok = false;
    const quint16 port = text.toUShort(&ok);
    return ok && port > 0 && std::ranges::all_of(text, isDigit) ? std::optional(port) : std::nullopt;
}

bool isHost(QStringView text)
{
    return !text.isEmpty() && std::ranges::all_of(text, [](QChar c) {
        return c.isLetterOrNumber() || c == u'.' || c == u'-' || c == u'_' || c == u':' || c == u'%';
    });
}

} // namespace

std::optional<HostPort> readHostPort(QStringView text, const HostPort &usual)
{
    text = text.trimmed();
    if (text.isEmpty()) {
        return usual;
    }
    if (std::ranges::all_of(text, isDigit)) {
        const auto port = portOf(text);
        return port ? std::optional(HostPort {usual.host, *port}) : std::nullopt;
    }
    QStringView host = text;
    QStringView rest;
    if (text.startsWith(u'[')) {
        const qsizetype end = text.indexOf(u']');
        if (end < 0) {
            return {};
        }
        host = text.first(end).sliced(1);
        rest = text.sliced(end + 1);
    } else if (text.count(u':') == 1) {
        const qsizetype colon = text.indexOf(u':');
        host = text.first(colon);
        rest = text.sliced(colon);
    }
    HostPort result {host.isEmpty() ? usual.host : host.toString(), usual.port};
    if (!rest.isEmpty()) {
        const auto port = rest.startsWith(u':') ? portOf(rest.sliced(1)) : std::nullopt;
        if (!port) {
            return {};
        }
        result.port = *port;
    }
    return isHost(result.host) ? std::optional(result) : std::nullopt;
}

std::optional<QUrl> webserverUrl(QStringView text)
{
    QString address = text.trimmed().toString();
    if (!address.contains("://"_L1)) {
        address.prepend("ws://"_L1);
    }
    QUrl url(address, QUrl::StrictMode);
    const QString scheme = url.scheme();
    if (scheme == "http"_L1 || scheme == "https"_L1) {
        url.setScheme(scheme == "http"_L1 ? u"ws"_s : u"wss"_s);
    } else if (scheme != "ws"_L1 && scheme != "wss"_L1) {
        return {};
    }
    if (!url.isValid() || url.host().isEmpty()) {
        return {};
    }
    if (!url.path().endsWith("/text"_L1)) {
        url.setPath(url.path() + (url.path().endsWith(u'/') ? "text"_L1 : "/text"_L1));
    }
    return url;
}

} // namespace quillon
