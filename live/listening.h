#pragma once

#include "live/pivote.h"
#include "live/rdsreader.h"
#include "live/receiverevent.h"
#include "live/station.h"

#include <optional>
#include <vector>

namespace quillon {

/// What is heard now: puts together what a source tells, on one frequency.
///
/// A station is certain when its PI code came in three groups with a clean block A within ten seconds (in two
/// when the log knows this code on this frequency), in three askings in a row, or when the source says so. A
/// retune ends a station at once. Everything goes by the moments given, so a recorded file can be read at
/// once.
class Listening
{
public:
    /// What carries the marks of the station before is late, so long after a retune (milliseconds).
    static constexpr qint64 lateFor = 300;
    /// So long a group without a PI code belongs to the station before it (milliseconds).
    static constexpr qint64 sameStation = 1'000;

    /// What the log knows, asked for the rule of two groups and for the new marks. It has to outlive this.
    explicit Listening(const KnownStations &known)
        : m_known(&known)
    {
    }

    /// Takes one thing that the source told at that moment (milliseconds since 1970, UTC).
    void take(const ReceiverEvent &event, qint64 when);
    /// What is heard already is on this frequency, which was not known before.
    void nameFrequency(qint64 hertz);
    /// The station ends, as with a retune, on the same frequency.
    void end(qint64 when);
    /// Forgets everything, frequency included.
    void clear();

    /// 0 while it is not known: before it was told, and after a retune that the source told without the
    /// frequency, if a station had been heard on the one before.
    [[nodiscard]] qint64 hertz() const { return m_hertz; }
    /// When this frequency was tuned to.
    [[nodiscard]] qint64 tunedAt() const { return m_tunedAt; }
    /// The station heard now; nothing before a PI code came.
    [[nodiscard]] const std::optional<Station> &station() const { return m_station; }
    /// The name as far as it has come, with "?" for what is missing, or whole.
    [[nodiscard]] QString psSoFar() const;
    [[nodiscard]] std::optional<SignalHeard> signal() const { return m_signal; }
    /// Seconds by which the station's clock is ahead of the computer's, when it is more than ten.
    [[nodiscard]] std::optional<qint64> clockOff() const { return m_clockOff; }
    /// Alternative frequencies of the station in kHz, ascending, at most 25.
    [[nodiscard]] QList<int> frequencies() const;

private:
    struct Candidate
    {
        Station station;
        RdsReader reader;
        QList<int> frequencies; ///< as the source itself has decoded them, in kHz
        int askings = 0;
        bool told = false;
    };
    struct Before
    {
        quint16 pi = 0;
        QString ps;
        QString text;
    };

    void on(const Tuned &tuned, qint64 when);
    void on(const GroupHeard &heard, qint64 when);
    void on(const PiHeard &heard, qint64 when);
    void on(const PiGone &gone, qint64 when);
    void on(const PsHeard &heard, qint64 when);
    void on(const RadiotextHeard &heard, qint64 when);
    void on(const EccHeard &heard, qint64 when);
    void on(const FrequenciesHeard &heard, qint64 when);
    void on(const ClockHeard &heard, qint64 when);
    void on(const SignalHeard &heard, qint64 when);
    void on(const StationGuess &guess, qint64 when);

    [[nodiscard]] bool isLate(qint64 when) const;
    Candidate &candidate(quint16 pi, qint64 when);
    [[nodiscard]] Candidate *current(qint64 when);
    [[nodiscard]] int votesWanted(quint16 pi) const;
    void readGroup(Candidate &candidate, const RdsGroup &group, qint64 when);
    void settle(qint64 when);
    void choose(qint64 when);
    void show(Candidate &candidate, qint64 when);
    void mark(Station &station) const;

    const KnownStations *m_known;
    qint64 m_hertz = 0;
    qint64 m_tunedAt = 0;
    bool m_together = false;
    std::optional<Before> m_before;
    PiVote m_votes;
    std::vector<Candidate> m_candidates;
    std::optional<quint16> m_lastPi; ///< to whom what comes without a PI code belongs
    qint64 m_lastPiAt = 0;
    std::optional<quint16> m_shown;
    std::optional<Station> m_station;
    QString m_psWithoutPi;
    std::optional<SignalHeard> m_signal;
    std::optional<qint64> m_clockOff;
};

} // namespace quillon
