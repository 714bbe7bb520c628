#pragma once

#include "core/logbook.h"
#include "platform/regional.h"

#include <QByteArray>
#include <QString>

namespace quillon::bench {

/// The entries of a log of full size, and the sites of a full transmitter list.
inline constexpr int fullLogEntries = 32'498;

/// English month names, windows-1252 and the decimal point.
[[nodiscard]] Regional regional();

/// A logbook file of full size in the current layout: some hundred stations heard again and again over twenty
/// years, with a note now and then. The same bytes every time.
[[nodiscard]] const QByteArray &fullLogbookFile();

/// The log of fullLogbookFile().
[[nodiscard]] Logbook fullLogbook();

/// Reads the file of a log that may be full: the last entry of a full one reports that it is.
void readFullLogbook(Logbook &log, QByteArrayView file);

/// A directory of the run's own, gone at its end.
[[nodiscard]] const QString &directory();

/// Megabytes of memory that this process has in use.
[[nodiscard]] double usedMegabytes();

} // namespace quillon::bench
