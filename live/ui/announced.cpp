#include "live/ui/announced.h"

#include <algorithm>

namespace quillon {

bool Announced::isNew(qint64 step, quint16 pi, qint64 now)
{
    const quint64 key = (static_cast<quint64>(step) << 16U) | pi;
    const auto known = m_heard.find(key);
    if (known != m_heard.end()) {
        const bool wasAway = now - *known > awayFor;
        *known = now;
        return wasAway;
    }
    if (m_heard.size() >= most) {
        m_heard.erase(std::ranges::min_element(m_heard));
    }
    m_heard.insert(key, now);
    return true;
}

} // namespace quillon
