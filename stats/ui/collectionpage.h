#pragma once

#include "stats/figuretable.h"

#include <QWidget>

#include <vector>

class QComboBox;
class QSortFilterProxyModel;
class QSplitter;
class QTableView;
class QVBoxLayout;

namespace quillon {

class FigureModel;

/// A tab of the collection: a chart above a table that is sorted by a click on a heading.
class CollectionPage : public QWidget
{
    Q_OBJECT

public:
    explicit CollectionPage(QWidget *parent = nullptr);

    /// What the parts are named after: "countries" gives countriesTable and countriesShown.
    void prepare(const QString &name, const QString &caption);
    /// Shows this above the table.
    void addChart(QWidget *chart, int height);
    /// Of the columns that are in a group one group is shown, chosen among these.
    void addGroups(const QStringList &groups);

    /// Sorting and chosen group stay.
    void showTable(FigureTable table);
    [[nodiscard]] const FigureTable &table() const;
    /// The rows as they are sorted.
    [[nodiscard]] std::vector<int> rowsInOrder() const;
    /// The row of the table that is current; -1 for none.
    [[nodiscard]] int currentRow() const;

Q_SIGNALS:
    /// The user wants to see what a cell was counted from.
    void receptionsWanted(const quillon::CellReceptions &receptions);

private:
    void showGroup();

    QVBoxLayout *m_layout;
    QComboBox *m_groups = nullptr;
    QSplitter *m_splitter;
    QTableView *m_view;
    FigureModel *m_model;
    QSortFilterProxyModel *m_sorted;
    bool m_isFitted = false;
    QString m_name;
};

} // namespace quillon
