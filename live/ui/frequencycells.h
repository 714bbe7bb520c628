#pragma once

#include <QObject>

#include <functional>
#include <optional>

class QMouseEvent;
class QTableView;

namespace quillon {

class ReceiverDock;

/// Lets a double-click on a frequency of a table tune the receiver.
class FrequencyCells : public QObject
{
    Q_OBJECT

public:
    /// The frequencies stand below the heading "Freq". As long as the receiver may not be tuned, all clicks
    /// stay the table's own. Lives as long as the table, which the dock has to outlive.
    FrequencyCells(QTableView &table, ReceiverDock &receiver);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] bool takeDoubleClick(const QMouseEvent &click);
    [[nodiscard]] int column() const;
    [[nodiscard]] std::optional<qint64> hertzOfRow(int row) const;

    QTableView *m_table;
    ReceiverDock *m_receiver;
};

} // namespace quillon
