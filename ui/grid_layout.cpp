// Where the grid's columns and rows stand, and what of it is painted.

#include "ui/grid.h"
#include "ui/logmodel.h"
#include "ui/tablelook.h"

#include <QHeaderView>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace quillon {

namespace {

constexpr int twipsPerInch = 1440;

} // namespace

// The view would paint all of itself anew for one row.
void Grid::rowsCameOrWent(const QModelIndex &, int first)
{
    const QHeaderView &places = *verticalHeader();
    const std::pair before(verticalScrollBar()->value(), places.offset());
    updateGeometries();
    // What was the last page can stand a little otherwise now, without having been scrolled.
    if (verticalScrollBar()->value() == before.first) {
        viewport()->scroll(0, before.second - places.offset());
    }
    const int top =
        first < m_model->rowCount() ? rowViewportPosition(first) : places.length() - places.offset();
    viewport()->update(viewport()->rect().adjusted(0, std::max(top, 0), 0, 0));
    showPage();
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
