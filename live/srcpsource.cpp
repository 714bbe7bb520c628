#include "live/srcpsource.h"

#include "live/srcp.h"

#include <QNetworkDatagram>
#include <QNetworkProxy>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int datagramsInOneGo = 256;
constexpr qint64 longestDatagram = 2'048;

} // namespace

SrcpSource::SrcpSource(HostPort address, QObject *parent)
    : ReceiverSource(parent)
    , m_address(std::move(address))
{
    m_socket.setProxy(QNetworkProxy::NoProxy);
    connect(&m_socket, &QUdpSocket::readyRead, this, &SrcpSource::read);
    m_rest.setSingleShot(true);
    connect(&m_rest, &QTimer::timeout, this, &SrcpSource::read);
}

void SrcpSource::attempt()
{
    const QHostAddress address(m_address.host == "localhost"_L1 ? u"127.0.0.1"_s : m_address.host);
    if (address.isNull()) {
        ended(u"%1 is no address of this computer; 127.0.0.1 is the usual one"_s.arg(m_address.host));
        return;
    }
    if (!m_socket.bind(address, m_address.port)) {
        lost(m_socket.errorString());
        return;
    }
    const QByteArray question = srcpAsk();
    m_socket.writeDatagram(question, m_tuner, m_tunerPort);
}

void SrcpSource::hangUp()
{
    m_rest.stop();
    m_socket.close();
}

void SrcpSource::read()
{
    for (int i = 0; i < datagramsInOneGo && m_socket.hasPendingDatagrams(); ++i) {
        const QNetworkDatagram datagram = m_socket.receiveDatagram(longestDatagram);
        const std::vector<ReceiverEvent> events = srcpEvents(datagram.data());
        if (events.empty()) {
            continue;
        }
        m_tuner = datagram.senderAddress();
        somethingCame();
        listening();
        tell(events);
    }
    if (m_socket.hasPendingDatagrams()) {
        // The window has its turn between.
        m_rest.start(0);
    }
}

void SrcpSource::tune(qint64 hertz)
{
    if (state() == ReceiverState::Listening) {
        m_socket.writeDatagram(srcpTune(hertz), m_tuner, m_tunerPort);
    }
}

} // namespace quillon
