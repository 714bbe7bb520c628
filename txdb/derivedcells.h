#pragma once

#include "core/config.h"
#include "core/logentry.h"
#include "geo/leg.h"
#include "geo/position.h"
#include "txdb/transmitters.h"

#include <QString>

#include <optional>

namespace quillon {

/// The home of the settings; nothing while it is not set or cannot be read.
[[nodiscard]] std::optional<GeoPosition> homePosition(const Settings &settings);

/// The place of the site of an entry; nothing for a site that the list does not know or has no place for.
[[nodiscard]] std::optional<GeoPosition> placeOf(const LogEntry &entry, const TransmitterList &sites);

// Cells that follow from a reception, the place of its site and home. Empty where one of them is missing.

/// The direction from home to the site in whole degrees, "0" to "359".
[[nodiscard]] QString azimuthCell(
    const LogEntry &entry, const TransmitterList &sites, const std::optional<GeoPosition> &home);

/// The Maidenhead locator of the site: "IM67XX".
[[nodiscard]] QString locatorCell(const LogEntry &entry, const TransmitterList &sites);

/// The leg from home to the reception's site; nothing where one of them has no place, and from home to home.
[[nodiscard]] std::optional<Leg> legOf(
    const LogEntry &entry, const TransmitterList &sites, const std::optional<GeoPosition> &home);

/// Its direction as azimuthCell shows it.
[[nodiscard]] int azimuthOf(const Leg &leg);

/// What mufCell shows, in MHz, for a leg of that length in km.
[[nodiscard]] std::optional<double> mufOf(const LogEntry &entry, double kilometres);

/// The highest frequency in MHz, one decimal place, that the cloud of an Es reception mirrors at its middle;
/// for 500 to 2,350 km alone, the ways that one hop explains.
[[nodiscard]] QString mufCell(
    const LogEntry &entry, const TransmitterList &sites, const std::optional<GeoPosition> &home);

} // namespace quillon
