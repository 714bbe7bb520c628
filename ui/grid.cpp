#include "ui/grid.h"

#include "core/logrows.h"
#include "platform/runtimeerror.h"
#include "ui/logmodel.h"
#include "ui/plaincells.h"
#include "ui/tablelook.h"
#include "ui/widgetstate.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int twipsPerInch = 1440;

} // namespace

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
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved}) {
        connect(m_model, signal, this, &Grid::rowsCameOrWent);
    }
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] {
        doItemsLayout();
        showPage();
    });
}

// The view would paint all of itself anew for one row.
void Grid::rowsCameOrWent(const QModelIndex &, int first)
{
    const QHeaderView &places = *verticalHeader();
    const std::pair before(verticalScrollBar()->value(), places.offset());
    updateGeometries();
    // What was the last page can stand a little otherwise now, without having been scrolled.
    const bool hasMoved = verticalScrollBar()->value() == before.first && places.offset() != before.second;
    const int top = hasMoved          ? 0
        : first < m_model->rowCount() ? rowViewportPosition(first)
                                      : places.length() - places.offset();
    viewport()->update(viewport()->rect().adjusted(0, std::max(top, 0), 0, 0));
    showPage();
}

LogRows &Grid::logRows() const
{
    return m_model->rows();
}

void Grid::writeGridHeader()
{
    const QScopedValueRollback fitting(m_fitting, true);
    const QFontMetrics cells = fontMetrics();
    const QFontMetrics headings = horizontalHeader()->fontMetrics();
    const int padding = 2 * style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 10;
    for (int column = 0; column < allColumnCount; ++column) {
        setColumnHidden(column, column >= gridColumnCount);
        const LogColumn &format = logColumn(static_cast<GridColumn>(column));
        const int needed = std::max(cells.horizontalAdvance(format.usual.toString()),
                               headings.horizontalAdvance(format.caption.toString()))
            + padding;
        setColumnWidth(column, std::max(format.twips * logicalDpiX() / twipsPerInch, needed));
    }
    m_notesNeeded = columnWidth(static_cast<int>(GridColumn::Notes));
    setNotesWidthGiven(false);
}

