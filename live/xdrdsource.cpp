#include "live/xdrdsource.h"

namespace quillon {

using namespace Qt::StringLiterals;

XdrdSource::XdrdSource(HostPort address, QString password, QObject *parent)
    : TcpLineSource(std::move(address), parent)
    , m_password(std::move(password))
    , m_session(m_password)
{
}

void XdrdSource::connectionStands()
{
    m_session = XdrdSession(m_password);
    somethingCame();
}

void XdrdSource::lineCame(QByteArrayView line)
{
    somethingCame();
    const XdrdSession::Reply reply = m_session.take(line);
    if (!reply.send.isEmpty()) {
        send(reply.send);
    }
    tell(reply.events);
    if (!reply.refused.isEmpty()) {
        ended(reply.refused);
    }
}

void XdrdSource::tune(qint64 hertz)
{
    if (canTune() && state() == ReceiverState::Listening) {
        send(xdrdTune(hertz));
    }
}

} // namespace quillon
