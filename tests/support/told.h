#pragma once

#include "live/receiver.h"
#include "live/receiversource.h"

#include <QList>

#include <memory>

namespace quillon::test {

/// A source that tells what the test wants.
class Told : public ReceiverSource
{
public:
    explicit Told(bool knowsFrequency = true)
        : m_knowsFrequency(knowsFrequency)
    {
    }
    void say(const ReceiverEvent &event, qint64 ago = 0) { Q_EMIT told(event, nowMilliseconds() - ago); }
    void sayAt(const ReceiverEvent &event, qint64 when) { Q_EMIT told(event, when); }
    /// A station, whole and certain.
    void hear(qint64 hertz, quint16 pi, const QString &ps)
    {
        tell({Tuned {hertz}, PiHeard {pi, PiTrust::Told}, PsHeard {ps}});
    }
    void end(const QString &why) { ended(why); }
    [[nodiscard]] bool canTune() const override { return true; }
    void tune(qint64 hertz) override { tunedTo += hertz; }
    [[nodiscard]] bool tellsFrequency() const override { return m_knowsFrequency; }
    QList<qint64> tunedTo;

protected:
    void attempt() override { listening(); }
    void hangUp() override { }

private:
    bool m_knowsFrequency;
};

/// The receiver listens to such a source, which it owns.
inline Told &listenTold(Receiver &receiver, bool knowsFrequency = true)
{
    auto made = std::make_unique<Told>(knowsFrequency);
    Told &source = *made;
    receiver.listenTo(std::move(made));
    return source;
}

} // namespace quillon::test