void Grid::refill(std::span<const qint32> changed)
{
    const QScopedValueRollback byProgram(m_byProgram, true);
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
    const QScopedValueRollback byProgram(m_byProgram, true);
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

void Grid::setFilter(LogRows::Filter filter)
{
    const QScopedValueRollback byProgram(m_byProgram, true);
    const Choice all = choice();
    logRows().setFilter(std::move(filter));
    m_hidden = choose(all);
    if (row() > 0) {
        showRow(row());
    }
    // A model that is filled anew says nothing of what it had selected.
    Q_EMIT chosenChanged();
}

// What is chosen and current, shown or hidden by the filter.
Grid::Choice Grid::choice() const
{
    Choice all {chosenEntries(), row() > 0 ? entryOfRow(row()) : m_hidden.current};
    all.entries.insert(all.entries.end(), m_hidden.entries.begin(), m_hidden.entries.end());
    return all;
}

// Chooses what is shown of it, and that alone; returns what is not.
Grid::Choice Grid::choose(const Choice &choice)
{
    std::vector<char> isChosen(static_cast<std::size_t>(logRows().log().count()));
    for (const qint32 entry : choice.entries) {
        isChosen[static_cast<std::size_t>(entry)] = 1;
    }
    const std::span<const qint32> shown = logRows().shown();
    const auto take = [&](std::size_t at) {
        return at < shown.size() && std::exchange(isChosen[static_cast<std::size_t>(shown[at])], 0) != 0;
    };
    QItemSelection rows;
    for (std::size_t at = 0; at < shown.size(); ++at) {
        if (take(at)) {
            const std::size_t first = at;
            while (take(at + 1)) {
                ++at;
            }
            rows.emplace_back(m_model->index(static_cast<int>(first), 0),
                m_model->index(static_cast<int>(at), allColumnCount - 1));
        }
    }
    const int position = horizontalScrollBar()->value();
    const int column = std::max(currentIndex().column(), 0);
    const int currentRow = choice.current < 0 ? 0 : rowOfEntry(choice.current);
    if (currentRow > 0) {
        selectionModel()->setCurrentIndex(
            m_model->index(currentRow - 1, column), QItemSelectionModel::NoUpdate);
    } else {
        selectionModel()->clearCurrentIndex();
    }
    selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
    horizontalScrollBar()->setValue(position);
    Choice hidden {{}, currentRow > 0 ? -1 : choice.current};
    std::ranges::copy_if(choice.entries, std::back_inserter(hidden.entries),
        [&](qint32 entry) { return isChosen[static_cast<std::size_t>(entry)] != 0; });
    return hidden;
}

void Grid::showSorting()
{
    const auto sorting = logRows().sorting();
    horizontalHeader()->setSortIndicatorShown(sorting.has_value());
    if (sorting) {
        horizontalHeader()->setSortIndicator(static_cast<int>(sorting->column),
            sorting->descending ? Qt::DescendingOrder : Qt::AscendingOrder);
    }
}

std::vector<qint32> Grid::chosenEntries() const
{
    std::vector<int> chosen;
    const QModelIndexList indexes = selectionModel()->selectedRows();
    chosen.reserve(static_cast<std::size_t>(indexes.size()));
    for (const QModelIndex &index : indexes) {
        chosen.push_back(index.row());
    }
    std::ranges::sort(chosen);
    std::vector<qint32> entries;
    entries.reserve(chosen.size());
    for (const int chosenRow : chosen) {
        entries.push_back(logRows().shown()[static_cast<std::size_t>(chosenRow)]);
    }
    return entries;
}

int Grid::chosenCount() const
{
    // Whole rows are selected: a range has no part of one.
    int count = 0;
    const QItemSelection ranges = selectionModel()->selection();
    for (const QItemSelectionRange &range : ranges) {
        count += range.height();
    }
    return count;
}

void Grid::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTableView::selectionChanged(selected, deselected);
    forgetHidden();
    Q_EMIT chosenChanged();
}

std::vector<GridColumn> Grid::shownColumns() const
{
    std::vector<GridColumn> columns;
    for (int place = 0; place < horizontalHeader()->count(); ++place) {
        const int column = horizontalHeader()->logicalIndex(place);
        if (!isColumnHidden(column)) {
            columns.push_back(static_cast<GridColumn>(column));
        }
    }
    return columns;
}

void Grid::setEmptyText(const QString &text, QWidget *page)
{
    if (m_emptyPage && m_emptyPage != page) {
        m_emptyPage->hide();
    }
    const bool isNew = text != m_emptyText;
    m_emptyText = text;
    m_emptyPage = page;
    showPage();
    if (isNew) {
        viewport()->update();
    }
}

void Grid::showPage()
{
    if (!m_emptyPage) {
        return;
    }
    QRect place(QPoint(), m_emptyPage->sizeHint().boundedTo(viewport()->size()));
    place.moveCenter(viewport()->rect().center());
    m_emptyPage->setGeometry(place);
    m_emptyPage->setVisible(m_model && m_model->rowCount() == 0);
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

void Grid::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    if (!m_emptyPage) {
        paintEmptyText(*this, m_emptyText);
    }
}

void Grid::resizeEvent(QResizeEvent *event)
{
    const QRect current = visualRect(currentIndex());
    const bool shown =
        current.isValid() && current.top() >= 0 && current.bottom() < event->oldSize().height();
    QTableView::resizeEvent(event);
    fitNotes();
    showPage();
    if (shown) {
        showRow(row());
    }
}

void Grid::setNotesWidthGiven(bool given)
{
    m_notesWidth = given ? 0 : m_notesNeeded;
    fitNotes();
}

void Grid::fitNotes()
{
    const QScopedValueRollback fitting(m_fitting, true);
    constexpr int notes = static_cast<int>(GridColumn::Notes);
    if (m_notesWidth > 0) {
        const int others = horizontalHeader()->length() - columnWidth(notes);
        setColumnWidth(notes, std::max(m_notesWidth, viewport()->width() - others));
    }
}

} // namespace quillon
