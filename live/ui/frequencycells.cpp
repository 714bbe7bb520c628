#include "live/ui/frequencycells.h"

#include "live/frequency.h"
#include "live/ui/receiverdock.h"

#include <QContextMenuEvent>
#include <QMenu>
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
    switch (event->type()) {
    case QEvent::MouseButtonDblClick:
        return takeDoubleClick(static_cast<const QMouseEvent &>(*event));
    case QEvent::ContextMenu:
        return showMenu(static_cast<const QContextMenuEvent &>(*event));
    default:
        return QObject::eventFilter(watched, event);
    }
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

bool FrequencyCells::showMenu(const QContextMenuEvent &event)
{
    const QModelIndex cell = m_table->indexAt(event.pos());
    if (m_table->contextMenuPolicy() != Qt::DefaultContextMenu || !cell.isValid() || !m_receiver->mayTune()) {
        return false;
    }
    const auto hertz = hertzOfRow(cell.row());
    auto *const menu = new QMenu(m_table);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction *const tune = menu->addAction(
        u"&Tune"_s, m_receiver, [receiver = m_receiver, hertz] { receiver->tune(hertz.value_or(0)); });
    tune->setEnabled(hertz.has_value());
    menu->popup(event.globalPos());
    return true;
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
