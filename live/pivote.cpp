#include "live/pivote.h"

#include <algorithm>

namespace quillon {

namespace {

/// A station that takes the frequency over leads after a second.
constexpr std::size_t lately = 24;

} // namespace

void PiVote::take(quint16 pi, qint64 when)
{
    m_votes[m_next] = {pi, when};
    m_next = (m_next + 1) % room;
    m_count = std::min(m_count + 1, room);
}

template<typename See>
void PiVote::each(qint64 now, std::size_t most, See see) const
{
    for (std::size_t back = 1; back <= std::min(m_count, most); ++back) {
        const Vote &vote = m_votes[(m_next + room - back) % room];
        if (vote.when < now - window) {
            return;
        }
        see(vote.pi);
    }
}

std::optional<PiVote::Result> PiVote::leading(qint64 now) const
{
    std::array<Result, lately> results;
    std::size_t codes = 0;
    each(now, lately, [&](quint16 pi) {
        std::size_t i = 0;
        while (i < codes && results[i].pi != pi) {
            ++i;
        }
        if (i == codes) {
            results[codes++] = {pi, 0};
        }
        ++results[i].votes;
    });
    if (codes == 0) {
        return {};
    }
    return *std::max_element(results.begin(), results.begin() + codes,
        [](const Result &one, const Result &other) { return one.votes < other.votes; });
}

int PiVote::votes(quint16 pi, qint64 now) const
{
    int votes = 0;
    each(now, room, [&](quint16 code) { votes += code == pi ? 1 : 0; });
    return votes;
}

} // namespace quillon
