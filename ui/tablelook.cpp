#include "ui/tablelook.h"

#include <QHeaderView>
#include <QPainter>
#include <QTableView>

namespace quillon {

void setTableLook(QTableView &table)
{
    constexpr int rowPadding = 6;
    table.setSelectionBehavior(QAbstractItemView::SelectRows);
    table.setSelectionMode(QAbstractItemView::SingleSelection);
    table.setEditTriggers(QAbstractItemView::NoEditTriggers);
    table.setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    table.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table.setAlternatingRowColors(true);
    table.setShowGrid(false);
    table.setWordWrap(false);
    table.setTabKeyNavigation(false);
    table.setCornerButtonEnabled(false);
    table.verticalHeader()->hide();
    table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table.verticalHeader()->setMinimumSectionSize(1);
    table.verticalHeader()->setDefaultSectionSize(table.fontMetrics().height() + rowPadding);
    table.horizontalHeader()->setHighlightSections(false);
    table.horizontalHeader()->setSectionsClickable(true);
}

void paintEmptyText(QTableView &table, const QString &text)
{
    if (text.isEmpty() || (table.model() && table.model()->rowCount() > 0)) {
        return;
    }
    constexpr int margin = 12;
    QPainter painter(table.viewport());
    painter.setPen(table.palette().color(QPalette::PlaceholderText));
    painter.drawText(table.viewport()->rect().adjusted(margin, margin, -margin, -margin),
        Qt::AlignCenter | Qt::TextWordWrap, text);
}

} // namespace quillon
