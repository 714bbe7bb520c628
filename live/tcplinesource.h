#pragma once

#include "live/address.h"
#include "live/linesplitter.h"
#include "live/receiversource.h"

#include <QTcpSocket>

namespace quillon {

/// A source that sends lines over TCP.
class TcpLineSource : public ReceiverSource
{
    Q_OBJECT

public:
    TcpLineSource(HostPort address, QObject *parent);
    ~TcpLineSource() override;

protected:
    /// The connection stands; listening() is said already.
    virtual void connectionStands() { }
    virtual void lineCame(QByteArrayView line) = 0;
    /// All lines that had come together were given to lineCame().
    virtual void linesRead() { }
    void send(QByteArrayView bytes);

    void attempt() override;
    void hangUp() override;

private:
    void read();

    HostPort m_address;
    QTcpSocket m_socket;
    QTimer m_patience;
    LineSplitter m_lines;
};

} // namespace quillon
