#pragma once

#include "stats/figuretable.h"

#include <QAbstractTableModel>

namespace quillon {

/// A table of figures as a table model.
class FigureModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    enum Role {
        OrderRole = Qt::UserRole, ///< what a cell is sorted by: a number or a text
    };

    void setTable(FigureTable table);
    [[nodiscard]] const FigureTable &table() const { return m_table; }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    [[nodiscard]] QVariant alignment(int column) const;

    FigureTable m_table;
};

} // namespace quillon
