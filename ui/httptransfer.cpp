#include "ui/httptransfer.h"

#include "fmlist/webaddress.h"
#include "platform/runtimeerror.h"

#include <QSslSocket>

#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostRedirects = 10;

bool isRedirect(int status)
{
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

QByteArray requestBytes(const HttpRequest &request, const WebAddress &address)
{
    QByteArray bytes = request.method + ' ' + address.target + " HTTP/1.1\r\nHost: " + address.authority
        + "\r\nConnection: close\r\n";
    if (!request.headerBlock.isEmpty()) {
        bytes += request.headerBlock + "\r\n";
    }
    if (request.method != "GET") {
        bytes += "Content-Length: " + QByteArray::number(request.body.size()) + "\r\n";
    }
    return bytes + "\r\n" + request.body;
}

} // namespace

QString stateText(TransferState state)
{
    switch (state) {
    case TransferState::ResolvingHost:
        return u" Looking up IP address of host computer"_s;
    case TransferState::HostResolved:
        return u"IP address found"_s;
    case TransferState::Connecting:
        return u"Attempting to connect to Host"_s;
    case TransferState::Connected:
        return u"Connected"_s;
    case TransferState::Requesting:
        return u"Making Request"_s;
    case TransferState::RequestSent:
        return u"Request sent"_s;
    case TransferState::ReceivingResponse:
        return u"Chatting with Host..."_s;
    case TransferState::ResponseReceived:
        return u"Response received"_s;
    case TransferState::Disconnecting:
        return u"Disconnecting"_s;
    case TransferState::Disconnected:
        return u"Disconnected"_s;
    }
    return {};
}

HttpTransfer::HttpTransfer(HttpRequest request)
    : m_request(std::move(request))
{
}

HttpTransfer::~HttpTransfer()
{
    closeSocket();
}

void HttpTransfer::start()
{
    open();
}

void HttpTransfer::abort()
{
    if (!m_isFinished) {
        m_isAborted = true;
        finish();
    }
}

const HttpAnswer &HttpTransfer::answer() const
{
    if (m_failure) {
        std::rethrow_exception(m_failure);
    }
    return m_reader->answer();
}

QString HttpTransfer::doing() const
{
    return u"Opening "_s + QString::fromLatin1(m_request.url);
}

void HttpTransfer::open()
{
    const WebAddress address = webAddress(m_request.url);
    if (m_socket) {
        closeSocket();
        m_socket.release()->deleteLater(); // it is telling the answer that led here
    }
    m_reader.emplace(doing());
    m_socket = std::make_unique<QSslSocket>();
    // Lets the system's proxy settings for this scheme apply.
    m_socket->setProtocolTag(address.isSecure ? u"https"_s : u"http"_s);
    connect(m_socket.get(), &QSslSocket::hostFound, this, [this] {
        Q_EMIT stateChanged(TransferState::HostResolved);
        Q_EMIT stateChanged(TransferState::Connecting);
    });
    connect(m_socket.get(), &QSslSocket::readyRead, this, &HttpTransfer::receive);
    connect(m_socket.get(), &QSslSocket::disconnected, this, &HttpTransfer::end);
    connect(m_socket.get(), &QSslSocket::errorOccurred, this, &HttpTransfer::fail);
    Q_EMIT stateChanged(TransferState::ResolvingHost);
    if (address.isSecure) {
        connect(m_socket.get(), &QSslSocket::encrypted, this, &HttpTransfer::send);
        m_socket->connectToHostEncrypted(address.host, address.port);
    } else {
        connect(m_socket.get(), &QSslSocket::connected, this, &HttpTransfer::send);
        m_socket->connectToHost(address.host, address.port);
    }
}

void HttpTransfer::send()
{
    Q_EMIT stateChanged(TransferState::Connected);
    Q_EMIT stateChanged(TransferState::Requesting);
    m_socket->write(requestBytes(m_request, webAddress(m_request.url)));
    Q_EMIT stateChanged(TransferState::RequestSent);
}

void HttpTransfer::receive()
{
    attempt([this] {
        Q_EMIT stateChanged(TransferState::ReceivingResponse);
        m_reader->feed(m_socket->readAll());
        if (m_reader->isComplete()) {
            complete();
        }
    });
}

// The server has ended the connection.
void HttpTransfer::end()
{
    attempt([this] {
        m_reader->feed(m_socket->readAll());
        if (!m_reader->isComplete()) {
            m_reader->end();
        }
        complete();
    });
}

void HttpTransfer::fail()
{
    if (m_socket->error() == QAbstractSocket::RemoteHostClosedError
        && (m_socket->mode() == QSslSocket::UnencryptedMode || m_socket->isEncrypted())) {
        return; // an end like any other: `disconnected` follows
    }
    attempt([this] {
        throw RuntimeError(ErrorName::CannotReachService, doing() + u": "_s + m_socket->errorString());
    });
}

void HttpTransfer::complete()
{
    Q_EMIT stateChanged(TransferState::ResponseReceived);
    const HttpAnswer &answer = m_reader->answer();
    const QByteArray location = answer.header("location");
    if (isRedirect(answer.status) && !location.isEmpty()) {
        follow(location);
        return;
    }
    finish();
}

void HttpTransfer::follow(const QByteArray &location)
{
    const bool wasSecure = webAddress(m_request.url).isSecure;
    const QByteArray target = redirected(m_request.url, location);
    if (wasSecure && !webAddress(target).isSecure) {
        throw RuntimeError(ErrorName::ServiceError,
            doing() + u": the service leads to an address without encryption, "_s
                + QString::fromLatin1(target));
    }
    if (++m_redirects > mostRedirects) {
        throw RuntimeError(
            ErrorName::ServiceError, doing() + u": the service leads from address to address without end"_s);
    }
    if (m_reader->answer().status == 303) {
        m_request.method = "GET";
        m_request.body.clear();
        m_request.headerBlock.clear();
    }
    m_request.url = target;
    open();
}

void HttpTransfer::finish()
{
    if (m_isFinished) {
        return;
    }
    m_isFinished = true;
    Q_EMIT stateChanged(TransferState::Disconnecting);
    closeSocket();
    Q_EMIT stateChanged(TransferState::Disconnected);
    Q_EMIT finished();
}

void HttpTransfer::closeSocket()
{
    if (m_socket) {
        m_socket->disconnect(this);
        m_socket->abort();
    }
}

// Nothing may be thrown through the event loop: a failure is kept for `answer`.
template<typename Work>
void HttpTransfer::attempt(Work &&work)
{
    if (m_isFinished) {
        return;
    }
    try {
        std::forward<Work>(work)();
    } catch (const RuntimeError &) {
        m_failure = std::current_exception();
        finish();
    }
}

} // namespace quillon
