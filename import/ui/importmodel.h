#pragma once

#include "import/importsession.h"

#include <QAbstractTableModel>

namespace quillon {

/// The rows of an import as they will stand in the log, with what is done with each.
class ImportModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// The columns before those of the log.
    enum Column { State, Line, Reason, firstField };

    /// Both have to outlive the model; `log` is the one that the session compares with.
    ImportModel(ImportSession &session, const Logbook &log, QObject *parent = nullptr);

    /// The session has read something else.
    void reset();
    /// What is done with rows has changed.
    void actionsChanged();
    /// Does it with rows, where it is possible.
    void setAction(const QModelIndexList &rows, ImportAction action);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

Q_SIGNALS:
    /// Something else is to be done with rows than before.
    void chosen();

private:
    [[nodiscard]] QString text(std::size_t row, int column) const;
    [[nodiscard]] QString state(std::size_t row) const;
    [[nodiscard]] QString reason(std::size_t row) const;

    ImportSession &m_session;
    const Logbook &m_log;
};

} // namespace quillon
