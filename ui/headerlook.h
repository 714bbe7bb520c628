#pragma once

#include <QHeaderView>
#include <QList>

#include <optional>

namespace quillon {

/// The columns of a table as the user has them. All lists have an item for each column.
struct HeaderLook
{
    QList<int> order; ///< the columns from left to right
    QList<int> widths; ///< by column, in pixels; 0 leaves the width as it is
    QList<int> hidden; ///< by column, 0 or 1

    bool operator==(const HeaderLook &) const = default;
};

[[nodiscard]] HeaderLook lookOf(const QHeaderView &header);

/// Columns beyond the look stay as they are, at the end. A look that is none (an order with gaps, no column
/// shown, more columns than there are) changes nothing, and false is returned.
bool applyLook(QHeaderView &header, const HeaderLook &look);

} // namespace quillon
