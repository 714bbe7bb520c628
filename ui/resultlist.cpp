#include "ui/resultlist.h"

#include "platform/runtimeerror.h"
#include "ui/plaincells.h"
#include "ui/resultmodel.h"
#include "ui/tablelook.h"

#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

ResultList::ResultList(QWidget *parent)
    : QTableView(parent)
    , m_model(new ResultModel(this))
{
    setModel(m_model);
    setTableLook(*this);
    setItemDelegate(new PlainCells(this));
    horizontalHeader()->setStretchLastSection(true);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, &ResultList::sortByColumn);
    connect(this, &QTableView::doubleClicked, this,
        [this](const QModelIndex &index) { Q_EMIT lineActivated(index.row()); });
}

void ResultList::setHeadings(const QList<ResultHeading> &headings)
{
    constexpr int padding = 14;
    m_model->setHeadings(headings);
    for (int column = 0; column < headings.size(); ++column) {
        const ResultHeading &heading = headings.at(column);
        setColumnWidth(column,
            padding
                + std::max(fontMetrics().horizontalAdvance(heading.usualText),
                    horizontalHeader()->fontMetrics().horizontalAdvance(heading.caption)));
    }
}

void ResultList::clear()
{
    m_model->setLines({});
}

void ResultList::setLines(const QStringList &lines)
{
    m_model->setLines(lines);
}

void ResultList::setBeside(const ResultsBeside &beside)
{
    m_model->setBeside(beside);
}

int ResultList::count() const
{
    return m_model->rowCount();
}

void ResultList::requireLine(int line) const
{
    if (line < 0 || line >= count()) {
        throw RuntimeError(ErrorName::SubscriptOutOfRange, u"The list has no line %1"_s.arg(line));
    }
}

QString ResultList::text(int line) const
{
    requireLine(line);
    return m_model->line(line);
}

int ResultList::given(int line) const
{
    requireLine(line);
    return m_model->given(line);
}

int ResultList::listIndex() const
{
    return currentIndex().isValid() ? currentIndex().row() : -1;
}

void ResultList::setListIndex(int line)
{
    const QModelIndex index = m_model->index(line, 0);
    if (index.isValid()) {
        selectionModel()->setCurrentIndex(
            index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        scrollTo(index);
    } else {
        selectionModel()->clear();
    }
}

void ResultList::setEmptyText(const QString &text)
{
    m_emptyText = text;
    viewport()->update();
}

void ResultList::sortByColumn(int column)
{
    const int highlighted = listIndex() < 0 ? -1 : given(listIndex());
    m_model->sortLines(column);
    setListIndex(m_model->lineOf(highlighted));
}

void ResultList::keyPressEvent(QKeyEvent *event)
{
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && listIndex() >= 0) {
        event->accept();
        Q_EMIT lineActivated(listIndex());
        return;
    }
    QTableView::keyPressEvent(event);
}

void ResultList::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    paintEmptyText(*this, m_emptyText);
}

} // namespace quillon
