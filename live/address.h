#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace quillon {

/// A host and a port.
struct HostPort
{
    QString host;
    quint16 port = 0;

    bool operator==(const HostPort &) const = default;
};

/// Reads "host:port", "host", ":port", "port" or "[::1]:port", blanks around allowed; what is missing is
/// taken from `usual`. Nothing for a port that is none, or a host with characters that no host has.
[[nodiscard]] std::optional<HostPort> readHostPort(QStringView text, const HostPort &usual);

/// The WebSocket address of a web receiver: "host:port", "http://host", "https://host/there" and the like
/// give "ws://host:port/text", "wss://host/there/text". Nothing for what is no such address.
[[nodiscard]] std::optional<QUrl> webserverUrl(QStringView text);

} // namespace quillon
