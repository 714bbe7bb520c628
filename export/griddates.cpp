#include "export/griddates.h"

namespace quillon {

using namespace Qt::StringLiterals;

GridDates::GridDates(const CellSource &grid, const Regional &regional)
    : m_grid(grid)
    , m_readNames(regional.months)
    , m_keys(exportMonths(regional))
    , m_dates(static_cast<std::size_t>(grid.rows()))
{
}

DateTime GridDates::at(int row)
{
    std::optional<DateTime> &date = m_dates[static_cast<std::size_t>(row)];
    if (!date) {
        date = toDateTime(
            m_grid.text(row, GridColumn::DateTime), m_readNames, u"Exporting row %1 of the log"_s.arg(row));
    }
    return *date;
}

const std::vector<int> &GridDates::rowsOf(DateTime month)
{
    if (!m_grouped) {
        m_rowsOfMonth.clear();
        for (int row = m_grid.rows() - 1; row >= 1; --row) {
            m_rowsOfMonth[m_keys.of(at(row))].push_back(row);
        }
        m_grouped = true;
    }
    return m_rowsOfMonth[m_keys.of(month)];
}

} // namespace quillon
