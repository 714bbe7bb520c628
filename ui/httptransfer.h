#pragma once

#include "fmlist/httpanswer.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <exception>
#include <memory>
#include <optional>

class QSslSocket;

namespace quillon {

/// A request to an http or https server.
struct HttpRequest
{
    QByteArray method = "GET";
    QByteArray url; ///< goes out byte for byte
    QByteArray body;
    QByteArray headerBlock; ///< lines with CR LF between them; goes out as it is
};

/// How far a transfer is. `stateText` names them.
enum class TransferState {
    ResolvingHost,
    HostResolved,
    Connecting,
    Connected,
    Requesting,
    RequestSent,
    ReceivingResponse,
    ResponseReceived,
    Disconnecting,
    Disconnected,
};

/// The name of a state in a trace, " Looking up IP address of host computer" with its leading blank.
[[nodiscard]] QString stateText(TransferState state);

/// One request and its answer, over a connection of its own and without a time limit. Redirects are followed,
/// at most ten, never from https to http; a POST stays one, but for "303 See Other".
///
/// QNetworkAccessManager cannot do this: it takes addresses as QUrl, which turns the "%5F" of an encoded name
/// into "_" and "%9" into "%259" before they are sent.
class HttpTransfer : public QObject
{
    Q_OBJECT

public:
    explicit HttpTransfer(HttpRequest request);
    ~HttpTransfer() override;

    /// Begins. Throws when the address is none.
    void start();
    /// Ends the transfer without an answer.
    void abort();

    [[nodiscard]] bool isFinished() const { return m_isFinished; }
    [[nodiscard]] bool isAborted() const { return m_isAborted; }
    /// The answer of a transfer that is finished and not aborted. Throws what it failed with: "Cannot reach
    /// the service" or "The service answered with an error", with the address.
    [[nodiscard]] const HttpAnswer &answer() const;
    /// "Opening " and the address.
    [[nodiscard]] QString doing() const;

Q_SIGNALS:
    void stateChanged(quillon::TransferState state);
    /// It is finished, in whatever way. Told once.
    void finished();

private:
    void open();
    void send();
    void receive();
    void end();
    void fail();
    void complete();
    void follow(const QByteArray &location);
    void finish();
    void closeSocket();
    template<typename Work>
    void attempt(Work &&work);

    HttpRequest m_request;
    std::unique_ptr<QSslSocket> m_socket;
    std::optional<HttpAnswerReader> m_reader;
    std::exception_ptr m_failure;
    int m_redirects = 0;
    bool m_isFinished = false;
    bool m_isAborted = false;
};

} // namespace quillon
