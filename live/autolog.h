#pragma once

#include "live/listening.h"
#include "live/station.h"

#include <QHash>
#include <QList>
#include <QString>

#include <optional>
#include <utility>

namespace quillon {

/// A station that is never logged by itself: of this frequency, of this PI code, or of both.
struct Local
{
    std::optional<qint64> hertz;
    std::optional<quint16> pi;

    bool operator==(const Local &) const = default;
};

/// True when the station is this local. One that names neither frequency nor code matches nothing.
[[nodiscard]] bool isLocal(const Local &local, const Station &station);

/// "98.5 D3C2", "98.5" or "D3C2".
[[nodiscard]] QString textOf(const Local &local);
/// Reads what textOf writes; nothing for any other text.
[[nodiscard]] std::optional<Local> readLocal(QStringView text);

/// When a station is logged without a key.
struct AutoLogRules
{
    bool on = false;
    int earliest = 5; ///< seconds after the retune
    int hold = 3; ///< seconds for which it must have been certain
    int again = 60; ///< minutes until the same code on the same frequency is logged again
    QList<Local> locals;

    bool operator==(const AutoLogRules &) const = default;
};

/// Says when what is heard is to be logged by itself: only what is certain, with a frequency, still heard,
/// and no local.
class AutoLog
{
public:
    void setRules(AutoLogRules rules) { m_rules = std::move(rules); }
    [[nodiscard]] const AutoLogRules &rules() const { return m_rules; }

    /// True when the station heard now is to be logged (milliseconds since 1970, UTC).
    [[nodiscard]] bool wants(const Listening &listening, qint64 now) const;
    /// The station was logged, by itself or by hand.
    void logged(const Station &station, qint64 now);

private:
    AutoLogRules m_rules;
    QHash<quint64, qint64> m_logged;
};

/// Learns the locals: every station that is certain during ten minutes.
class LocalsLearner
{
public:
    /// Ten minutes in milliseconds.
    static constexpr qint64 lasts = 600'000;

    void start(qint64 now);
    [[nodiscard]] bool isLearning() const { return m_startedAt.has_value(); }
    void note(const Station &station);
    /// The locals, once, when the ten minutes are over.
    [[nodiscard]] std::optional<QList<Local>> finished(qint64 now);

private:
    std::optional<qint64> m_startedAt;
    QList<Local> m_locals;
};

} // namespace quillon
