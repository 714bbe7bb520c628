#pragma once

#include "live/heardtable.h"

#include <QAbstractTableModel>

namespace quillon {

/// The table of what was heard, as a view shows it.
class HeardModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { First, Last, Freq, Pi, Ps, Signal, Groups, New, Logged, Columns };

    /// The table has to outlive the model.
    explicit HeardModel(const HeardTable &table, QObject *parent = nullptr);

    /// A text as wide as those of a column usually are.
    [[nodiscard]] static QString usualText(Column column);

    /// Shows what the table holds now.
    void refresh();

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const HeardTable *m_table;
    int m_rows = 0;
    quint64 m_generation = 0;
    quint64 m_revision = 0;
};

} // namespace quillon
