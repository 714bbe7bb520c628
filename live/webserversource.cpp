#include "live/webserversource.h"

#include "live/jsonevents.h"
#include "live/xdrdprotocol.h"

#include <QNetworkProxy>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int secondsToConnect = 10;

} // namespace

WebserverSource::WebserverSource(QUrl url, QObject *parent)
    : ReceiverSource(parent)
    , m_url(std::move(url))
{
    m_socket.setProxy(QNetworkProxy::NoProxy);
    m_socket.setMaxAllowedIncomingFrameSize(longestJson);
    m_socket.setMaxAllowedIncomingMessageSize(longestJson);
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, [this] { lost(u"no answer from %1"_s.arg(m_url.host())); });
    connect(&m_socket, &QWebSocket::connected, this, [this] {
        m_patience.stop();
        listening();
        somethingCame();
    });
    connect(&m_socket, &QWebSocket::textMessageReceived, this, [this](const QString &message) {
        somethingCame();
        tell(webserverEvents(message.toUtf8()));
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
}

void WebserverSource::tune(qint64 hertz)
{
    if (state() == ReceiverState::Listening) {
        m_socket.sendTextMessage(QString::fromLatin1(xdrdTune(hertz)).trimmed());
    }
}

} // namespace quillon
