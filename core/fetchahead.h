#pragma once

#include "core/logbook.h"
#include "core/logfields.h"

namespace quillon {

/// For a walk over the whole log that has come to the entry of this number: asks the memory for these texts
/// of an entry further on. They lie scattered, and the walk would wait for nearly every one.
template<typename... Fields>
void fetchAhead(const Logbook &log, qint32 number, Fields... fields)
{
    constexpr qint32 ahead = 12;
    if (number + ahead < log.count()) {
        const LogEntry &entry = *(log.begin() + number + ahead);
        (__builtin_prefetch((entry.*fields).constData()), ...);
    }
}

/// The same for all texts of an entry.
inline void fetchAllAhead(const Logbook &log, qint32 number)
{
    for (const LogColumn &field : logFields()) {
        if (field.text) {
            fetchAhead(log, number, field.text);
        }
    }
}

} // namespace quillon
