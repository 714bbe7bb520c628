#pragma once

#include "core/logbook.h"

#include <QString>
#include <QStringList>

namespace quillon {

/// At most so many texts are suggested.
inline constexpr qsizetype mostSuggestions = 1000;

/// The RDS names that the log has with a PI code, each once, the latest first; none without a code.
[[nodiscard]] QStringList rdsNamesOf(const Logbook &log, const QString &piCode);

/// The transmitters that the log has in a country, each once, the latest first; none without a country.
[[nodiscard]] QStringList sitesOf(const Logbook &log, const QString &country);

} // namespace quillon
