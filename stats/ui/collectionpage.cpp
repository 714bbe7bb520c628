#include "stats/ui/collectionpage.h"

#include "stats/ui/figuremodel.h"
#include "ui/guard.h"
#include "ui/tablelook.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

namespace quillon {

using namespace Qt::StringLiterals;

CollectionPage::CollectionPage(QWidget *parent)
    : QWidget(parent)
    , m_layout(new QVBoxLayout(this))
    , m_splitter(new QSplitter(Qt::Vertical, this))
    , m_view(new QTableView(this))
    , m_model(new FigureModel(this))
    , m_sorted(new QSortFilterProxyModel(this))
{
    constexpr int measuredRows = 50;
    m_sorted->setSourceModel(m_model);
    m_sorted->setSortRole(FigureModel::OrderRole);
    m_sorted->setSortCaseSensitivity(Qt::CaseInsensitive);
    setTableLook(*m_view);
    m_view->setSelectionBehavior(QAbstractItemView::SelectItems);
    m_view->setModel(m_sorted);
    QHeaderView &heading = *m_view->horizontalHeader();
    heading.setResizeContentsPrecision(measuredRows);
    heading.setSortIndicatorClearable(true);
    heading.setSortIndicator(-1, Qt::AscendingOrder);
    m_view->setSortingEnabled(true);
    m_splitter->addWidget(m_view);
    m_splitter->setChildrenCollapsible(false);
    m_layout->addWidget(m_splitter, 1);
    connect(m_view, &QTableView::activated, this, [this](const QModelIndex &index) {
        guarded(this, [&] {
            const QModelIndex cell = m_sorted->mapToSource(index);
            if (cell.isValid()) {
                Q_EMIT receptionsWanted(table().receptions(cell.row(), cell.column()));
            }
        });
    });
}

void CollectionPage::prepare(const QString &name, const QString &caption)
{
    m_name = name;
    m_view->setObjectName(name + u"Table"_s);
    m_view->setAccessibleName(caption);
    m_splitter->setObjectName(name + u"Splitter"_s);
}

void CollectionPage::addChart(QWidget *chart, int height)
{
    constexpr int tableHeight = 300;
    chart->setParent(m_splitter);
    m_splitter->insertWidget(0, chart);
    m_splitter->setSizes({height, tableHeight});
}

void CollectionPage::addGroups(const QStringList &groups)
{
    auto *row = new QHBoxLayout;
    auto *label = new QLabel(u"S&how"_s, this);
    m_groups = new QComboBox(this);
    m_groups->setObjectName(m_name + u"Shown"_s);
    m_groups->setAccessibleName(u"What the columns show"_s);
    m_groups->addItems(groups);
    label->setBuddy(m_groups);
    row->addWidget(label);
    row->addWidget(m_groups);
    row->addStretch();
    m_layout->insertLayout(0, row);
    connect(m_groups, &QComboBox::currentIndexChanged, this, [this] { showGroup(); });
}

void CollectionPage::showTable(FigureTable table)
{
    const bool isEmpty = table.columns.empty();
    m_model->setTable(std::move(table));
    // One that waits for its figures keeps the widths for them.
    if (!isEmpty) {
        showGroup();
    }
}

const FigureTable &CollectionPage::table() const
{
    return m_model->table();
}

void CollectionPage::showGroup()
{
    const std::vector<FigureColumn> &columns = table().columns;
    for (int column = 0; column < static_cast<int>(columns.size()); ++column) {
        const int group = columns[static_cast<std::size_t>(column)].group;
        m_view->setColumnHidden(column, m_groups && group >= 0 && group != m_groups->currentIndex());
    }
    // What the user made of the widths stays.
    if (!m_isFitted || m_groups) {
        constexpr int padding = 12;
        m_view->resizeColumnsToContents();
        for (int column = 0; column < static_cast<int>(columns.size()); ++column) {
            if (!m_view->isColumnHidden(column)) {
                m_view->setColumnWidth(column, m_view->columnWidth(column) + padding);
            }
        }
        m_isFitted = table().rows > 0;
    }
}

std::vector<int> CollectionPage::rowsInOrder() const
{
    std::vector<int> rows;
    rows.reserve(static_cast<std::size_t>(m_sorted->rowCount()));
    for (int row = 0; row < m_sorted->rowCount(); ++row) {
        rows.push_back(m_sorted->mapToSource(m_sorted->index(row, 0)).row());
    }
    return rows;
}

int CollectionPage::currentRow() const
{
    const QModelIndex current = m_sorted->mapToSource(m_view->currentIndex());
    return current.isValid() ? current.row() : -1;
}

} // namespace quillon
