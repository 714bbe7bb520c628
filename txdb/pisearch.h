#pragma once

#include "core/logbook.h"

#include <QString>
#include <QStringList>

namespace quillon {

/// Which field of the log a search looks at, and how: the first three contain the text, the others equal it.
/// Letters count with their case; an empty text is contained in every field.
enum class LogSearch {
    PiCodeContains,
    RdsNameContains,
    TransmitterContains,
    FreqEquals,
    CountryEquals,
};

/// A line for each entry that matches, in log order, deleted entries included: PI Code, Date/Time, Prop,
/// Freq, Transmitter, Country, RDS Name, Power, each followed by a tab.
[[nodiscard]] QStringList searchLog(const Logbook &log, LogSearch search, QStringView text);

} // namespace quillon
