#pragma once

#include "core/config.h"
#include "txdb/transmitters.h"

#include <QString>

#include <optional>

namespace quillon {

/// The way from home to the place that two texts name, in the unit of the settings: "1234.5 km, 231° SW,
/// IM67XX". While home is not set the locator alone, which says so; empty for what is no place.
[[nodiscard]] QString siteLegText(
    const QString &latitude, const QString &longitude, const Settings &settings);

/// The place of a locator as two texts in decimal degrees.
struct LocatorMiddle
{
    QString latitude;
    QString longitude;
};

/// The middle of the subsquare that a text names, as the converter has it, with seven digits; nothing when it
/// is no locator.
[[nodiscard]] std::optional<LocatorMiddle> locatorMiddle(const QString &text);

/// The distance that a re-calculation writes for a reception of this site, once `changes` are made to the
/// list; `changes` then give it to the site, too. Nothing, and no change, while home is not set, and for a
/// site that has no place in the list.
[[nodiscard]] std::optional<QString> measuredDistance(const QString &name, const QString &country,
    const TransmitterList &list, const Settings &settings, SiteChanges &changes);

} // namespace quillon
