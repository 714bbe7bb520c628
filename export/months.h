#pragma once

#include "platform/regional.h"

#include <array>

namespace quillon {

/// The month names that exports use in file names, links and labels alike: those of the locale, or the
/// English ones where the code page cannot write all abbreviations of the locale or a link cannot hold them.
[[nodiscard]] MonthNames exportMonths(const Regional &regional);

/// Tells months apart as their texts do.
class MonthKeys
{
public:
    explicit MonthKeys(const MonthNames &months);

    /// A number that two moments share exactly when both their "yyyy" and their "mmm" texts are equal.
    [[nodiscard]] int of(DateTime moment) const;

private:
    std::array<int, 12> m_months {};
};

} // namespace quillon
