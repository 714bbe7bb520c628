#pragma once

#include "core/cellsource.h"
#include "ui/grid.h"

namespace quillon {

/// The cells of the grid control for whoever is no window.
class GridCells : public CellSource
{
public:
    explicit GridCells(const Grid &grid)
        : m_grid(grid)
    {
    }

    [[nodiscard]] int rows() const override { return m_grid.rows(); }
    [[nodiscard]] QString text(int row, GridColumn column) const override { return m_grid.text(row, column); }

private:
    const Grid &m_grid;
};

} // namespace quillon
