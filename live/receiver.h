#pragma once

#include "live/heardtable.h"
#include "live/listening.h"
#include "live/sources.h"

#include <QObject>
#include <QTimer>

#include <memory>

namespace quillon {

/// One receiver: its source, what is heard now, and what was heard since the start.
class Receiver : public QObject
{
    Q_OBJECT

public:
    /// Between something that was told and changed(), in milliseconds: many groups make one change.
    static constexpr int gathered = 25;

    explicit Receiver(QObject *parent = nullptr);

    /// Connects to a source; the one before ends. Returns what is wrong with the settings, or an empty text.
    [[nodiscard]] QString connectTo(const SourceSettings &settings);
    /// Listens to this source.
    void listenTo(std::unique_ptr<ReceiverSource> source);
    /// Ends the source, and with it what was heard now.
    void disconnectFrom();

    [[nodiscard]] ReceiverState state() const;
    [[nodiscard]] QString why() const;
    [[nodiscard]] bool canTune() const;
    void tune(qint64 hertz);
    /// True when the frequency has to be typed.
    [[nodiscard]] bool wantsFrequency() const;
    /// The frequency of a source that does not tell it. It ends the station before, unless none was known:
    /// then it is that of the station heard now.
    void setFrequency(qint64 hertz);

    /// True when the receiver was tuned, nobody knows where to, long after the frequency was typed, and
    /// nothing had been heard on it: it may be that of before. Typed again, it is in doubt no more.
    [[nodiscard]] bool isFrequencyInDoubt() const { return m_inDoubt; }

    /// What the log knows.
    void setKnown(KnownStations known) { m_known = std::move(known); }
    [[nodiscard]] KnownStations &known() { return m_known; }

    [[nodiscard]] const Listening &listening() const { return m_listening; }
    [[nodiscard]] const HeardTable &heard() const { return m_heard; }
    /// The row of the station is logged.
    void setLogged(const Station &station);
    /// The log has changed: the rows that it has now are the logged ones.
    void findLogged(const Logbook &log);

Q_SIGNALS:
    void stateChanged();
    /// What is heard has changed.
    void changed();

private:
    void take(const ReceiverEvent &event, qint64 when);

    std::unique_ptr<ReceiverSource> m_source;
    bool m_typed = false; ///< the frequency was not told by a source
    qint64 m_typedAt = 0;
    bool m_inDoubt = false;
    KnownStations m_known;
    Listening m_listening;
    HeardTable m_heard;
    QTimer m_gather;
};

} // namespace quillon
