#pragma once

#include <QTableView>

namespace quillon {

/// The table of an import; while it is empty it says what to do.
class ImportTable : public QTableView
{
    Q_OBJECT

public:
    explicit ImportTable(QWidget *parent = nullptr);

    void setEmptyText(const QString &text);
    [[nodiscard]] const QString &emptyText() const { return m_emptyText; }
    /// Gives each column the room that its usual texts take. To be called when it has a model.
    void chooseWidths();

Q_SIGNALS:
    /// The space bar was pressed: the ticks of the chosen rows turn.
    void tickPressed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString m_emptyText;
};

} // namespace quillon
