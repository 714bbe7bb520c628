#pragma once

#include "live/address.h"
#include "live/receiversource.h"

#include <QHostAddress>
#include <QUdpSocket>

namespace quillon {

/// Datagrams of XDR-GTK and of TEF6686 tuners ("SRCP").
class SrcpSource : public ReceiverSource
{
    Q_OBJECT

public:
    /// The address to listen on; the tuner is answered on `tunerPort` of where its datagrams come from.
    explicit SrcpSource(HostPort address, QObject *parent = nullptr);

    static constexpr quint16 tunerPort = 9031;

    [[nodiscard]] bool canTune() const override { return true; }
    void tune(qint64 hertz) override;
    /// Another port of the tuner, for a tuner that is not the usual one.
    void setTunerPort(quint16 port) { m_tunerPort = port; }

protected:
    void attempt() override;
    void hangUp() override;

private:
    void read();

    HostPort m_address;
    QUdpSocket m_socket;
    QTimer m_rest; ///< for what one go has left
    QHostAddress m_tuner = QHostAddress(QHostAddress::LocalHost);
    quint16 m_tunerPort = tunerPort;
};

} // namespace quillon
