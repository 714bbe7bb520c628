#pragma once

#include <QByteArrayList>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <functional>

namespace quillon::test {

/// A server of lines on loopback. It keeps what it was sent, and answers what `answers` says.
class LoopbackServer : public QObject
{
public:
    using Answers = std::function<QByteArray(const QByteArray &line)>;

    /// `greeting` is sent to whoever connects.
    explicit LoopbackServer(QByteArray greeting = {}, Answers answers = {})
        : m_greeting(std::move(greeting))
        , m_answers(std::move(answers))
    {
        connect(&m_server, &QTcpServer::newConnection, this, &LoopbackServer::welcome);
        listen(0);
    }

    void listen(quint16 port)
    {
        if (!m_server.listen(QHostAddress::LocalHost, port)) {
            qFatal("no port on loopback");
        }
    }
    /// Ends the connection and listens no more; listen(port) brings it back.
    void vanish()
    {
        m_server.close();
        if (m_socket) {
            m_socket->abort();
        }
    }
    [[nodiscard]] quint16 port() const { return m_server.serverPort(); }
    [[nodiscard]] const QByteArrayList &lines() const { return m_lines; }
    [[nodiscard]] int connections() const { return m_connections; }
    [[nodiscard]] bool isConnected() const
    {
        return m_socket && m_socket->state() == QTcpSocket::ConnectedState;
    }
    void send(const QByteArray &bytes)
    {
        if (m_socket) {
            m_socket->write(bytes);
        }
    }

private:
    void welcome()
    {
        m_socket = m_server.nextPendingConnection();
        ++m_connections;
        m_socket->write(m_greeting);
        connect(m_socket, &QTcpSocket::readyRead, this, &LoopbackServer::read);
    }
    void read()
    {
        while (m_socket->canReadLine()) {
            m_lines += m_socket->readLine();
            if (m_answers) {
                m_socket->write(m_answers(m_lines.last()));
            }
        }
    }

    QTcpServer m_server;
    QByteArray m_greeting;
    Answers m_answers;
    QPointer<QTcpSocket> m_socket;
    QByteArrayList m_lines;
    int m_connections = 0;
};

} // namespace quillon::test
