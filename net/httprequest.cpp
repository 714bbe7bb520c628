#include "net/httprequest.h"

#include "net/webaddress.h"
#include "platform/runtimeerror.h"

#include <QList>

#include <algorithm>
#include <arpa/inet.h>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void refuse(const HttpRequest &request, const QString &reason)
{
    throw RuntimeError(ErrorName::InvalidProcedureCall,
        u"Opening \""_s + QString::fromLatin1(request.url) + u"\": "_s + reason);
}

void append(CurlLines &lines, const QByteArray &line)
{
    curl_slist *const longer = curl_slist_append(lines.get(), line.constData());
    if (longer == nullptr) {
        throw std::bad_alloc();
    }
    (void)lines.release();
    lines.reset(longer);
}

bool isOfThisMachine(const QByteArray &url)
{
    const CurlUrl parts(curl_url());
    char *found = nullptr;
    if (!parts || curl_url_set(parts.get(), CURLUPART_URL, url.constData(), CURLU_PATH_AS_IS) != CURLUE_OK
        || curl_url_get(parts.get(), CURLUPART_HOST, &found, 0) != CURLUE_OK) {
        return false;
    }
    const std::unique_ptr<char, void (*)(void *)> owned(found, &curl_free);
    const QByteArray host = QByteArray(found).toLower();
    constexpr std::uint32_t loopbackNet = 127;
    in_addr address {};
    return host == "localhost" || host == "[::1]"
        || (inet_pton(AF_INET, host.constData(), &address) == 1
            && ntohl(address.s_addr) >> 24U == loopbackNet);
}

} // namespace

void requireOption(CURLcode result)
{
    if (result != CURLE_OK) {
        throw RuntimeError(ErrorName::CannotReachService,
            u"Preparing a request: "_s + QString::fromLatin1(curl_easy_strerror(result)));
    }
}

QString HttpRequest::doing() const
{
    return u"Opening "_s + QString::fromLatin1(url);
}

void requireValid(const HttpRequest &request)
{
    if (request.method != "GET" && request.method != "POST") {
        refuse(request, u"only GET and POST can be sent"_s);
    }
    if (sendable(QByteArrayView(request.url)) != request.url) {
        refuse(request, u"it holds a character that no web address can hold"_s);
    }
    const QByteArray scheme = request.url.left(request.url.indexOf("://")).toLower();
    if (scheme != "http" && scheme != "https") {
        refuse(request, u"only http and https addresses can be opened"_s);
    }
    const CurlUrl url(curl_url());
    const CURLUcode code =
        curl_url_set(url.get(), CURLUPART_URL, request.url.constData(), CURLU_DISALLOW_USER);
    if (code != CURLUE_OK) {
        refuse(request, QString::fromLatin1(curl_url_strerror(code)));
    }
}

CurlLines headerLines(const QByteArray &headerBlock)
{
    CurlLines lines;
    // Each request has a connection of its own, and says so (RFC 9112, 9.6).
    append(lines, "Connection: close");
    const QList<QByteArray> given = headerBlock.split('\n');
    for (const QByteArray &line : given) {
        append(lines, line.endsWith('\r') ? line.chopped(1) : line);
    }
    for (const QByteArray name : {"Accept:", "Accept-Encoding:", "Content-Type:", "Expect:"}) {
        const auto isIt = [&name](const QByteArray &line) {
            return line.left(name.size()).compare(name, Qt::CaseInsensitive) == 0;
        };
        if (std::ranges::none_of(given, isIt)) {
            append(lines, name);
        }
    }
    return lines;
}

void setRequest(CURL *transfer, const HttpRequest &request, const CurlLines &lines)
{
    setOption(transfer, CURLOPT_URL, request.url.constData());
    setOption(transfer, CURLOPT_PATH_AS_IS, 1L);
    if (isOfThisMachine(request.url)) {
        // A proxy could not reach it, and need not know of it.
        setOption(transfer, CURLOPT_NOPROXY, "*");
    }
    // Whoever waits decides how long; left alone, a connection would be given up after five minutes.
    setOption(transfer, CURLOPT_CONNECTTIMEOUT_MS, long {std::numeric_limits<int>::max()});
    setOption(transfer, CURLOPT_PROTOCOLS_STR, "http,https");
    setOption(transfer, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    setOption(transfer, CURLOPT_DISALLOW_USERNAME_IN_URL, 1L);
    setOption(transfer, CURLOPT_FOLLOWLOCATION, 1L);
    setOption(transfer, CURLOPT_MAXREDIRS, 10L);
    setOption(transfer, CURLOPT_POSTREDIR, long {CURL_REDIR_POST_301 | CURL_REDIR_POST_302});
    setOption(transfer, CURLOPT_HTTP_VERSION, long {CURL_HTTP_VERSION_1_1});
    setOption(transfer, CURLOPT_FORBID_REUSE, 1L);
    setOption(transfer, CURLOPT_HTTPHEADER, lines.get());
    // Unpacks what a server packs unasked: the line that would ask for it is taken out.
    setOption(transfer, CURLOPT_ACCEPT_ENCODING, "");
    setOption(transfer, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    setOption(transfer, CURLOPT_MAXFILESIZE_LARGE, curl_off_t {largestAnswer});
    setOption(transfer, CURLOPT_NOSIGNAL, 1L);
    // Closing the window does not wait for a name server.
    setOption(transfer, CURLOPT_QUICK_EXIT, 1L);
    if (request.method == "POST") {
        setOption(transfer, CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t {request.body.size()});
        setOption(transfer, CURLOPT_POSTFIELDS, request.body.constData());
    }
}

} // namespace quillon
