#include "net/httpclient.h"

#include <QLoggingCategory>

#include <new>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(trace, "quillon.inet1", QtWarningMsg)

QByteArray text(const char *value)
{
    return value == nullptr ? QByteArray() : QByteArray(value);
}

template<typename Value>
Value information(CURL *transfer, CURLINFO which)
{
    Value value {};
    curl_easy_getinfo(transfer, which, &value);
    return value;
}

RuntimeError serviceError(const QString &doing, const QString &reason)
{
    return {ErrorName::ServiceError, doing + u": "_s + reason};
}

} // namespace

HttpClient::HttpClient()
    : m_transfer(curl_easy_init())
{
    if (!m_transfer) {
        throw std::bad_alloc();
    }
    connect(&m_loop, &CurlLoop::done, this, [this](CURL *, CURLcode result) { complete(result); });
}

HttpClient::~HttpClient()
{
    abort();
}

void HttpClient::start(HttpRequest request)
{
    requireValid(request);
    abort();
    // Keeps what makes the next encrypted connection faster.
    curl_easy_reset(m_transfer.get());
    m_request = std::move(request);
    m_headerLines = headerLines(m_request.headerBlock);
    m_answer = {};
    m_failure.reset();
    m_errorText = {};
    m_isAborted = false;
    setRequest(m_transfer.get(), m_request, m_headerLines);
    setCallbacks();
    m_loop.add(m_transfer.get());
    m_isRunning = true;
    qCDebug(trace) << " Looking up IP address of host computer";
}

void HttpClient::abort()
{
    if (m_isRunning) {
        m_isAborted = true;
        m_loop.remove(m_transfer.get());
        finish();
    }
}

HttpAnswer HttpClient::takeAnswer()
{
    if (m_failure) {
        throw RuntimeError(*m_failure);
    }
    return std::exchange(m_answer, {});
}

void HttpClient::setCallbacks()
{
    CURL *const transfer = m_transfer.get();
    setOption(transfer, CURLOPT_ERRORBUFFER, m_errorText.data());
    if (const QByteArray authorities = qgetenv("SSL_CERT_FILE"); !authorities.isEmpty()) {
        setOption(transfer, CURLOPT_CAINFO, authorities.constData());
    }
    setOption(transfer, CURLOPT_SOCKOPTFUNCTION, &HttpClient::socketMade);
    setOption(transfer, CURLOPT_SOCKOPTDATA, this);
    setOption(transfer, CURLOPT_PREREQFUNCTION, &HttpClient::requestBegins);
    setOption(transfer, CURLOPT_PREREQDATA, this);
    setOption(transfer, CURLOPT_HEADERFUNCTION, &HttpClient::takeHeader);
    setOption(transfer, CURLOPT_HEADERDATA, this);
    setOption(transfer, CURLOPT_WRITEFUNCTION, &HttpClient::takeBody);
    setOption(transfer, CURLOPT_WRITEDATA, this);
}

int HttpClient::socketMade(void *, curl_socket_t, curlsocktype)
{
    qCDebug(trace) << "IP address found";
    qCDebug(trace) << "Attempting to connect to Host";
    return CURL_SOCKOPT_OK;
}

int HttpClient::requestBegins(void *client, char *, char *, int, int)
{
    auto *const self = static_cast<HttpClient *>(client);
    qCDebug(trace) << "Connected";
    qCDebug(trace) << "Making Request";
    self->m_answer = {};
    self->m_isHeadComplete = false;
    self->m_location.clear();
    CURL *const transfer = self->m_transfer.get();
    // Once encrypted, no redirect leads back.
    const QByteArray url = text(information<const char *>(transfer, CURLINFO_EFFECTIVE_URL));
    if (url.left(6).toLower() == "https:"
        && curl_easy_setopt(transfer, CURLOPT_REDIR_PROTOCOLS_STR, "https") != CURLE_OK) {
        return CURL_PREREQFUNC_ABORT;
    }
    return CURL_PREREQFUNC_OK;
}

