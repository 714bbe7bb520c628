#pragma once

#include "live/receiverevent.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <vector>

namespace quillon {

/// How it stands with a source.
enum class ReceiverState { NotConnected, Connecting, Listening, Lost };

/// "not connected", "connecting", "listening", "lost".
[[nodiscard]] QString stateText(ReceiverState state);

/// Something that tells what a radio receives. Works on the event loop of its thread and never waits.
///
/// A source that is gone is tried again after 1, 2, 4, 8, 16, 30, 30 ... seconds until it is stopped; it
/// stays "lost" meanwhile.
class ReceiverSource : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    void start();
    void stop();
    [[nodiscard]] ReceiverState state() const { return m_state; }
    /// Why it is not connected or lost, in words; empty when there is nothing to say.
    [[nodiscard]] const QString &why() const { return m_why; }

    [[nodiscard]] virtual bool canTune() const { return false; }
    /// Asks the receiver to tune, where it can.
    virtual void tune(qint64 /*hertz*/) { }
    /// False for a source that cannot say what frequency is tuned.
    [[nodiscard]] virtual bool tellsFrequency() const { return true; }

    /// What counts as a second between two tries, in milliseconds.
    void setSecond(int milliseconds) { m_second = milliseconds; }

Q_SIGNALS:
    void stateChanged();
    /// `when` in milliseconds since 1970: UTC, or as a recorded file has it.
    void told(const quillon::ReceiverEvent &event, qint64 when);

protected:
    /// Tries to reach the source; ends in listening(), lost() or ended().
    virtual void attempt() = 0;
    /// Lets go of everything that attempt() began.
    virtual void hangUp() = 0;

    void listening();
    /// The source is gone: it is tried again later.
    void lost(const QString &why);
    /// There is no sense in trying again.
    void ended(const QString &why);
    /// To be called by a source that is never silent for long, with all that comes: it is lost when nothing
    /// has come for 30 seconds, since whoever vanishes without a word leaves the connection standing.
    void somethingCame();
    void tell(const std::vector<ReceiverEvent> &events);
    [[nodiscard]] int second() const { return m_second; }

private:
    void setState(ReceiverState state, const QString &reason);
    void fallSilent();

    ReceiverState m_state = ReceiverState::NotConnected;
    QString m_why;
    QTimer m_again;
    QTimer m_silence;
    int m_second = 1'000;
    int m_tries = 0;
    bool m_wanted = false;
};

/// Milliseconds since 1970, UTC.
[[nodiscard]] qint64 nowMilliseconds();

} // namespace quillon
