#pragma once

#include <QString>

#include <compare>
#include <vector>

namespace quillon {

/// The generic order of two texts: numbers before other text, numbers by their value, other text by its
/// letters whatever their case.
[[nodiscard]] std::weak_ordering genericOrder(const QString &left, const QString &right);

/// Positions 0 to texts.size() - 1 in generic order, ascending or descending; equal texts stay in order.
[[nodiscard]] std::vector<int> genericSort(const std::vector<QString> &texts, bool descending = false);

} // namespace quillon
