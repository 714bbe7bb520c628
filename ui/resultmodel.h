#pragma once

#include "ui/resultlist.h"

#include <QAbstractTableModel>

namespace quillon {

/// The lines of a ResultList as a table model.
class ResultModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    void setHeadings(const QList<ResultHeading> &headings);
    void setLines(const QStringList &lines);
    void sortLines(int column);
    [[nodiscard]] const QStringList &lines() const { return m_lines; }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    [[nodiscard]] QVariant alignment(int column) const;

    QList<ResultHeading> m_headings;
    QStringList m_lines;
};

} // namespace quillon
