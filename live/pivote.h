#pragma once

#include <QtGlobal>

#include <array>
#include <optional>

namespace quillon {

/// Which PI code the groups of the last ten seconds speak for.
class PiVote
{
public:
    /// How long a group counts, in milliseconds.
    static constexpr qint64 window = 10'000;

    /// A group with this code in a clean block A came at that moment (milliseconds).
    void take(quint16 pi, qint64 when);
    void clear() { m_count = 0; }

    struct Result
    {
        quint16 pi = 0;
        int votes = 0;
    };
    /// The code with the most groups among the last two dozen, about two seconds, within the window; of
    /// equals, the one heard last.
    [[nodiscard]] std::optional<Result> leading(qint64 now) const;
    /// The groups of this code within the window.
    [[nodiscard]] int votes(quint16 pi, qint64 now) const;

private:
    struct Vote
    {
        quint16 pi = 0;
        qint64 when = 0;
    };
    // Ten seconds hold 114 groups at the rate of RDS.
    static constexpr std::size_t room = 128;

    /// Calls `see(pi)` for each of the last `most` votes within the window, the newest first.
    template<typename See>
    void each(qint64 now, std::size_t most, See see) const;

    std::array<Vote, room> m_votes {};
    std::size_t m_next = 0;
    std::size_t m_count = 0;
};

} // namespace quillon
