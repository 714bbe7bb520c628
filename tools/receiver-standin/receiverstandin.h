#pragma once

#include "rds-signal/channel.h"
#include "rds-signal/groupmaker.h"

#include <QList>
#include <QObject>
#include <QTcpServer>
#include <QTimer>

#include <vector>

class QTcpSocket;

namespace quillon::rdssignal {

/// A tuner on loopback that speaks as xdrd does and walks through a list of stations, again and again. It
/// takes guests and any password; whoever has one may tune it, and it walks on from there later.
class ReceiverStandIn : public QObject
{
    Q_OBJECT

public:
    /// `speed` times as fast as on the air. There has to be a station.
    ReceiverStandIn(
        std::vector<SignalStation> stations, const ChannelSettings &channel, double speed, QObject *parent);

    /// Listens on this port, 0 for a free one; false when it cannot.
    [[nodiscard]] bool listen(quint16 port);
    [[nodiscard]] quint16 port() const { return m_server.serverPort(); }

private:
    struct Client
    {
        QTcpSocket *socket = nullptr;
        bool isIn = false; ///< has logged in
        bool mayTune = false;
    };

    void welcome();
    void read(QTcpSocket *socket);
    void take(Client &client, const QByteArray &line);
    void say(const QByteArray &line);
    void turnTo(std::size_t station);
    void tune(qint64 hertz);
    void sendNext();

    std::vector<SignalStation> m_stations;
    Channel m_channel;
    QList<Client> m_clients;
    QTimer m_groups;
    QTcpServer m_server; ///< goes before those: its sockets still tell that they are closed
    std::size_t m_station = 0;
    qint64 m_hertz = 0;
    bool m_noise = false; ///< tuned to where no station is
    GroupMaker m_maker;
    double m_seconds = 0; ///< since the first station
};

} // namespace quillon::rdssignal
