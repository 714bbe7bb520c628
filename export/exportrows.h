#pragma once

#include "core/logrows.h"
#include "export/months.h"
#include "platform/regional.h"

#include <QHash>

#include <optional>
#include <vector>

namespace quillon {

/// The rows of the log in the order of the last refill, whatever the grid is sorted by or shows: row 1 is the
/// first. Moments are read at most once. The rows must outlive the object and stay as they are.
class ExportRows
{
public:
    ExportRows(const LogRows &rows, const Regional &regional);

    /// The last row.
    [[nodiscard]] int count() const { return static_cast<int>(m_rows.all().size()); }
    [[nodiscard]] QString text(int row, GridColumn column) const;

    /// The moment of a row. Throws "Type mismatch" with the number and the text of the row when its Date/Time
    /// was typed and is no date-time.
    [[nodiscard]] DateTime at(int row);

    /// The rows of the calendar month of `month`, from the last to the first. Throws as `at` does for the
    /// last row that has no date-time, whatever the month.
    [[nodiscard]] const std::vector<int> &rowsOf(DateTime month);

    /// A number that the rows of one calendar month share.
    [[nodiscard]] int monthKey(DateTime moment) const { return m_keys.of(moment); }

private:
    [[nodiscard]] qint32 entry(int row) const { return m_rows.all()[static_cast<std::size_t>(row - 1)]; }

    const LogRows &m_rows;
    MonthKeys m_keys;
    std::vector<std::optional<DateTime>> m_dates;
    bool m_grouped = false;
    QHash<int, std::vector<int>> m_rowsOfMonth;
};

} // namespace quillon
