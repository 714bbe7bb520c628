#pragma once

#include "core/config.h"
#include "core/logbook.h"
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

/// Which receptions of a change are given a distance.
enum class Measured {
    All,
    Missing, ///< those that have none
};

/// Lets a change of the log give the receptions that it adds or changes the distances that measuredDistance
/// has for them; `sites` then give them to their sites, too. Where the change gives a field Dist it stays.
void measureChange(LogChange &change, const Logbook &log, Measured which, const TransmitterList &list,
    const Settings &settings, SiteChanges &sites);

} // namespace quillon
