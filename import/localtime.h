#pragma once

#include "platform/datetime.h"

#include <QTimeZone>

#include <optional>

namespace quillon {

/// Turns times of a time zone into UTC by the zone's rules, summer time included.
class LocalTime
{
public:
    explicit LocalTime(const QTimeZone &zone)
        : m_zone(zone)
    {
    }

    /// The moment in UTC. Of an hour that comes twice the first is meant; an hour that is left out counts on
    /// from before it.
    [[nodiscard]] DateTime utcOf(DateTime local);

private:
    [[nodiscard]] qint64 aheadAt(qint64 utc) const;

    QTimeZone m_zone;
    std::optional<qint64> m_day; ///< in which nothing changes
    qint64 m_ahead = 0; ///< seconds on that day
};

} // namespace quillon
