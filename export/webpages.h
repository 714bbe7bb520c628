#pragma once

#include "core/logrows.h"
#include "platform/filecalls.h"
#include "platform/regional.h"
#include "txdb/transmitters.h"

#include <QString>

#include <functional>

namespace quillon {

/// What the web pages are made from.
struct WebSite
{
    const LogRows &rows; ///< the rows of the pages; their log is that of the total and the KML files
    const TransmitterList &transmitters;
    QString callsign;
    QString version; ///< of the program, for instance "V1.0.0"
    DateTime now; ///< told as the time of making
};

/// Told of each month that is done: how many of the rows are, and how many rows there are.
using WebPagesProgress = std::function<void(int done, int count)>;

/// Writes the web site into "html" in the application directory and returns the path of its index page, to be
/// opened. In this order: the map viewer page is copied; for each month, as it is met from the last row up,
/// its page and its KML file (removed when no reception of the month belongs to a transmitter); the index;
/// the KML file of the whole log. Beside each KML file stands NAME.kml.js with the same data (mapScript), and
/// goes when it goes. A month is listed when a row of another month or row 1 follows it, so a
/// month that begins at row 1 is not; a month that is met again is listed again.
///
/// A file that is there under its name in another case is the one that is written.
/// Each file is written whole, and only when its bytes change; what an export that was killed has left beside
/// them is removed first. Throws the run-time error of what failed:
/// "File not found" with the path of a missing template or map viewer page, "Type mismatch" for a row without
/// a date-time; the files written until then stay.
/// `progress` may be empty.
QString exportWebPages(const QString &applicationDir, const WebSite &site, const Regional &regional,
    FileCalls &calls = FileCalls::real(), const WebPagesProgress &progress = {});

} // namespace quillon
