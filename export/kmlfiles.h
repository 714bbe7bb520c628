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

/// A KML file of the web pages and the script beside it that holds the same (mapScript).
struct MapFiles
{
    QString kml;
    QString script;
};

/// Writes a document as both files, each only when its bytes change.
void writeMapFiles(const MapFiles &files, const QByteArray &document, FileCalls &calls = FileCalls::real());

/// writeMapFiles with the month's document, or removes the files when the month has none. Returns whether
/// they were written.
bool writeMonthlyKml(
    const MapFiles &files, const HeardKml &heard, DateTime month, FileCalls &calls = FileCalls::real());

} // namespace quillon
