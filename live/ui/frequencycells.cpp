#include "live/ui/frequencycells.h"

#include "live/frequency.h"

#include <QMouseEvent>
#include <QTableView>

namespace quillon {

using namespace Qt::StringLiterals;

FrequencyCells::FrequencyCells(QTableView &table, std::function<bool(qint64 hertz)> tune)
    : QObject(&table)
    , m_table(&table)
    , m_tune(std::move(tune))
{
    table.viewport()->installEventFilter(this);
}

bool FrequencyCells::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::MouseButtonDblClick) {
        return QObject::eventFilter(watched, event);
    }
    const auto &click = static_cast<const QMouseEvent &>(*event);
    const QModelIndex cell = m_table->indexAt(click.position().toPoint());
    if (click.button() != Qt::LeftButton || !cell.isValid()
        || cell.model()->headerData(cell.column(), Qt::Horizontal).toString() != "Freq"_L1) {
        return false;
    }
    const auto hertz = hertzOf(cell.data().toString());
    return hertz && m_tune(*hertz);
}

} // namespace quillon
