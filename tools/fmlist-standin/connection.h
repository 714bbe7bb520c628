#pragma once

#include "fmlist-standin/request.h"

#include <QByteArray>
#include <QObject>

class QTcpSocket;

namespace quillon::standin {

/// One connection: reads one request, tells it, and sends what it is given. Lives until the connection ends.
class Connection : public QObject
{
    Q_OBJECT

public:
    Connection(QTcpSocket *socket, QObject *parent);

    /// Sends the bytes and ends the connection after them.
    void answer(const QByteArray &bytes);

Q_SIGNALS:
    void requested(const quillon::standin::Request &request);

private:
    void read();

    QTcpSocket *m_socket;
    QByteArray m_bytes;
    bool m_isTold = false;
};

} // namespace quillon::standin
