#include "mutation.h"

#include <array>

namespace quillon::soak {

namespace {

constexpr qsizetype longest = 4'096;
constexpr int mostChanges = 8;
constexpr int longestPiece = 24;

// What readers stumble over.
constexpr std::array<QByteArrayView, 37> words {"|", ",", ";", "\"", "\r\n", "\n", "\r", "\t",
    QByteArrayView("\0", 1), "-", ".", "0", "99999999999999999999", "-1", "1e309", "nan", "{", "}", "[", "]",
    ":", "\\", "<", ">", "&", "\xFF", "\xC3\xA9", "\xEF\xBB\xBF", "31/02/2010", "24:60:61", "CRLF",
    "fml=", "delete", "\x1F\x8B", "=", "%", "$"};

} // namespace

Mutation::Mutation(QByteArrayList samples, quint32 seed)
    : m_samples(std::move(samples))
    , m_random(seed)
{
    m_samples += QByteArray();
}

const QByteArray &Mutation::next()
{
    m_bytes = m_samples.at(m_random.bounded(static_cast<int>(m_samples.size())));
    const int changes = m_random.bounded(mostChanges + 1);
    for (int i = 0; i < changes; ++i) {
        change();
    }
    m_bytes.truncate(longest);
    return m_bytes;
}

void Mutation::change()
{
    const auto size = static_cast<int>(m_bytes.size());
    const int place = m_random.bounded(size + 1);
    const int length = m_random.bounded(1, longestPiece);
    switch (m_random.bounded(7)) {
    case 0:
        m_bytes.remove(place, length);
        break;
    case 1:
        m_bytes.insert(place, m_bytes.mid(m_random.bounded(size + 1), length));
        break;
    case 2:
        m_bytes.insert(place, words.at(m_random.bounded(quint32 {words.size()})));
        break;
    case 3: {
        const QByteArray &other = m_samples.at(m_random.bounded(static_cast<int>(m_samples.size())));
        m_bytes = m_bytes.first(place) + other.mid(m_random.bounded(static_cast<int>(other.size()) + 1));
        break;
    }
    case 4:
        m_bytes.truncate(place);
        break;
    default:
        if (place < size) {
            m_bytes[place] = m_random.bounded(2) == 0
                ? static_cast<char>(m_random.bounded(256))
                : static_cast<char>(m_bytes.at(place) ^ (1 << m_random.bounded(8)));
        }
        break;
    }
}

} // namespace quillon::soak
