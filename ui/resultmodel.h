#pragma once

#include "ui/resultlist.h"

#include <QAbstractTableModel>

#include <vector>

namespace quillon {

/// The lines of a ResultList as a table model.
class ResultModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    void setHeadings(const QList<ResultHeading> &headings);
    void setLines(const QStringList &lines);
    void setBeside(const ResultsBeside &beside);
    void sortLines(int column);
    [[nodiscard]] const QString &line(int row) const { return m_lines.at(given(row)); }
    /// Where the line of the row stood among those that were set; the row of such a line, -1 for none.
    [[nodiscard]] int given(int row) const { return m_order.at(static_cast<std::size_t>(row)); }
    [[nodiscard]] int lineOf(int given) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    [[nodiscard]] QString cell(int given, int column) const;
    [[nodiscard]] QVariant markedData(const QString &text, int role) const;
    [[nodiscard]] QVariant alignment(int column) const;

    QList<ResultHeading> m_headings;
    QStringList m_lines; ///< as they were set
    ResultsBeside m_beside;
    int m_firstBeside = 0; ///< the first column that is no part of the lines
    std::vector<int> m_order; ///< of the rows: the place of each one's line in `m_lines`
};

} // namespace quillon
