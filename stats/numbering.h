#pragma once

#include <QHash>

#include <utility>

namespace quillon {

/// Numbers things from 0 on in the order in which they are first met.
template<typename Thing>
class Numbering
{
public:
    [[nodiscard]] int of(const Thing &thing)
    {
        const auto found = m_numbers.constFind(thing);
        if (found != m_numbers.cend()) {
            return *found;
        }
        return *m_numbers.insert(thing, count());
    }
    [[nodiscard]] int count() const { return static_cast<int>(m_numbers.size()); }

private:
    QHash<Thing, int> m_numbers;
};

} // namespace quillon
