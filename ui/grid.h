#pragma once

#include "core/logfields.h"
#include "core/logrows.h"

#include <QPointer>
#include <QString>
#include <QTableView>

#include <optional>
#include <span>
#include <vector>

namespace quillon {

class LogModel;

/// The log grid. Row 0 is the fixed header row, the receptions are rows 1 to rows() - 1; 0 as the current row
/// means that none is.
class Grid : public QTableView
{
    Q_OBJECT

public:
    explicit Grid(QWidget *parent = nullptr);

    /// Shows these rows, which must outlive the grid. To be called once, before all others.
    void setLogRows(LogRows &rows);
    [[nodiscard]] LogRows &logRows() const;

    /// Gives the columns the widths of their format, never less than their headings and usual texts need.
    void writeGridHeader();
    /// Makes a row of every entry, in the order of time. No row is current afterwards. `changed` is as
    /// LogRows::refill has it.
    void refill(std::span<const qint32> changed = {});

    /// Number of rows, header included.
    [[nodiscard]] int rows() const;
    /// The text of a cell; of the header in row 0. Throws "Subscript out of range".
    [[nodiscard]] QString text(int row, int column) const;
    [[nodiscard]] QString text(int row, GridColumn column) const
    {
        return text(row, static_cast<int>(column));
    }
    /// Lets a cell show what was typed, until the next refill.
    void setText(int row, GridColumn column, const QString &text);

    [[nodiscard]] int row() const;
    /// Makes a row current and highlights the whole of it. Says nothing to rowChosen.
    void setRow(int row);
    [[nodiscard]] int topRow() const;
    /// Scrolls so that the row is the top visible one, as far as the rows below allow.
    void setTopRow(int row);
    /// Scrolls as little as is needed to show the row.
    void showRow(int row);

    /// Number of the row made from that entry; 0 when there is none.
    [[nodiscard]] int rowOfEntry(qint32 entry) const;
    /// Number of the entry that a row was made from. Throws "Subscript out of range".
    [[nodiscard]] qint32 entryOfRow(int row) const;

    /// Sorts ascending by the cells of a column, numbers as numbers and dates as dates; the current row stays
    /// the same reception.
    void sortGridByColumn(int column);
    /// Sorts by a column, or as the last refill left the rows; the heading shows an arrow.
    void sortBy(const std::optional<LogRows::Sorting> &sorting);
    /// What a click on the heading does: ascending, descending, the order of time.
    void sortByNext(int column);

    /// Shows only the rows of entries for which `filter` is true; all without one. What is chosen and current
    /// stays so as far as it is shown, and is so again when a later filter shows it, unless other rows were
    /// chosen in between or the log was changed.
    void setFilter(LogRows::Filter filter);
    /// What is chosen and not shown comes back no more.
    void forgetHidden() { m_hidden = {}; }

    /// The entries of the selected rows, in the order of the rows.
    [[nodiscard]] std::vector<qint32> chosenEntries() const;
    /// How many rows are selected.
    [[nodiscard]] int chosenCount() const;
    /// The columns that are shown, from left to right.
    [[nodiscard]] std::vector<GridColumn> shownColumns() const;

    /// True when the user gave the Notes column its width; otherwise it gets what the window has to spare.
    [[nodiscard]] bool isNotesWidthGiven() const { return m_notesWidth == 0; }
    /// The width that it has now is the user's, or not.
    void setNotesWidthGiven(bool given);

    /// What an empty grid says; a page, which is a child of the viewport, says it in the text's place.
    void setEmptyText(const QString &text, QWidget *page = nullptr);
    [[nodiscard]] const QString &emptyText() const { return m_emptyText; }

Q_SIGNALS:
    /// The user made a row current, by mouse or keyboard.
    void rowChosen(int row);
    /// The user clicked a heading.
    void headerClicked(int column);
    /// Other rows are selected.
    void chosenChanged();

protected:
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Choice
    {
        std::vector<qint32> entries;
        qint32 current = -1;
    };

    [[nodiscard]] Choice choice() const;
    [[nodiscard]] Choice choose(const Choice &choice);
    void fitNotes();
    void showPage();
    void rowsCameOrWent(const QModelIndex &parent, int first);
    void showSorting();

    LogModel *m_model = nullptr;
    Choice m_hidden; ///< what the filter has hidden of it
    QString m_emptyText;
    QPointer<QWidget> m_emptyPage;
    bool m_byProgram = false;
    bool m_changed = false;
    bool m_fitting = false; ///< widths change by the program
    int m_notesNeeded = 0; ///< what the Notes column needs
    int m_notesWidth = 0; ///< the same, until the user gives it a width
};

} // namespace quillon
