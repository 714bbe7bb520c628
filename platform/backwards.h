#pragma once

#include <iterator>

namespace quillon {

/// A range from its end to its beginning, for a range-based for; the range has to outlive it. What
/// std::views::reverse is for, whose constraints clang 14 does not see as met.
template<typename Range>
class Backwards
{
public:
    explicit Backwards(Range &range)
        : m_range(range)
    {
    }
    [[nodiscard]] auto begin() const { return std::make_reverse_iterator(m_range.end()); }
    [[nodiscard]] auto end() const { return std::make_reverse_iterator(m_range.begin()); }

private:
    Range &m_range;
};

template<typename Range>
[[nodiscard]] Backwards<Range> backwards(Range &range)
{
    return Backwards<Range>(range);
}

} // namespace quillon
