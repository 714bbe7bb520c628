#pragma once

#include "fmlist-standin/behaviour.h"
#include "fmlist-standin/request.h"
#include "fmlist-standin/stations.h"

#include <QList>
#include <QString>
#include <QTcpServer>

#include <vector>

namespace quillon::standin {

class Connection;

/// A stand-in for the FMList service, on loopback and nowhere else. A GET of /control?mode=... sets how it
/// answers from then on, /control?requests shows what it got; neither is recorded.
class StandIn : public QObject
{
    Q_OBJECT

public:
    explicit StandIn(const QByteArray &stationList, QObject *parent = nullptr);

    /// Listens on a port of loopback, 0 for a free one. False when it cannot.
    [[nodiscard]] bool listen(quint16 port = 0);
    /// "http://127.0.0.1:PORT".
    [[nodiscard]] QString url() const;
    [[nodiscard]] quint16 port() const;

    void behave(const Behaviour &behaviour) { m_behaviour = behaviour; }
    /// Every request since the start or the last `forget`, in the order in which they came in.
    [[nodiscard]] const QList<Request> &requests() const { return m_requests; }
    void forget() { m_requests.clear(); }

private:
    void accept();
    void serve(Connection *connection, const Request &request);
    [[nodiscard]] Answer control(const QByteArray &query);
    [[nodiscard]] QByteArray recorded() const;

    QTcpServer m_server;
    std::vector<Station> m_stations;
    Behaviour m_behaviour;
    QList<Request> m_requests;
};

} // namespace quillon::standin
