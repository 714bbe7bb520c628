#pragma once

#include "import/csv.h"
#include "import/importformat.h"

#include <optional>
#include <span>
#include <vector>

namespace quillon {

/// What a heading tells.
struct KnownHeading
{
    ImportKind kind = ImportKind::Columns;
    std::vector<ImportColumn> columns;
    bool localTime = false;
};

/// The kind of file that has this heading; nothing for a heading that is not known.
[[nodiscard]] std::optional<KnownHeading> kindOfHeading(std::span<const QString> heading);

/// Logbook or OlderLogbook for a text whose first line is one of them, else nothing.
[[nodiscard]] std::optional<ImportKind> logbookKind(QStringView text, bool notes);
/// The columns of a logbook.
[[nodiscard]] std::vector<ImportColumn> logbookColumns(ImportKind kind);

/// True for rows that begin with the numbers of a URDS file.
[[nodiscard]] bool isUrds(std::span<const CsvRow> rows);
/// The columns of a row of kind 30.
[[nodiscard]] std::vector<ImportColumn> urdsColumns();

} // namespace quillon
