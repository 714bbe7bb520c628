#pragma once

#include "platform/datetime.h"

#include <QString>

#include <optional>

namespace quillon {

/// Said when the user has no OMID to draw a map for.
inline constexpr QStringView noOmidText = u"No OMID Set";

/// The web search for a station: the prefix, then PI, frequency, RDS name (with blanks for "_") and
/// transmitter, each trimmed, with a "+" between them and for every blank. Nothing else is encoded.
[[nodiscard]] QString webSearchUrl(const QString &prefix, const QString &pi, const QString &frequency,
    const QString &rdsName, const QString &transmitter);

/// FMList's map of all logs of that day.
[[nodiscard]] QString propagationMapUrl(const QString &fmlistUrl, DateTime today);

/// FMList's map of the user's logs of that day; nothing without an OMID.
[[nodiscard]] std::optional<QString> ownPropagationMapUrl(
    const QString &fmlistUrl, DateTime today, const QString &omid);

/// The template with the callsign for every "$CALLSIGN", the callsign without any "/P" and "/M".
[[nodiscard]] QString callsignUrl(const QString &urlTemplate, const QString &callsign);

} // namespace quillon
