#pragma once

#include <QSet>
#include <QString>

#include <array>
#include <cstdint>

namespace quillon {

/// The different texts out of many. Equal texts of a log mostly share their letters, and what was seen lately
/// is known by where its letters are: they have to stay there until the last text is in.
class DistinctTexts
{
public:
    /// Empty texts are left out.
    void insert(const QString &text)
    {
        const QChar *letters = text.constData();
        const QChar *&seen = m_seen[(reinterpret_cast<std::uintptr_t>(letters) >> 4U) % m_seen.size()];
        if (seen != letters && !text.isEmpty()) {
            m_all.insert(text);
            seen = letters;
        }
    }
    [[nodiscard]] const QSet<QString> &all() const { return m_all; }

private:
    std::array<const QChar *, 256> m_seen {};
    QSet<QString> m_all;
};

} // namespace quillon
