#pragma once

#include "export/kml.h"
#include "platform/filecalls.h"

#include <QString>

namespace quillon {

// Each writer replaces its file whole and throws the run-time error of a failing write.

/// Writes transmitterKml to "tx.kml" in the application directory; the result is the path, to be opened.
QString writeTransmitterKml(const QString &applicationDir, const TransmitterList &transmitters,
    const CodePage &codePage, FileCalls &calls = FileCalls::real());

/// Writes logbookKml to "quillon.kml" in the application directory; the result is the path, to be opened.
QString writeLogbookKml(const QString &applicationDir, const Logbook &log,
    const TransmitterList &transmitters, const CodePage &codePage, FileCalls &calls = FileCalls::real());

/// Writes the month's document to `path`, or removes the file there when the month has none. Returns whether
/// it was written.
bool writeMonthlyKml(
    const QString &path, const HeardKml &heard, DateTime month, FileCalls &calls = FileCalls::real());

} // namespace quillon
