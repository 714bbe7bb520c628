#pragma once

#include "core/logbook.h"

namespace quillon::test {

/// What `work` makes of an entry of the log, as a change.
template<typename Work>
[[nodiscard]] LogChange changeOf(const Logbook &log, qint32 number, const Work &work)
{
    LogEntry entry = log.entry(number);
    work(entry);
    return LogChange::between(number, log.entry(number), entry);
}

/// Changes an entry of the log.
template<typename Work>
void changeEntry(Logbook &log, qint32 number, const Work &work)
{
    log.apply(changeOf(log, number, work));
}

} // namespace quillon::test
