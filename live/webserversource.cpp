#include "live/webserversource.h"

#include "live/jsonevents.h"
#include "live/xdrdprotocol.h"

#include <QNetworkProxy>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int secondsToConnect = 10;

/// The address beside "/text" that tells where the receiver is.
QUrl homeUrl(QUrl url)
{
    url.setScheme(url.scheme() == "wss"_L1 ? u"https"_s : u"http"_s);
    QString path = url.path();
    path.chop(QStringView(u"text").size());
    url.setPath(path + "static_data"_L1);
    return url;
}

} // namespace

WebserverSource::WebserverSource(QUrl url, QObject *parent)
    : ReceiverSource(parent)
    , m_url(std::move(url))
{
    m_socket.setProxy(QNetworkProxy::NoProxy);
    m_requests.setProxy(QNetworkProxy::NoProxy);
    m_socket.setMaxAllowedIncomingFrameSize(longestJson);
    m_socket.setMaxAllowedIncomingMessageSize(longestJson);
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, [this] { lost(u"no answer from %1"_s.arg(m_url.host())); });
    connect(&m_socket, &QWebSocket::connected, this, [this] {
        m_patience.stop();
        listening();
        somethingCame();
        askHome();
    });
    connect(&m_socket, &QWebSocket::textMessageReceived, this, [this](const QString &message) {
        somethingCame();
        tell(webserverEvents(message.toUtf8(), m_home));
    });
    connect(&m_socket, &QWebSocket::stateChanged, this, [this](QAbstractSocket::SocketState state) {
        if (state == QAbstractSocket::UnconnectedState) {
            const QString reason = m_socket.errorString();
            lost(reason.isEmpty() ? u"the connection was closed"_s : reason);
        }
    });
}

WebserverSource::~WebserverSource()
{
    m_socket.disconnect(this);
    if (m_answer) {
        m_answer->disconnect(this);
    }
}

void WebserverSource::attempt()
{
    m_patience.start(secondsToConnect * second());
    m_socket.open(m_url);
    // A message counts only when it is there as a whole; only an open socket has a buffer to be bounded.
    m_socket.setReadBufferSize(2 * qint64 {longestJson});
}

void WebserverSource::hangUp()
{
    m_patience.stop();
    const QSignalBlocker quiet(m_socket);
    m_socket.abort();
    m_home.reset();
    if (m_answer) {
        m_answer->abort();
    }
}

// A server that does not tell it is listened to all the same.
void WebserverSource::askHome()
{
    QNetworkRequest request(homeUrl(m_url));
    request.setTransferTimeout(secondsToConnect * second());
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    QNetworkReply *const answer = m_requests.get(request);
    m_answer = answer;
    // What is longer is not read, and what is not read is not sent.
    answer->setReadBufferSize(longestJson);
    connect(answer, &QNetworkReply::readyRead, this, [answer] {
        if (answer->bytesAvailable() >= longestJson) {
            answer->abort();
        }
    });
    connect(answer, &QNetworkReply::finished, this, [this, answer] {
        if (answer->error() == QNetworkReply::NoError) {
            m_home = webserverHome(answer->readAll());
        }
        answer->deleteLater();
    });
}

void WebserverSource::tune(qint64 hertz)
{
    if (state() == ReceiverState::Listening) {
        m_socket.sendTextMessage(QString::fromLatin1(xdrdTune(hertz)).trimmed());
    }
}

} // namespace quillon
