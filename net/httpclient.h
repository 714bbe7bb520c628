#pragma once

#include "net/curlloop.h"
#include "net/httprequest.h"
#include "platform/runtimeerror.h"

#include <QByteArray>
#include <QObject>

#include <array>
#include <optional>

namespace quillon {

/// What a server answered to a request.
struct HttpAnswer
{
    int status = 0;
    QByteArray reason; ///< the words after the status
    QByteArray contentType;
    QByteArray body;
};

/// Requests to HTTP servers, one at a time, by libcurl: it sends addresses as they stand.
/// (QNetworkAccessManager takes them as QUrl, which turns the "%5F" of an encoded name into "_" and "%9" into
/// "%259".) No time limit. A proxy of the environment is used, but not for this machine's own addresses.
/// SSL_CERT_FILE names the authorities to trust instead of the system's, as it does for most programs.
class HttpClient : public QObject
{
    Q_OBJECT

public:
    HttpClient();
    ~HttpClient() override;

    /// Begins a request; ends the one that is under way. Throws what requireValid throws.
    void start(HttpRequest request);
    /// Ends the request under way without an answer.
    void abort();

    [[nodiscard]] bool isFinished() const { return !m_isRunning; }
    [[nodiscard]] bool isAborted() const { return m_isAborted; }
    /// The answer to the request that is finished and not aborted, given away. Throws what the request failed
    /// with: "Cannot reach the service" or "The service answered with an error", with the address.
    [[nodiscard]] HttpAnswer takeAnswer();
    [[nodiscard]] QString doing() const { return m_request.doing(); }

Q_SIGNALS:
    /// The request is finished, in whatever way. Told once.
    void finished();

private:
    static int socketMade(void *client, curl_socket_t socket, curlsocktype purpose);
    static int requestBegins(void *client, char *, char *, int, int);
    static size_t takeHeader(const char *data, size_t one, size_t count, void *client);
    static size_t takeBody(const char *data, size_t one, size_t count, void *client);

    void setCallbacks();
    void complete(CURLcode result);
    void finish();
    [[nodiscard]] RuntimeError failure(CURLcode result) const;
    [[nodiscard]] QString failureText(CURLcode result) const;

    CurlLoop m_loop;
    CurlTransfer m_transfer;
    HttpRequest m_request;
    CurlLines m_headerLines;
    HttpAnswer m_answer;
    QByteArray m_location; ///< where the last answer leads to
    std::optional<RuntimeError> m_failure;
    std::array<char, CURL_ERROR_SIZE> m_errorText {};
    bool m_isHeadComplete = false;
    bool m_isRunning = false;
    bool m_isAborted = false;
};

} // namespace quillon
