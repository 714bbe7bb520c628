#pragma once

#include "platform/datetime.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <variant>
#include <vector>

namespace quillon {

/// What stands in a cell: nothing, a text, a number or a moment.
using Figure = std::variant<std::monostate, QString, double, DateTime>;

struct FigureColumn
{
    enum class Kind { Text, Number, Day, Moment };
    QString caption;
    Kind kind = Kind::Text;
    int group = -1; ///< columns of a group are shown together; those of none always
    int places = 1; ///< most decimal places of a number
};

/// The receptions that a cell is made of: those of a filter's text, or these entries.
struct CellReceptions
{
    QString filter;
    std::vector<qint32> entries; ///< where no filter can tell them
    QString words; ///< what those entries are
};

/// A table of figures. Its cells are made when they are asked for.
struct FigureTable
{
    std::vector<FigureColumn> columns;
    int rows = 0;
    /// Row and column, both from 0.
    std::function<Figure(int, int)> figure;
    std::function<CellReceptions(int, int)> receptions;
};

/// The cell as the table shows it: days as 30/06/2025.
[[nodiscard]] QString figureText(const FigureColumn &column, const Figure &figure);

/// The table for other programs: UTF-8 with its mark, commas, CR LF, days as 2025-06-30, and no text that a
/// spreadsheet takes for a formula. `rows` says which, in which order.
[[nodiscard]] QByteArray figureCsv(const FigureTable &table, const std::vector<int> &rows);

} // namespace quillon
