#pragma once

#include "export/exportrows.h"
#include "platform/codepage.h"

#include <QByteArray>
#include <QStringList>

namespace quillon {

/// The receptions of a month by propagation mode.
struct ModeCounts
{
    int total = 0;
    int tropo = 0;
    int es = 0;
    int ms = 0;
    int other = 0;

    bool operator==(const ModeCounts &) const = default;

    /// Counts one reception: "Tropo", "Es", "MS" exactly, anything else as other.
    void count(QStringView prop);
};

/// Appends a table row: "<tr><td>", the cells with "</td><td>" between them, "</td></tr>", CR LF. The cells
/// are markup and are not encoded, but for "<meta", "<link", "<iframe" and "<form" in any letter case: their
/// "<" becomes "&lt;", since by these elements a name or a note can lead the reader of a page elsewhere, or
/// let the browser connect there, whatever the page's policy.
void appendTableRow(QByteArray &page, const QStringList &cells, const CodePage &codePage);

/// The ten cells of a reception on its month's page: only the transmitter is encoded.
[[nodiscard]] QStringList receptionCells(
    const ExportRows &rows, int row, DateTime moment, const MonthNames &months, const CodePage &codePage);

/// The eight cells of a month on the index page; with `hasMap` the last is a link to the month's map.
[[nodiscard]] QStringList monthCells(
    DateTime month, const ModeCounts &counts, bool hasMap, const MonthNames &months);

/// "quillon_log_" and the month as yyyy-mmm, the name that a month's files have before their extension.
[[nodiscard]] QString monthFileName(DateTime month, const MonthNames &months);

} // namespace quillon
