#pragma once

#include "geo/leg.h"
#include "stations/heardstations.h"
#include "stations/stationlist.h"

#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

namespace quillon {

/// A reception whose station is looked for.
struct HeardSignal
{
    int kilohertz = 0;
    std::optional<quint16> pi;
    QString name; ///< as heard, may have gaps
    bool esLikely = false; ///< its mode is Es, or that of the others of its hour
    std::optional<GeoPosition> home;
};

/// The signal of texts as the entry form holds them; nothing without a frequency, and without a PI code and a
/// name.
[[nodiscard]] std::optional<HeardSignal> heardSignal(
    QStringView frequency, QStringView piCode, const QString &rdsName);

/// The likeliest distance by Es, in km.
inline constexpr double likelyEsDistance = 1500;

/// A station that it may have been.
struct Candidate
{
    ListedStation station;
    bool hasPlace = true;
    std::optional<Leg> leg; ///< when home and its place are known
    bool regional = false; ///< it fits by a regional variant of the PI code alone
    int timesHeard = 0; ///< receptions of it in the log
    double share = 0; ///< of the rank of all candidates, 0 to 1
    QString why; ///< "PI and name", "PI, other region" ...
};

/// The stations of the list and of the log that fit frequency and PI code, or the name alone when there is no
/// PI code: the exact code before its regional variants, in each the likeliest first. A station in both
/// stands once.
///
/// Likely is: its name agrees letter by letter; its signal is strong here, by power, distance and the
/// horizon; an Es distance while Es is likely. Those whose weight is over a tenth of the best one's are all
/// there, and the others as long as there are fewer than `most`.
[[nodiscard]] std::vector<Candidate> candidates(
    const HeardSignal &signal, const StationList &list, const HeardStations &heard, std::size_t most = 20);

} // namespace quillon
