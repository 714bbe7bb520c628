// What is chosen in the grid, and what of it the filter hides.

#include "core/logrows.h"
#include "ui/grid.h"
#include "ui/logmodel.h"

#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

namespace quillon {

void Grid::setFilter(LogRows::Filter filter)
{
    const QScopedValueRollback byProgram(m_byProgram, true);
    const Choice all = choice();
    logRows().setFilter(std::move(filter));
    m_hidden = choose(all);
    if (row() > 0) {
        showRow(row());
    }
    // A model that is filled anew says nothing of what it had selected.
    Q_EMIT chosenChanged();
}

// What is chosen and current, shown or hidden by the filter.
Grid::Choice Grid::choice() const
{
    Choice all {chosenEntries(), row() > 0 ? entryOfRow(row()) : m_hidden.current};
    all.entries.insert(all.entries.end(), m_hidden.entries.begin(), m_hidden.entries.end());
    return all;
}

// Chooses what is shown of it, and that alone; returns what is not.
Grid::Choice Grid::choose(const Choice &choice)
{
    std::vector<char> isChosen(static_cast<std::size_t>(logRows().log().count()));
    for (const qint32 entry : choice.entries) {
        isChosen[static_cast<std::size_t>(entry)] = 1;
    }
    const std::span<const qint32> shown = logRows().shown();
    const auto take = [&](std::size_t at) {
        return at < shown.size() && std::exchange(isChosen[static_cast<std::size_t>(shown[at])], 0) != 0;
    };
    QItemSelection rows;
    for (std::size_t at = 0; at < shown.size(); ++at) {
        if (take(at)) {
            const std::size_t first = at;
            while (take(at + 1)) {
                ++at;
            }
            rows.emplace_back(m_model->index(static_cast<int>(first), 0),
                m_model->index(static_cast<int>(at), allColumnCount - 1));
        }
    }
    const int position = horizontalScrollBar()->value();
    const int column = std::max(currentIndex().column(), 0);
    const int currentRow = choice.current < 0 ? 0 : rowOfEntry(choice.current);
    if (currentRow > 0) {
        selectionModel()->setCurrentIndex(
            m_model->index(currentRow - 1, column), QItemSelectionModel::NoUpdate);
    } else {
        selectionModel()->clearCurrentIndex();
    }
    selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
    horizontalScrollBar()->setValue(position);
    Choice hidden {{}, currentRow > 0 ? -1 : choice.current};
    std::ranges::copy_if(choice.entries, std::back_inserter(hidden.entries),
        [&](qint32 entry) { return isChosen[static_cast<std::size_t>(entry)] != 0; });
    return hidden;
}

std::vector<qint32> Grid::chosenEntries() const
{
    std::vector<int> chosen;
    const QModelIndexList indexes = selectionModel()->selectedRows();
    chosen.reserve(static_cast<std::size_t>(indexes.size()));
    for (const QModelIndex &index : indexes) {
        chosen.push_back(index.row());
    }
    std::ranges::sort(chosen);
    std::vector<qint32> entries;
    entries.reserve(chosen.size());
    for (const int chosenRow : chosen) {
        entries.push_back(logRows().shown()[static_cast<std::size_t>(chosenRow)]);
    }
    return entries;
}

int Grid::chosenCount() const
{
    // Whole rows are selected: a range has no part of one.
    int count = 0;
    const QItemSelection ranges = selectionModel()->selection();
    for (const QItemSelectionRange &range : ranges) {
        count += range.height();
    }
    return count;
}

void Grid::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTableView::selectionChanged(selected, deselected);
    forgetHidden();
    Q_EMIT chosenChanged();
}

} // namespace quillon
