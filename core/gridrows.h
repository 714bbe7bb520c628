#pragma once

#include "core/logbook.h"

#include <QString>
#include <QStringView>

#include <array>
#include <compare>
#include <span>
#include <vector>

namespace quillon {

/// The columns of the log grid, left to right.
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
};

inline constexpr int gridColumnCount = 12;

/// Caption, width in twips (1/1440 inch) and alignment of a column.
struct GridColumnFormat
{
    QStringView caption;
    int twips;
    bool centred;
};

[[nodiscard]] std::span<const GridColumnFormat, gridColumnCount> gridColumnFormats();

/// A row of the log grid: the texts of its cells, and the number of the entry it was made from.
struct GridRow
{
    std::array<QString, gridColumnCount> cells;
    qint32 entry = -1;

    [[nodiscard]] const QString &text(GridColumn column) const
    {
        return cells[static_cast<std::size_t>(column)];
    }
    [[nodiscard]] QString &text(GridColumn column) { return cells[static_cast<std::size_t>(column)]; }
};

/// The rows of all entries, deleted ones included, sorted by Date/Time; rows of one Date/Time stay in log
/// order.
[[nodiscard]] std::vector<GridRow> gridRows(const Logbook &log);

/// The generic order of two texts: numbers before other text, numbers by their value, other text by its
/// letters whatever their case.
[[nodiscard]] std::weak_ordering genericOrder(const QString &left, const QString &right);

/// Positions 0 to texts.size() - 1 in ascending generic order; equal texts stay in order.
[[nodiscard]] std::vector<int> genericSort(const std::vector<QString> &texts);

} // namespace quillon
