#pragma once

#include <QByteArray>
#include <QString>

namespace quillon::test {

/// Files of receptions as other programs lay them out, each with what is known to go wrong in it.

/// FMList's own logbook: free lines before the heading, a decimal comma, leading zeros of the time lost, a PI
/// code among the details, a column that nobody knows.
[[nodiscard]] QString fmlistLogbook();
/// The CSV of a web server's logger: two title lines, a name, an empty line, the heading. `utc` writes times
/// that are UTC.
[[nodiscard]] QString webServerLog(bool utc);
/// logbook.csv of a TEF6686: units in the cells, a bullet for yes, no clock in one line, quotes that mean
/// nothing. `american` writes m/d/Y with AM and PM, `withOffset` a column with the offset from UTC.
[[nodiscard]] QString tefLogbook(bool american, bool withOffset);
/// A log of XDR-GTK, the file 2025-11-21/98500-183000Z.txt: two PI codes, one of them doubtful at first.
[[nodiscard]] QString xdrLog();
/// A *_fm_rds.csv of URDS: header rows, a reception, a carrier.
[[nodiscard]] QByteArray urdsFile();
/// The bytes as a gzip file with one stored block each 65,535 bytes.
[[nodiscard]] QByteArray gzipped(const QByteArray &bytes);
/// The heading of the CSV that this program writes of shown receptions.
[[nodiscard]] QString shownHeading();

} // namespace quillon::test
