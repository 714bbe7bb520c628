#pragma once

#include "core/logbook.h"
#include "core/logchange.h"
#include "core/logrows.h"

#include <QString>

#include <array>
#include <span>

namespace quillon {

/// The fields that many receptions can be given at once, in the order of the grid.
inline constexpr std::array<LogField, 9> fieldsForMany {LogField::PiCode, LogField::Freq, LogField::RdsName,
    LogField::Country, LogField::Transmitter, LogField::Power, LogField::Notes, LogField::Prop,
    LogField::Uid};

/// What a field of many receptions becomes.
struct NewValue
{
    LogField field {}; ///< any but Date/Time
    QString text; ///< as typed
    bool appended = false; ///< it becomes a line more of what stands there
};

/// What these entries become. Numbers beyond the log, deleted entries and fields that are so already are left
/// out. `entries` holds each number once, `values` each field once.
[[nodiscard]] LogChange editMany(
    const Logbook &log, std::span<const qint32> entries, std::span<const NewValue> values);

/// What a change made by editMany with this value alone does, on one line of bounded length, the commonest
/// first: "Prop of 37 receptions: Es (30), empty (7) → Tropo". Empty when nothing changes.
[[nodiscard]] QString effectOfMany(const LogChange &change, const NewValue &value);

/// The deletion of these entries; deleted ones and numbers beyond the log are left out.
[[nodiscard]] LogChange deleteMany(const Logbook &log, std::span<const qint32> entries);

/// "1 reception", "37 receptions".
[[nodiscard]] QString receptionCount(qsizetype count);

/// The rows of these entries under the headings of these columns, as the grid shows them: cells are parted by
/// tabs, rows ended by line feeds; tabs, line breaks and other control characters within a cell are blanks.
[[nodiscard]] QString tabSeparated(
    const LogRows &rows, std::span<const qint32> entries, std::span<const GridColumn> columns);

} // namespace quillon
