#include "fmlist-standin/connection.h"

#include <QTcpSocket>

namespace quillon::standin {

Connection::Connection(QTcpSocket *socket, QObject *parent)
    : QObject(parent)
    , m_socket(socket)
{
    socket->setParent(this);
    connect(socket, &QTcpSocket::readyRead, this, &Connection::read);
    connect(socket, &QTcpSocket::disconnected, this, &QObject::deleteLater);
}

void Connection::answer(const QByteArray &bytes)
{
    m_socket->write(bytes);
    m_socket->disconnectFromHost();
}

void Connection::read()
{
    m_bytes += m_socket->readAll();
    if (m_isTold || m_bytes.isEmpty()) {
        return;
    }
    const bool isHttp = m_bytes[0] >= 'A' && m_bytes[0] <= 'Z';
    if (!isHttp) {
        m_isTold = true;
        answer("HTTP/1.1 400 Bad Request\r\nConnection: close\r\n\r\n");
    } else if (const auto request = takeRequest(m_bytes)) {
        m_isTold = true;
        Q_EMIT requested(*request);
    }
}

} // namespace quillon::standin
