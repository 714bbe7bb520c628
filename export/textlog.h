#pragma once

#include "core/logrows.h"
#include "platform/filecalls.h"
#include "platform/regional.h"

#include <QByteArray>
#include <QString>

namespace quillon {

/// Which receptions the text table lists, and how.
struct TextLogRange
{
    DateTime from; ///< the first moment that is listed
    DateTime to; ///< the last moment that is listed
    bool inMiles = false; ///< true when the log holds miles; the table is in kilometres
    QString mapLink; ///< stands before the table; empty for none
};

/// The receptions of the range as a table of text, the last row first, with a heading wherever
/// the day or the propagation mode changes; lines ended by CR LF, in the code page. `listed` becomes their
/// number. Throws "Type mismatch"
/// for a row without a date-time.
[[nodiscard]] QByteArray textLog(
    const LogRows &rows, const TextLogRange &range, const Regional &regional, int *listed = nullptr);

/// A text table that was written.
struct TextLogFile
{
    QString path;
    int count = 0; ///< of receptions in it
};

/// Writes textLog whole to "quillon.txt" in the application directory; its path is to be opened. Throws what
/// textLog throws and the run-time error of a failing write.
TextLogFile writeTextLog(const QString &applicationDir, const LogRows &rows, const TextLogRange &range,
    const Regional &regional, FileCalls &calls = FileCalls::real());

} // namespace quillon
