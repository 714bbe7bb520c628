#include "live/tcplinesource.h"

#include <QNetworkProxy>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

/// What is read in one go: the rest waits at the sender.
constexpr qint64 mouthful = 65'536;
constexpr int secondsToConnect = 10;

} // namespace

TcpLineSource::TcpLineSource(HostPort address, QObject *parent)
    : ReceiverSource(parent)
    , m_address(std::move(address))
{
    m_socket.setProxy(QNetworkProxy::NoProxy);
    m_socket.setReadBufferSize(mouthful);
    m_patience.setSingleShot(true);
    connect(
        &m_patience, &QTimer::timeout, this, [this] { lost(u"no answer from %1"_s.arg(m_address.host)); });
    connect(&m_socket, &QTcpSocket::connected, this, [this] {
        m_patience.stop();
        listening();
        connectionStands();
    });
    connect(&m_socket, &QTcpSocket::readyRead, this, &TcpLineSource::read);
    connect(&m_socket, &QTcpSocket::errorOccurred, this, [this] { lost(m_socket.errorString()); });
}

TcpLineSource::~TcpLineSource()
{
    m_socket.disconnect(this);
}

void TcpLineSource::attempt()
{
    m_lines.clear();
    m_patience.start(secondsToConnect * second());
    m_socket.connectToHost(m_address.host, m_address.port);
}

void TcpLineSource::hangUp()
{
    m_patience.stop();
    const QSignalBlocker quiet(m_socket);
    m_socket.abort();
}

void TcpLineSource::send(QByteArrayView bytes)
{
    m_socket.write(bytes.data(), bytes.size());
}

void TcpLineSource::read()
{
    const QByteArray bytes = m_socket.read(mouthful);
    m_lines.feed(bytes, [this](QByteArrayView line) {
        // An earlier line may have ended it.
        if (state() == ReceiverState::Listening) {
            lineCame(line);
        }
    });
    linesRead();
}

} // namespace quillon
