#pragma once

#include "live/receiverevent.h"

#include <QByteArray>
#include <QByteArrayView>

#include <vector>

namespace quillon {

/// What a datagram of `key=value` pairs, joined by ";", tells of the station: frequency, level, PI code,
/// name, radiotext, extended country code, alternative frequencies. Keys count in any case. Names and texts
/// are hexadecimal bytes (a byte below 10h may have a blank for its first digit); a tuner whose name begins
/// with "TEF" sends them as text, with "_" for blanks. What is not understood is left out.
///
/// Frequency and PI code come first, whatever their place in the datagram: the others belong to them.
[[nodiscard]] std::vector<ReceiverEvent> srcpEvents(QByteArrayView datagram);

/// The datagram that asks for the frequency.
[[nodiscard]] QByteArray srcpAsk();
/// The datagram that tunes.
[[nodiscard]] QByteArray srcpTune(qint64 hertz);

} // namespace quillon
