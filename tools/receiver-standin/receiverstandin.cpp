#include "receiver-standin/receiverstandin.h"

#include "live/grouplines.h"
#include "live/xdrdprotocol.h"

#include <QTcpSocket>

#include <algorithm>
#include <cmath>

namespace quillon::rdssignal {

namespace {

const QByteArray salt = "QuillonStandIn16";
constexpr double secondsOfGroup = bitsOfGroup / bitRate;
constexpr qint64 longestLine = 256;

/// Two bits a block: 0 clean, 3 lost.
QByteArray groupLine(const RdsGroup &group)
{
    unsigned errors = 0;
    QByteArray line = "R";
    for (std::size_t i = 0; i < group.blocks.size(); ++i) {
        errors = (errors << 2U) | static_cast<unsigned>(group.states[i]);
        line += QByteArray::number(group.blocks[i], 16).rightJustified(4, '0').toUpper();
    }
    return line + QByteArray::number(errors, 16).rightJustified(2, '0').toUpper();
}

} // namespace

ReceiverStandIn::ReceiverStandIn(
    std::vector<SignalStation> stations, const ChannelSettings &channel, double speed, QObject *parent)
    : QObject(parent)
    , m_stations(std::move(stations))
    , m_channel(channel)
    , m_maker(m_stations.front())
{
    connect(&m_server, &QTcpServer::newConnection, this, &ReceiverStandIn::welcome);
    m_groups.setTimerType(Qt::PreciseTimer);
    m_groups.setInterval(std::max(1, static_cast<int>(std::lround(secondsOfGroup * 1000 / speed))));
    connect(&m_groups, &QTimer::timeout, this, &ReceiverStandIn::sendNext);
}

bool ReceiverStandIn::listen(quint16 port)
{
    return m_server.listen(QHostAddress::LocalHost, port);
}

void ReceiverStandIn::welcome()
{
    QTcpSocket *const socket = m_server.nextPendingConnection();
    m_clients.append({socket, false, false});
    socket->setReadBufferSize(longestLine);
    socket->write(salt + '\n');
    connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
    connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
        m_clients.removeIf([&](const Client &client) { return client.socket == socket; });
        socket->deleteLater();
        // Nobody listens: the walk begins anew with the next one.
        if (m_clients.isEmpty()) {
            m_groups.stop();
        }
    });
}

void ReceiverStandIn::read(QTcpSocket *socket)
{
    while (socket->canReadLine()) {
        const QByteArray line = socket->readLine(longestLine).trimmed();
        const auto client = std::ranges::find(m_clients, socket, &Client::socket);
        if (client == m_clients.end()) {
            return;
        }
        take(*client, line);
    }
    // What has no end within its length is no line of this dialogue.
    if (socket->bytesAvailable() >= longestLine) {
        socket->abort();
    }
}

void ReceiverStandIn::take(Client &client, const QByteArray &line)
{
    if (!client.isIn) {
        client.isIn = true;
        client.mayTune = line + '\n' != xdrdLogin(salt, {});
        client.socket->write(client.mayTune ? "o1,0\n" : "a1\no0,1\n");
        if (m_groups.isActive()) {
            client.socket->write(xdrdTune(m_hertz));
        } else {
            m_seconds = 0;
            turnTo(0);
            m_groups.start();
        }
    } else if (client.mayTune && line.startsWith('T')) {
        tune(line.sliced(1).toLongLong() * 1000);
    }
}

void ReceiverStandIn::say(const QByteArray &line)
{
    for (const Client &client : std::as_const(m_clients)) {
        if (client.isIn) {
            client.socket->write(line);
        }
    }
}

void ReceiverStandIn::turnTo(std::size_t station)
{
    m_station = station % m_stations.size();
    m_maker = GroupMaker(m_stations[m_station]);
    m_noise = false;
    m_hertz = m_stations[m_station].hertz;
    say(xdrdTune(m_hertz));
}

void ReceiverStandIn::tune(qint64 hertz)
{
    const auto found = std::ranges::find(m_stations, hertz, &SignalStation::hertz);
    turnTo(found == m_stations.end() ? m_station
                                     : static_cast<std::size_t>(std::distance(m_stations.begin(), found)));
    m_noise = found == m_stations.end();
    if (m_noise && hertz > 0) {
        m_hertz = hertz;
        say(xdrdTune(hertz));
    }
}

void ReceiverStandIn::sendNext()
{
    constexpr double weakest = 8;
    constexpr double strongest = 46;
    const RdsGroup group = m_maker.next();
    m_seconds += secondsOfGroup;
    const double amplitude = m_noise ? 0 : m_channel.amplitude(m_seconds);
    say("Ss" + QByteArray::number(weakest + (strongest - weakest) * amplitude, 'f', 1) + ",0,0\n");
    if (!m_noise) {
        say(groupLine(m_channel.received(group, m_seconds)) + '\n');
    }
    if (static_cast<double>(m_maker.elapsed()) >= m_stations[m_station].seconds * 1000) {
        turnTo(m_station + 1);
    }
}

} // namespace quillon::rdssignal
