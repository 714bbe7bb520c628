#pragma once

#include <QObject>

#include <functional>

class QTableView;

namespace quillon {

/// Lets a double-click on a frequency of a table tune the receiver.
class FrequencyCells : public QObject
{
    Q_OBJECT

public:
    /// Asks `tune` when a cell below the heading "Freq" is double-clicked; while it says false, the click
    /// stays the table's own. Lives as long as the table.
    FrequencyCells(QTableView &table, std::function<bool(qint64 hertz)> tune);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QTableView *m_table;
    std::function<bool(qint64)> m_tune;
};

} // namespace quillon
