#pragma once

#include <QString>

class QTableView;

namespace quillon {

/// The look that the grid and the lists share: whole rows, one fixed row height, no numbers at the left.
void setTableLook(QTableView &table);

/// Paints what an empty table says in its middle. Called from the table's paint event.
void paintEmptyText(QTableView &table, const QString &text);

} // namespace quillon
