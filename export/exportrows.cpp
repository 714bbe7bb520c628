#include "export/exportrows.h"

namespace quillon {

using namespace Qt::StringLiterals;

ExportRows::ExportRows(const LogRows &rows, const Regional &regional)
    : m_rows(rows)
    , m_keys(exportMonths(regional))
    , m_dates(rows.all().size() + 1)
{
}

QString ExportRows::text(int row, GridColumn column) const
{
    return m_rows.text(entry(row), column);
}

DateTime ExportRows::at(int row)
{
    std::optional<DateTime> &date = m_dates[static_cast<std::size_t>(row)];
    if (!date) {
        date = m_rows.moment(entry(row), u"Exporting row %1 of the log"_s.arg(row));
    }
    return *date;
}

const std::vector<int> &ExportRows::rowsOf(DateTime month)
{
    if (!m_grouped) {
        m_rowsOfMonth.clear();
        for (int row = count(); row >= 1; --row) {
            m_rowsOfMonth[m_keys.of(at(row))].push_back(row);
        }
        m_grouped = true;
    }
    return m_rowsOfMonth[m_keys.of(month)];
}

} // namespace quillon
