#pragma once

#include "live/heardtable.h"

#include <QHash>

namespace quillon {

/// Which stations were announced: one that goes on being heard, or comes and goes, is announced once.
class Announced
{
public:
    /// So long a station has to be away to be announced again, in milliseconds.
    static constexpr qint64 awayFor = HeardTable::goesOnFor;
    /// Those that were away longest are forgotten when there are more.
    static constexpr qsizetype most = 1'000;

    /// Notes that the station is heard at that moment (milliseconds since 1970): a frequency in steps of
    /// 10 kHz and a PI code. True when it is to be announced.
    bool isNew(qint64 step, quint16 pi, qint64 now);
    [[nodiscard]] qsizetype count() const { return m_heard.size(); }

private:
    QHash<quint64, qint64> m_heard; ///< when last
};

} // namespace quillon
