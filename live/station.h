#pragma once

#include "live/knownstations.h"
#include "live/receiverevent.h"

#include <QString>

#include <optional>

namespace quillon {

/// A station as it was heard. Moments are milliseconds since 1970 in UTC.
struct Station
{
    qint64 hertz = 0; ///< 0: not known
    quint16 pi = 0;
    bool certain = false;
    QString ps; ///< eight characters or fewer, as received; empty before it is whole
    QString text; ///< radiotext
    std::optional<quint8> ecc;
    qint64 first = 0;
    qint64 last = 0;
    qint64 certainSince = 0; ///< when it became certain
    qint64 groups = 0; ///< 0 from a source that gives none
    std::optional<double> best; ///< strongest signal
    QStringView unit; ///< of the signal
    NewMarks marks;
    std::optional<StationGuess> guess; ///< for this PI code
};

/// The PI code as it is shown: with "?" while it is in doubt.
[[nodiscard]] QString shownPi(const Station &station);

} // namespace quillon
