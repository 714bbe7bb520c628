#include "live/ui/frequencycells.h"

#include "live/frequency.h"
#include "live/ui/receiverdock.h"

#include <QMouseEvent>
#include <QTableView>

namespace quillon {

using namespace Qt::StringLiterals;

FrequencyCells::FrequencyCells(QTableView &table, ReceiverDock &receiver)
    : QObject(&table)
    , m_table(&table)
    , m_receiver(&receiver)
{
    table.viewport()->installEventFilter(this);
}

bool FrequencyCells::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonDblClick) {
        return takeDoubleClick(static_cast<const QMouseEvent &>(*event));
    }
    return QObject::eventFilter(watched, event);
}

bool FrequencyCells::takeDoubleClick(const QMouseEvent &click)
{
    const QModelIndex cell = m_table->indexAt(click.position().toPoint());
    if (click.button() != Qt::LeftButton || !cell.isValid() || cell.column() != column()) {
        return false;
    }
    const auto hertz = hertzOfRow(cell.row());
    return hertz && m_receiver->tune(*hertz);
}

int FrequencyCells::column() const
{
    const QAbstractItemModel &model = *m_table->model();
    for (int column = 0; column < model.columnCount(); ++column) {
        if (model.headerData(column, Qt::Horizontal).toString() == "Freq"_L1) {
            return column;
        }
    }
    return -1;
}

std::optional<qint64> FrequencyCells::hertzOfRow(int row) const
{
    return hertzOf(m_table->model()->index(row, column()).data().toString());
}

} // namespace quillon
