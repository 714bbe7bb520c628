#pragma once

#include "core/logbook.h"

#include <QString>
#include <QStringList>

namespace quillon {

/// Which field of the log a search looks at, and how: the first three contain the text, the others equal it.
enum class LogSearch {
    PiCodeContains,
    RdsNameContains,
    TransmitterContains,
    FreqEquals,
    CountryEquals,
};

/// True when the entry matches; letters count with their case, an empty text is contained in every field.
[[nodiscard]] bool matches(const LogEntry &entry, LogSearch search, QStringView text);

/// An entry as a result line: PI Code, Date/Time, Prop, Freq, Transmitter, Country, RDS Name, Power, each
/// followed by a tab.
[[nodiscard]] QString resultLine(const LogEntry &entry);

/// The result lines of all entries that match, in log order, deleted entries included.
[[nodiscard]] QStringList searchLog(const Logbook &log, LogSearch search, QStringView text);

} // namespace quillon
