#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace quillon::soak {

/// How long something may take before it counts as hanging (milliseconds). CTest waits longer.
inline constexpr int patience = 250'000;

/// What a round of cases came to.
struct Outcome
{
    qint64 cases = 0;
    qint64 lost = 0; ///< cases after which something was not as promised
    qint64 crashes = 0; ///< cases in which the program ended by itself, or hung
    QString problem; ///< the first of them; empty when there is none

    void lose(const QString &what)
    {
        ++lost;
        note(what);
    }
    void crash(const QString &what)
    {
        ++crashes;
        note(what);
    }

private:
    void note(const QString &what)
    {
        if (problem.isEmpty()) {
            problem = what;
        }
    }
};

/// The outcome of some work in a process of its own. What ends that process is a crash; so is taking longer
/// than these milliseconds.
[[nodiscard]] Outcome outcomeOf(const std::function<void(Outcome &outcome)> &work, int within = patience);

/// What a round works on.
struct Round
{
    QString root; ///< an empty folder of its own
    quint32 seed = 0; ///< the same seed makes the same round, but for the moments of what runs beside it
    qint64 wanted = 0; ///< how many cases there are to be in all, 0 when there is a time instead
    qint64 milliseconds = 0; ///< what is left of that time, 0 when there is none
};

/// A kind of trouble.
struct Kind
{
    QString name;
    QString what; ///< in a line
    QString unit; ///< what is counted
    /// A few seconds of it.
    std::function<Outcome(const Round &)> round;
    /// A round without a case: what the machine lacks, which is told and is no failure. Empty where a machine
    /// can lack nothing.
    QString lacking = {};
};

/// All kinds, in the order in which they are run.
[[nodiscard]] const std::vector<Kind> &kinds();

// The rounds of each.
[[nodiscard]] Outcome killsRound(const Round &round);
[[nodiscard]] Outcome programRound(const Round &round);
[[nodiscard]] Outcome diskRound(const Round &round);
[[nodiscard]] Outcome savesRound(const Round &round);
[[nodiscard]] Outcome pagesRound(const Round &round);
[[nodiscard]] Outcome callsRound(const Round &round);
[[nodiscard]] Outcome folderRound(const Round &round);
[[nodiscard]] Outcome inputRound(const Round &round);
[[nodiscard]] Outcome fuzzRound(const Round &round);
[[nodiscard]] Outcome longRound(const Round &round);

} // namespace quillon::soak
