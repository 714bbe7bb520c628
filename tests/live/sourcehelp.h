#pragma once

#include "live/grouplines.h"
#include "live/receiver.h"
#include "loopback.h"
#include "rds-signal/groupmaker.h"

#include <QUdpSocket>

namespace quillon::test {

inline const rdssignal::SignalStation jump {
    98'500'000, 0xD3C2, QStringLiteral("MDR JUMP"), QStringLiteral("Now: Sade"), {}, 10, 0xE0};

inline const rdssignal::SignalStation france {87'500'000, 0xF201, QStringLiteral("FRANCE"), {}, {}, 10, 0};

/// The groups of a station as lines.
[[nodiscard]] inline QByteArray groupLines(
    const rdssignal::SignalStation &station, int groups, const QByteArray &before, const QByteArray &after)
{
    rdssignal::GroupMaker maker(station);
    QByteArray lines;
    for (int i = 0; i < groups; ++i) {
        lines += before + groupText(maker.next()) + after;
    }
    return lines;
}

/// A port of loopback on which nobody takes datagrams now.
[[nodiscard]] inline quint16 freeDatagramPort()
{
    QUdpSocket probe;
    probe.bind(QHostAddress::LocalHost, 0);
    return probe.localPort();
}

[[nodiscard]] inline HostPort at(quint16 port)
{
    return {QStringLiteral("127.0.0.1"), port};
}

[[nodiscard]] inline bool hears(const Receiver &receiver, quint16 pi, const QString &ps)
{
    const auto &station = receiver.listening().station();
    return station && station->pi == pi && station->ps == ps && station->certain;
}

/// A Receiver on a source, in which a second lasts 20 ms.
template<typename Source, typename... Arguments>
Source *listen(Receiver &receiver, Arguments... arguments)
{
    auto source = std::make_unique<Source>(arguments...);
    Source *const made = source.get();
    made->setSecond(20);
    receiver.listenTo(std::move(source));
    return made;
}

} // namespace quillon::test
