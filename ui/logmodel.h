#pragma once

#include "core/logrows.h"

#include <QAbstractTableModel>

namespace quillon {

/// The rows of the log as a table model. Rows count from 0 here. A row that comes, goes or changes is told as
/// that one row.
class LogModel : public QAbstractTableModel, private LogRowsWatcher
{
    Q_OBJECT

public:
    /// `rows` must outlive the model, which is its watcher.
    explicit LogModel(LogRows &rows, QObject *parent = nullptr);
    ~LogModel() override;

    enum Role {
        EntryRole = Qt::UserRole, ///< the number of the row's entry
    };

    [[nodiscard]] LogRows &rows() { return m_rows; }
    [[nodiscard]] const LogRows &rows() const { return m_rows; }

    /// True while rows come, go or move: what a view then makes current is not what the user chose.
    [[nodiscard]] bool isChanging() const { return m_telling != Telling::Nothing; }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    enum class Telling {
        Nothing,
        Insertion,
        Removal,
        NewOrder,
        Reset,
    };

    void rowsChanging(std::span<const qint32> before, std::span<const qint32> after) override;
    void rowsChanged() override;
    void cellsChanged(int firstRow, int lastRow) override;
    void moveIndexes();

    LogRows &m_rows;
    Telling m_telling = Telling::Nothing;
    std::vector<std::pair<QModelIndex, qint32>> m_kept; ///< persistent indexes and their entries
};

} // namespace quillon
