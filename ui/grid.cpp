#include "ui/grid.h"

#include "core/logrows.h"
#include "platform/runtimeerror.h"
#include "ui/logmodel.h"
#include "ui/plaincells.h"
#include "ui/tablelook.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

Grid::Grid(QWidget *parent)
    : QTableView(parent)
{
    setTableLook(*this);
    setItemDelegate(new PlainCells(this));
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setContextMenuPolicy(Qt::CustomContextMenu);
    horizontalHeader()->setSectionsMovable(true);
    horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, &Grid::headerClicked);
    disconnect(verticalHeader(), &QHeaderView::sectionCountChanged, this, nullptr); // see rowsCameOrWent
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        if (!m_fitting && column == static_cast<int>(GridColumn::Notes) && width > 0) {
            m_notesWidth = 0;
        }
    });
    connect(horizontalHeader(), &QHeaderView::sectionHandleDoubleClicked, this,
        [this](int column) { resizeColumnToContents(column); });
}

void Grid::setLogRows(LogRows &rows)
{
    m_model = new LogModel(rows, this);
    setModel(m_model);
    // The headings show neither rows nor what is chosen of them, and would be measured and painted with each.
    QHeaderView *headings = horizontalHeader();
    headings->setSelectionModel(new QItemSelectionModel(m_model, headings));
    disconnect(m_model, &QAbstractItemModel::dataChanged, headings, nullptr);
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved}) {
        connect(m_model, signal, this, &Grid::rowsCameOrWent);
    }
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] {
        doItemsLayout();
        showPage();
    });
}

LogRows &Grid::logRows() const
{
    return m_model->rows();
}

void Grid::refill(std::span<const qint32> changed)
{
    logRows().refill(changed);
    selectionModel()->clear();
    forgetHidden();
    showSorting();
}

int Grid::rows() const
{
    return m_model->rowCount() + 1;
}

QString Grid::text(int row, int column) const
{
    if (row < 0 || row >= rows() || column < 0 || column >= allColumnCount) {
        throw RuntimeError(ErrorName::SubscriptOutOfRange,
            u"The grid has no cell in row %1, column %2"_s.arg(row).arg(column));
    }
    if (row == 0) {
        return logColumn(static_cast<GridColumn>(column)).caption.toString();
    }
    return logRows().text(entryOfRow(row), static_cast<GridColumn>(column));
}

void Grid::setText(int row, GridColumn column, const QString &text)
{
    logRows().setTyped(entryOfRow(row), column, text);
}

int Grid::row() const
{
    return currentIndex().isValid() ? currentIndex().row() + 1 : 0;
}

void Grid::setRow(int row)
{
    const QScopedValueRollback byProgram(m_byProgram, true);
    forgetHidden();
    // The column stays where it is, so that a wide grid does not jump sideways.
    const int column = std::max(currentIndex().column(), 0);
    const int position = horizontalScrollBar()->value();
    const QModelIndex index = m_model->index(row - 1, column);
    if (index.isValid()) {
        selectionModel()->setCurrentIndex(
            index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    } else {
        selectionModel()->clear();
    }
    horizontalScrollBar()->setValue(position);
}

int Grid::topRow() const
{
    return rowAt(0) + 1;
}

void Grid::setTopRow(int row)
{
    const int position = horizontalScrollBar()->value();
    scrollTo(m_model->index(row - 1, 0), QAbstractItemView::PositionAtTop);
    horizontalScrollBar()->setValue(position);
}

void Grid::showRow(int row)
{
    const int position = horizontalScrollBar()->value();
    scrollTo(m_model->index(row - 1, 0), QAbstractItemView::EnsureVisible);
    horizontalScrollBar()->setValue(position);
}

int Grid::rowOfEntry(qint32 entry) const
{
    return logRows().rowOf(entry) + 1;
}

qint32 Grid::entryOfRow(int row) const
{
    if (row < 1 || row >= rows()) {
        throw RuntimeError(ErrorName::SubscriptOutOfRange, u"The grid has no row %1"_s.arg(row));
    }
    return logRows().shown()[static_cast<std::size_t>(row - 1)];
}

void Grid::sortGridByColumn(int column)
{
    sortBy(LogRows::Sorting {static_cast<GridColumn>(column)});
}

void Grid::sortBy(const std::optional<LogRows::Sorting> &sorting)
{
    logRows().sortBy(sorting);
    showSorting();
    if (row() > 0) {
        showRow(row());
    }
}

// Ascending, descending, and back to the order of time, which Date/Time has from the start.
void Grid::sortByNext(int column)
{
    const auto clicked = static_cast<GridColumn>(column);
    const auto now = logRows().sorting();
    const bool again = now && now->column == clicked;
    const bool first = !again && clicked != GridColumn::DateTime;
    if (again && now->descending) {
        sortBy(std::nullopt);
    } else {
        sortBy(LogRows::Sorting {clicked, !first});
    }
}

void Grid::showSorting()
{
    const auto sorting = logRows().sorting();
    if (horizontalHeader()->isSortIndicatorShown() != sorting.has_value()) {
        horizontalHeader()->setSortIndicatorShown(sorting.has_value());
    }
    if (sorting) {
        horizontalHeader()->setSortIndicator(static_cast<int>(sorting->column),
            sorting->descending ? Qt::DescendingOrder : Qt::AscendingOrder);
    }
}

void Grid::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    m_changed = m_changed || current.row() != previous.row();
    if (!m_byProgram && !m_model->isChanging() && current.isValid() && current.row() != previous.row()) {
        Q_EMIT rowChosen(current.row() + 1);
    }
}

void Grid::mousePressEvent(QMouseEvent *event)
{
    m_changed = false;
    // Whoever chooses here chooses among what is seen, even what is chosen already.
    forgetHidden();
    QTableView::mousePressEvent(event);
    // A click on the row that is current already loads its entry, too.
    if (!m_changed && event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier
        && indexAt(event->pos()).isValid()) {
        Q_EMIT rowChosen(row());
    }
}

void Grid::keyPressEvent(QKeyEvent *event)
{
    forgetHidden();
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && row() > 0) {
        Q_EMIT rowChosen(row());
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
}

} // namespace quillon
