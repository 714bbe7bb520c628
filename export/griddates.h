#pragma once

#include "core/cellsource.h"
#include "export/months.h"
#include "platform/regional.h"

#include <QHash>

#include <optional>
#include <vector>

namespace quillon {

/// The "Date/Time" cells of the log grid, each read at most once, and the rows of each month. The grid must
/// outlive the object and stay as it is.
class GridDates
{
public:
    GridDates(const CellSource &grid, const Regional &regional);

    /// The moment of a data row. Throws "Type mismatch" with the number and the text of the row when its cell
    /// is no date-time.
    [[nodiscard]] DateTime at(int row);

    /// The rows of the calendar month of `month`, from the last to the first. Throws as `at` does for the
    /// last row of the grid that has no date-time, whatever the month.
    [[nodiscard]] const std::vector<int> &rowsOf(DateTime month);

    /// A number that the rows of one calendar month share.
    [[nodiscard]] int monthKey(DateTime moment) const { return m_keys.of(moment); }

private:
    const CellSource &m_grid;
    MonthNames m_readNames;
    MonthKeys m_keys;
    std::vector<std::optional<DateTime>> m_dates;
    bool m_grouped = false;
    QHash<int, std::vector<int>> m_rowsOfMonth;
};

} // namespace quillon
