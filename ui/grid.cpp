#include "ui/grid.h"

#include "platform/runtimeerror.h"
#include "ui/gridmodel.h"
#include "ui/tablelook.h"
#include "ui/widgetstate.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// Texts that a column usually holds, so that they are never cut.
constexpr std::array<QStringView, gridColumnCount> usualTexts {u"30/08/2008 20:08:00", u"D3C3", u"107.90",
    u"RADIO_88", u"D", u"Hohenpeissenberg", u"2345.6", u"100", u"Notes", u"Tropo", u"None", u"1234567"};

constexpr int twipsPerInch = 1440;

} // namespace

Grid::Grid(QWidget *parent)
    : QTableView(parent)
    , m_model(new GridModel(this))
{
    setModel(m_model);
    setTableLook(*this);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, &Grid::headerClicked);
}

void Grid::writeGridHeader()
{
    const QFontMetrics cells = fontMetrics();
    const QFontMetrics headings = horizontalHeader()->fontMetrics();
    const int padding = 2 * style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 10;
    for (int column = 0; column < gridColumnCount; ++column) {
        const GridColumnFormat &format = gridColumnFormats()[static_cast<std::size_t>(column)];
        const QString usual = usualTexts[static_cast<std::size_t>(column)].toString();
        const int needed =
            std::max(cells.horizontalAdvance(usual), headings.horizontalAdvance(format.caption.toString()))
            + padding;
        setColumnWidth(column, std::max(format.twips * logicalDpiX() / twipsPerInch, needed));
    }
    m_notesWidth = columnWidth(static_cast<int>(GridColumn::Notes));
    fitNotes();
}

void Grid::fill(std::vector<GridRow> rows)
{
    const QScopedValueRollback byProgram(m_byProgram, true);
    m_model->setRows(std::move(rows));
}

int Grid::rows() const
{
    return m_model->rowCount() + 1;
}

QString Grid::text(int row, int column) const
{
    if (row < 0 || row >= rows() || column < 0 || column >= gridColumnCount) {
        throw RuntimeError(ErrorName::SubscriptOutOfRange,
            u"The grid has no cell in row %1, column %2"_s.arg(row).arg(column));
    }
    if (row == 0) {
        return gridColumnFormats()[static_cast<std::size_t>(column)].caption.toString();
    }
    return m_model->rows()[static_cast<std::size_t>(row - 1)].cells[static_cast<std::size_t>(column)];
}

void Grid::setText(int row, GridColumn column, const QString &text)
{
    if (row < 1 || row >= rows()) {
        throw RuntimeError(ErrorName::SubscriptOutOfRange, u"The grid has no row %1"_s.arg(row));
    }
    m_model->setText(row - 1, column, text);
}

int Grid::row() const
{
    return currentIndex().isValid() ? currentIndex().row() + 1 : 0;
}

void Grid::setRow(int row)
{
    const QScopedValueRollback byProgram(m_byProgram, true);
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
    const auto found = std::ranges::find(m_model->rows(), entry, &GridRow::entry);
    return found == m_model->rows().end() ? 0 : static_cast<int>(found - m_model->rows().begin()) + 1;
}

qint32 Grid::entryOfRow(int row) const
{
    if (row < 1 || row >= rows()) {
        throw RuntimeError(ErrorName::SubscriptOutOfRange, u"The grid has no row %1"_s.arg(row));
    }
    return m_model->rows()[static_cast<std::size_t>(row - 1)].entry;
}

void Grid::sortGridByColumn(int column)
{
    std::vector<QString> texts;
    texts.reserve(m_model->rows().size());
    for (const GridRow &row : m_model->rows()) {
        texts.push_back(row.cells[static_cast<std::size_t>(column)]);
    }
    permute(genericSort(texts));
}

void Grid::sortByDate(const MonthNames &months)
{
    std::vector<std::pair<DateTime, int>> keys;
    keys.reserve(m_model->rows().size());
    for (const GridRow &row : m_model->rows()) {
        keys.emplace_back(toDateTime(row.text(GridColumn::DateTime), months, u"Sorting the grid by date"_s),
            static_cast<int>(keys.size()));
    }
    std::ranges::stable_sort(keys, {}, &std::pair<DateTime, int>::first);
    std::vector<int> positions;
    positions.reserve(keys.size());
    for (const auto &[dateTime, position] : keys) {
        positions.push_back(position);
    }
    permute(positions);
}

void Grid::permute(const std::vector<int> &positions)
{
    const RedrawOff redrawOff(*this);
    const QScopedValueRollback byProgram(m_byProgram, true);
    const int current = row();
    m_model->permute(positions);
    const auto now = std::ranges::find(positions, current - 1);
    if (current > 0 && now != positions.end()) {
        const int row = static_cast<int>(now - positions.begin()) + 1;
        setRow(row);
        showRow(row);
    }
}

void Grid::setEmptyText(const QString &text)
{
    m_emptyText = text;
    viewport()->update();
}

void Grid::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    m_changed = m_changed || current.row() != previous.row();
    if (!m_byProgram && current.isValid() && current.row() != previous.row()) {
        Q_EMIT rowChosen(current.row() + 1);
    }
}

QItemSelectionModel::SelectionFlags Grid::selectionCommand(
    const QModelIndex &index, const QEvent * /*event*/) const
{
    // The current row is the marked one, whatever keys are held.
    return index.isValid() ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                           : QItemSelectionModel::NoUpdate;
}

void Grid::mousePressEvent(QMouseEvent *event)
{
    m_changed = false;
    QTableView::mousePressEvent(event);
    // A click on the row that is current already loads its entry, too.
    if (!m_changed && event->button() == Qt::LeftButton && indexAt(event->pos()).isValid()) {
        Q_EMIT rowChosen(row());
    }
}

void Grid::keyPressEvent(QKeyEvent *event)
{
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
    paintEmptyText(*this, m_emptyText);
}

void Grid::resizeEvent(QResizeEvent *event)
{
    const QRect current = visualRect(currentIndex());
    const bool shown =
        current.isValid() && current.top() >= 0 && current.bottom() < event->oldSize().height();
    QTableView::resizeEvent(event);
    fitNotes();
    if (shown) {
        showRow(row());
    }
}

void Grid::fitNotes()
{
    constexpr int notes = static_cast<int>(GridColumn::Notes);
    if (m_notesWidth > 0) {
        const int others = horizontalHeader()->length() - columnWidth(notes);
        setColumnWidth(notes, std::max(m_notesWidth, viewport()->width() - others));
    }
}

} // namespace quillon
