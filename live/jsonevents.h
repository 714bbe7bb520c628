#pragma once

#include "geo/position.h"
#include "live/receiverevent.h"

#include <QByteArrayView>

#include <optional>
#include <vector>

namespace quillon {

/// Longer texts are not read.
inline constexpr qsizetype longestJson = 65'536;

/// What a message of FM-DX-Webserver's address `/text` tells: frequency, PI code (doubtful with a "?"), name,
/// radiotext, extended country code, alternative frequencies, strength, and the server's guess of the station
/// when that is of this PI code. Nothing for what is no JSON object.
///
/// `home` is the place of the server's receiver: a guess that names no position gets the one to which its
/// distance (km) and direction (degrees) lead, to 0.01 degrees.
[[nodiscard]] std::vector<ReceiverEvent> webserverEvents(
    QByteArrayView json, const std::optional<GeoPosition> &home = {});

/// The place of the receiver, as the server's address `/static_data` tells it.
[[nodiscard]] std::optional<GeoPosition> webserverHome(QByteArrayView json);

/// What a line of redsea's output tells: one group's PI code, and the name, radiotext, country code,
/// alternative frequencies and clock that it has put together. Nothing for what is no JSON object, and for
/// the streams of RDS2.
[[nodiscard]] std::vector<ReceiverEvent> redseaEvents(QByteArrayView json);

} // namespace quillon
