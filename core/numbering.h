#pragma once

#include <QHash>
#include <QString>

#include <cstring>
#include <optional>
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

/// Numbers texts, in no order. Those of up to four letters, as PI codes and countries are, go by their
/// letters: to compare texts is to wait for where they lie in memory.
class TextNumbering
{
public:
    /// The number of a text: the same for the same text, another for every other.
    [[nodiscard]] int of(const QString &text)
    {
        const auto letters = lettersOf(text);
        return letters ? 2 * m_short.of(*letters) : 2 * m_long.of(text) + 1;
    }

private:
    [[nodiscard]] static std::optional<quint64> lettersOf(const QString &text)
    {
        quint64 letters = 0;
        if (text.size() > qsizetype(sizeof letters / sizeof(QChar)) || text.contains(QChar())) {
            return std::nullopt;
        }
        std::memcpy(&letters, text.constData(), static_cast<std::size_t>(text.size()) * sizeof(QChar));
        return letters;
    }

    Numbering<quint64> m_short;
    Numbering<QString> m_long;
};

} // namespace quillon
