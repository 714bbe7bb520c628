#pragma once

#include "core/logentry.h"

#include <QString>
#include <QStringView>

#include <optional>
#include <span>
#include <variant>

namespace quillon {

/// The fields of a reception, in the order of the logbook file.
enum class LogField {
    PiCode,
    DateTime,
    Prop,
    Freq,
    Transmitter,
    Country,
    Notes,
    RdsName,
    Power,
    Dist,
    FMList,
    Uid,
};

inline constexpr int logFieldCount = 12;

/// The columns of the log grid, left to right. The first twelve show a field each, the others are derived.
enum class GridColumn {
    DateTime,
    PiCode,
    Freq,
    RdsName,
    Country,
    Transmitter,
    Dist,
    Power,
    Notes,
    Prop,
    FMList,
    Uid,
    Azimuth,
    Locator,
    Muf,
    New,
};

/// The columns that show a field.
inline constexpr int gridColumnCount = 12;
/// Those and the derived ones behind them.
inline constexpr int allColumnCount = 16;

/// All that the program knows of a field or a derived column, but its texts: the file's readers and writers,
/// the grid, searches and exports go by it.
struct LogColumn
{
    GridColumn column; ///< its place in the grid
    std::optional<LogField> field; ///< its place in the file; nothing for a derived column
    QString LogEntry::*text; ///< where the text is kept; null for Date/Time and derived columns
    QStringView caption;
    int twips; ///< width in the grid, 1/1440 inch
    bool centred;
    QStringView usual; ///< a text that the column usually has room for
    bool inOlderLayout; ///< true when the older layout of the file has it
};

/// The fields in the order of the file.
[[nodiscard]] std::span<const LogColumn, logFieldCount> logFields();
[[nodiscard]] const LogColumn &logField(LogField field);
/// The column at that place of the grid, 0 to allColumnCount - 1.
[[nodiscard]] const LogColumn &logColumn(GridColumn column);

/// The content of a field: a moment for Date/Time, a text for all others.
using FieldValue = std::variant<QString, DateTime>;

[[nodiscard]] FieldValue fieldValue(const LogEntry &entry, LogField field);
/// Throws std::bad_variant_access for a value of the other kind.
void setFieldValue(LogEntry &entry, LogField field, const FieldValue &value);

/// The cell of a column as the grid shows it: the field, with the moment in its one text form, line breaks of
/// notes as blanks, the FMList tags as "Sent", "Multi", "None" or nothing. Empty for a derived column.
[[nodiscard]] QString cellText(const LogEntry &entry, GridColumn column);

} // namespace quillon
