#pragma once

#include <QString>

namespace quillon {

/// The columns of the log grid, from left to right.
enum LogColumn : int {
    DateTimeColumn,
    PiCodeColumn,
    FreqColumn,
    RdsNameColumn,
    CountryColumn,
    TransmitterColumn,
    DistColumn,
    PowerColumn,
    NotesColumn,
    PropColumn,
    FmlistColumn,
    UidColumn,
};

/// A table of texts such as the log grid: what the exports read.
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
    [[nodiscard]] virtual QString text(int row, int column) const = 0;
};

} // namespace quillon
