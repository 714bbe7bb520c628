#pragma once

#include "core/gridrows.h"

#include <QString>

namespace quillon {

/// The cells of the log grid, as whoever reads the grid without being a window sees them.
class CellSource
{
public:
    CellSource() = default;
    CellSource(const CellSource &) = delete;
    CellSource &operator=(const CellSource &) = delete;
    virtual ~CellSource() = default;

    /// Number of rows, the header (row 0) included.
    [[nodiscard]] virtual int rows() const = 0;
    /// The text of a cell as it is shown, `row` from 0 to rows() - 1.
    [[nodiscard]] virtual QString text(int row, GridColumn column) const = 0;
};

} // namespace quillon
