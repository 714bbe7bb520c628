#pragma once

#include "core/cellsource.h"
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
    bool inMiles = false; ///< true when the grid holds miles; the table is in kilometres
    QString mapLink; ///< stands before the table; empty for none
};

/// The receptions of the range as a table of text, the last row of the grid first, with a heading wherever
/// the day or the propagation mode changes; lines ended by CR LF, in the code page. Throws "Type mismatch"
/// for a row of the grid without a date-time.
[[nodiscard]] QByteArray textLog(const CellSource &grid, const TextLogRange &range, const Regional &regional);

/// Writes textLog whole to "quillon.txt" in the application directory; the result is the path, to be opened.
/// Throws what textLog throws and the run-time error of a failing write.
QString writeTextLog(const QString &applicationDir, const CellSource &grid, const TextLogRange &range,
    const Regional &regional, FileCalls &calls = FileCalls::real());

} // namespace quillon