size_t HttpClient::takeHeader(const char *data, size_t, size_t count, void *client)
{
    auto *const self = static_cast<HttpClient *>(client);
    const QByteArray line = QByteArray(data, static_cast<qsizetype>(count)).trimmed();
    if (line.startsWith("HTTP/")) {
        qCDebug(trace) << "Request sent";
        qCDebug(trace) << "Chatting with Host...";
        const qsizetype blank = line.indexOf(' ', line.indexOf(' ') + 1);
        self->m_answer.reason = blank < 0 ? QByteArray() : line.mid(blank + 1);
        self->m_isHeadComplete = false;
    } else if (line.isEmpty()) {
        self->m_isHeadComplete = true;
    } else if (!self->m_isHeadComplete && line.left(9).toLower() == "location:") {
        self->m_location = line.mid(9).trimmed();
    }
    return count;
}

size_t HttpClient::takeBody(const char *data, size_t, size_t count, void *client)
{
    QByteArray &body = static_cast<HttpClient *>(client)->m_answer.body;
    const auto length = static_cast<qsizetype>(count);
    if (body.size() + length > largestAnswer) {
        return CURL_WRITEFUNC_ERROR;
    }
    body.append(data, length);
    return count;
}

void HttpClient::complete(CURLcode result)
{
    if (result == CURLE_OK && !m_isHeadComplete) {
        result = CURLE_GOT_NOTHING; // libcurl takes a head that breaks off for a whole one
    }
    if (result == CURLE_OK) {
        m_answer.status = static_cast<int>(information<long>(m_transfer.get(), CURLINFO_RESPONSE_CODE));
        m_answer.contentType = text(information<const char *>(m_transfer.get(), CURLINFO_CONTENT_TYPE));
        qCDebug(trace) << "Response received";
        qCDebug(trace) << "ResponseCode" << m_answer.status << "ResponseInfo" << m_answer.reason;
    } else {
        m_failure = failure(result);
        m_answer = {};
    }
    finish();
}

void HttpClient::finish()
{
    m_isRunning = false;
    qCDebug(trace) << "Disconnecting";
    qCDebug(trace) << "Disconnected";
    Q_EMIT finished();
}

RuntimeError HttpClient::failure(CURLcode result) const
{
    switch (result) {
    case CURLE_WRITE_ERROR: // takeBody's
    case CURLE_FILESIZE_EXCEEDED:
        return serviceError(doing(), u"the answer is larger than 16 MiB"_s);
    case CURLE_TOO_MANY_REDIRECTS:
        return serviceError(doing(), u"the service leads from address to address without end"_s);
    case CURLE_UNSUPPORTED_PROTOCOL:
        if (m_location.left(5).toLower() == "http:") {
            return serviceError(doing(),
                u"the service leads to an address without encryption, "_s + QString::fromLatin1(m_location));
        }
        if (!m_location.isEmpty()) {
            return serviceError(doing(),
                u"the service leads to what is no web address, "_s + QString::fromLatin1(m_location));
        }
        [[fallthrough]];
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_OUT_OF_MEMORY: // what libcurl says of a head line without end
        return serviceError(doing(), u"the answer is not HTTP"_s);
    case CURLE_URL_MALFORMAT:
    case CURLE_LOGIN_DENIED:
    case CURLE_BAD_CONTENT_ENCODING:
        return serviceError(doing(), failureText(result));
    case CURLE_PARTIAL_FILE:
    case CURLE_GOT_NOTHING:
        return {ErrorName::CannotReachService,
            doing() + u": the connection ended before the answer was complete"_s};
    default:
        return {ErrorName::CannotReachService, doing() + u": "_s + failureText(result)};
    }
}

// The system's words for why there is no connection, else libcurl's.
QString HttpClient::failureText(CURLcode result) const
{
    const long systemCode = information<long>(m_transfer.get(), CURLINFO_OS_ERRNO);
    if (result == CURLE_COULDNT_CONNECT && systemCode != 0) {
        return qt_error_string(static_cast<int>(systemCode));
    }
    return QString::fromLocal8Bit(m_errorText[0] != '\0' ? m_errorText.data() : curl_easy_strerror(result));
}

} // namespace quillon
