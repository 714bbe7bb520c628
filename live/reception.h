#pragma once

#include "core/logbook.h"
#include "live/station.h"

#include <QString>

namespace quillon {

/// What goes into the log of a station.
struct HeardReception
{
    LogEntry entry;
    QString latitude; ///< of the transmitter, decimal degrees, or empty
    QString longitude;

    bool operator==(const HeardReception &) const = default;
};

/// The same station is not logged twice within so many minutes without a question.
inline constexpr int minutesBetweenDoubles = 60;

/// The name as the log writes it: without blanks at its end, "_" for the others.
[[nodiscard]] QString loggedPs(QStringView ps);

/// The reception of a station: frequency, PI code without a mark of doubt, name, the moment at which it was
/// first heard; Country "TBD", or what the source takes the station for, with site, power, position and UID,
/// when its PI code agrees. Notes: "auto" when `automatic`, then the radiotext when `withText`.
[[nodiscard]] HeardReception receptionOf(const Station &station, bool withText, bool automatic);

/// True when the log has an entry of this PI code on this frequency (to 10 kHz) at most `minutes` before or
/// after the moment. Deleted entries do not count.
[[nodiscard]] bool loggedWithin(
    const Logbook &log, qint64 hertz, quint16 pi, DateTime moment, int minutes = minutesBetweenDoubles);

} // namespace quillon
