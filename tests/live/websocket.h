#pragma once

#include <QByteArray>
#include <QCryptographicHash>
#include <QtEndian>

namespace quillon::test {

/// The answer of a server to the request for a WebSocket (RFC 6455).
[[nodiscard]] inline QByteArray webSocketWelcome(const QByteArray &request)
{
    constexpr QByteArrayView name = "Sec-WebSocket-Key: ";
    const qsizetype begin = request.toLower().indexOf(name.toByteArray().toLower()) + name.size();
    const QByteArray key = request.sliced(begin, request.indexOf("\r\n", begin) - begin).trimmed();
    const QByteArray salted = key + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11";
    const QByteArray accept = QCryptographicHash::hash(salted, QCryptographicHash::Sha1);
    return "HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
           "Sec-WebSocket-Accept: "
        + accept.toBase64() + "\r\n\r\n";
}

/// A frame of 126 to 65,535 bytes; `first` is its first byte.
[[nodiscard]] inline QByteArray frame(char first, const QByteArray &payload)
{
    QByteArray size(2, 0);
    qToBigEndian(static_cast<quint16>(payload.size()), size.data());
    return first + QByteArray(1, 126) + size + payload;
}

} // namespace quillon::test
