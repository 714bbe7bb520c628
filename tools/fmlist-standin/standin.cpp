#include "fmlist-standin/standin.h"

#include "fmlist-standin/connection.h"
#include "fmlist-standin/service.h"

#include <QHostAddress>
#include <QTcpSocket>
#include <QTimer>

namespace quillon::standin {

using namespace Qt::StringLiterals;

StandIn::StandIn(const QByteArray &stationList, QObject *parent)
    : QObject(parent)
    , m_stations(readStations(stationList))
{
    connect(&m_server, &QTcpServer::newConnection, this, &StandIn::accept);
}

bool StandIn::listen(quint16 port)
{
    return m_server.listen(QHostAddress::LocalHost, port);
}

QString StandIn::url() const
{
    return u"http://127.0.0.1:%1"_s.arg(port());
}

quint16 StandIn::port() const
{
    return m_server.serverPort();
}

void StandIn::accept()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        auto *connection = new Connection(socket, this);
        connect(connection, &Connection::requested, this,
            [this, connection](const Request &request) { serve(connection, request); });
    }
}

void StandIn::serve(Connection *connection, const Request &request)
{
    if (request.path() == "/control") {
        connection->answer(wireBytes(control(request.query())));
        return;
    }
    m_requests += request;
    const Answer good = serviceAnswer(request, m_stations);
    const QByteArray bytes = m_behaviour.strikes() ? spoiled(good, m_behaviour) : wireBytes(good);
    if (!bytes.isEmpty()) {
        QTimer::singleShot(m_behaviour.delay, connection, [connection, bytes] { connection->answer(bytes); });
    }
}

Answer StandIn::control(const QByteArray &query)
{
    if (query == "requests") {
        return {.body = recorded()};
    }
    const auto behaviour = behaviourOf(query);
    if (!behaviour) {
        return {.status = "400 Bad Request", .body = "There is no such mode\n"};
    }
    m_behaviour = *behaviour;
    return {.body = "OK\n"};
}

QByteArray StandIn::recorded() const
{
    QByteArray all;
    for (const Request &request : m_requests) {
        all += request.line + "\r\n" + request.headers + "\r\n" + request.body + "\r\n";
    }
    return all;
}

} // namespace quillon::standin
