#include "import/localtime.h"

#include <QDateTime>

namespace quillon {

qint64 LocalTime::aheadAt(qint64 utc) const
{
    return m_zone.offsetFromUtc(QDateTime::fromSecsSinceEpoch(utc, Qt::UTC));
}

DateTime LocalTime::utcOf(DateTime local)
{
    const qint64 day = (local.seconds - (local.seconds % secondsPerDay + secondsPerDay) % secondsPerDay);
    if (m_day == day) {
        return {local.seconds - m_ahead};
    }
    // No zone is a day ahead or behind, so these lie before and after any change near the moment.
    const qint64 before = aheadAt(day - secondsPerDay);
    const qint64 after = aheadAt(day + 2 * secondsPerDay);
    if (before == after && aheadAt(day) == before && aheadAt(day + secondsPerDay) == before) {
        m_day = day;
        m_ahead = before;
        return {local.seconds - before};
    }
    const qint64 early = local.seconds - aheadAt(local.seconds - secondsPerDay);
    const qint64 late = local.seconds - aheadAt(local.seconds + secondsPerDay);
    const auto isRight = [&](qint64 utc) { return utc + aheadAt(utc) == local.seconds; };
    if (isRight(early)) {
        return {early};
    }
    return {isRight(late) ? late : early};
}

} // namespace quillon
