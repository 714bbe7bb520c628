#pragma once

#include <QByteArray>

#include <arpa/inet.h>
#include <atomic>
#include <functional>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace quillon::test {

/// What a flood consists of.
struct Flood
{
    QByteArray first; ///< sent to whoever connects
    QByteArray chunk; ///< then this, so often
    int chunks = 0;
    QByteArray last; ///< and this at the end
};

[[nodiscard]] inline sockaddr_in loopback(quint16 port)
{
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

/// A server on loopback that floods whoever connects, as fast as it can, in a thread of its own. So what it
/// holds in memory never changes.
class Flooder
{
public:
    /// What is to be sent before all else, made from what the client has asked, up to an empty line.
    using Welcome = std::function<QByteArray(const QByteArray &request)>;

    explicit Flooder(Flood flood, Welcome welcome = {})
        : m_flood(std::move(flood))
        , m_welcome(std::move(welcome))
        , m_server(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address = loopback(0);
        socklen_t size = sizeof address;
        auto *const plain = reinterpret_cast<sockaddr *>(&address);
        if (m_server < 0 || ::bind(m_server, plain, size) != 0 || ::listen(m_server, 1) != 0
            || ::getsockname(m_server, plain, &size) != 0) {
            qFatal("no port on loopback");
        }
        m_port = ntohs(address.sin_port);
        m_thread = std::thread([this] { run(); });
    }
    Flooder(const Flooder &) = delete;
    Flooder &operator=(const Flooder &) = delete;
    ~Flooder()
    {
        m_stop = true;
        m_thread.join();
        ::close(m_server);
    }

    [[nodiscard]] quint16 port() const { return m_port; }
    /// True when a whole flood is on its way.
    [[nodiscard]] bool isSent() const { return m_sent; }

private:
    void run()
    {
        while (!m_stop) {
            if (!isReady(m_server, POLLIN)) {
                continue;
            }
            const int client = ::accept4(m_server, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
            if (client >= 0) {
                m_sent = flood(client) || m_sent;
                while (!m_stop && isThere(client)) { }
                ::close(client);
            }
        }
    }
    [[nodiscard]] static bool isReady(int socket, short events)
    {
        pollfd one {socket, events, 0};
        return ::poll(&one, 1, 20) > 0;
    }
    /// Waits a little; false when the client is gone.
    [[nodiscard]] static bool isThere(int client)
    {
        char rest[4096];
        return !isReady(client, POLLIN) || ::recv(client, rest, sizeof rest, 0) > 0;
    }
    [[nodiscard]] bool flood(int client)
    {
        QByteArray request;
        while (m_welcome && !request.endsWith("\r\n\r\n")) {
            char byte = 0;
            if (m_stop || (isReady(client, POLLIN) && ::recv(client, &byte, 1, 0) != 1)) {
                return false;
            }
            if (byte != 0) {
                request += byte;
            }
        }
        bool sent =
            send(client, m_welcome ? m_welcome(request) : QByteArray()) && send(client, m_flood.first);
        for (int i = 0; sent && i < m_flood.chunks; ++i) {
            sent = send(client, m_flood.chunk);
        }
        return sent && send(client, m_flood.last);
    }
    [[nodiscard]] bool send(int client, QByteArrayView bytes)
    {
        while (!bytes.isEmpty() && !m_stop) {
            if (!isReady(client, POLLOUT)) {
                continue;
            }
            const ssize_t sent =
                ::send(client, bytes.data(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
            if (sent <= 0) {
                return false;
            }
            bytes = bytes.sliced(sent);
        }
        return !m_stop;
    }

    Flood m_flood;
    Welcome m_welcome;
    int m_server;
    quint16 m_port = 0;
    std::atomic_bool m_stop = false;
    std::atomic_bool m_sent = false;
    std::thread m_thread;
};

} // namespace quillon::test
