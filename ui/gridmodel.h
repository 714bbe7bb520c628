#pragma once

#include "core/gridrows.h"

#include <QAbstractTableModel>

#include <vector>

namespace quillon {

/// The cells of the log grid as a table model. Rows count from 0 here.
class GridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    void setRows(std::vector<GridRow> rows);
    [[nodiscard]] const std::vector<GridRow> &rows() const { return m_rows; }
    void setText(int row, GridColumn column, const QString &text);
    /// Puts the rows into the order of `positions`, which holds each row number once.
    void permute(const std::vector<int> &positions);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<GridRow> m_rows;
};

} // namespace quillon
