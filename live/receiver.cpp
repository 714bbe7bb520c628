#include "live/receiver.h"

namespace quillon {

namespace {

/// Whoever types a frequency ahead tunes to it soon, in milliseconds.
constexpr qint64 typedAhead = 10'000;

} // namespace

Receiver::Receiver(QObject *parent)
    : QObject(parent)
    , m_listening(m_known)
{
    m_gather.setSingleShot(true);
    m_gather.setInterval(gathered);
    connect(&m_gather, &QTimer::timeout, this, &Receiver::changed);
}

QString Receiver::connectTo(const SourceSettings &settings)
{
    MadeSource made = makeSource(settings);
    if (made.source) {
        listenTo(std::move(made.source));
    }
    return made.wrong;
}

void Receiver::listenTo(std::unique_ptr<ReceiverSource> source)
{
    const qint64 typed = m_typed && !source->tellsFrequency() ? m_listening.hertz() : 0;
    disconnectFrom();
    m_listening.clear();
    m_source = std::move(source);
    m_typed = typed > 0;
    m_inDoubt = false;
    if (typed > 0) {
        m_listening.take(Tuned {typed}, nowMilliseconds());
    }
    connect(m_source.get(), &ReceiverSource::stateChanged, this, [this] {
        // What is heard when the source is back is heard anew.
        if (state() == ReceiverState::Lost) {
            m_listening.end(nowMilliseconds());
            Q_EMIT changed();
        }
        Q_EMIT stateChanged();
    });
    connect(m_source.get(), &ReceiverSource::told, this, &Receiver::take);
    m_source->start();
    Q_EMIT changed();
}

void Receiver::disconnectFrom()
{
    if (m_source) {
        m_source->disconnect(this);
        m_source->stop();
        // It may be the one that is speaking.
        m_source.release()->deleteLater();
        // The frequency stays, as one that was typed has to.
        m_listening.end(nowMilliseconds());
        Q_EMIT stateChanged();
        Q_EMIT changed();
    }
}

ReceiverState Receiver::state() const
{
    return m_source ? m_source->state() : ReceiverState::NotConnected;
}

QString Receiver::why() const
{
    return m_source ? m_source->why() : QString();
}

bool Receiver::canTune() const
{
    return m_source && m_source->canTune();
}

void Receiver::tune(qint64 hertz)
{
    if (canTune()) {
        m_source->tune(hertz);
    }
}

bool Receiver::wantsFrequency() const
{
    return m_source && !m_source->tellsFrequency();
}

void Receiver::setFrequency(qint64 hertz)
{
    if (hertz <= 0) {
        return;
    }
    m_typed = true;
    m_typedAt = nowMilliseconds();
    m_inDoubt = false;
    if (m_listening.hertz() == 0) {
        m_listening.nameFrequency(hertz);
        if (const auto &station = m_listening.station()) {
            m_heard.nameFrequency(*station);
            m_heard.note(*station);
        }
        Q_EMIT changed();
    } else {
        take(Tuned {hertz}, nowMilliseconds());
    }
}

void Receiver::setLogged(const Station &station)
{
    m_heard.setLogged(station);
    Q_EMIT changed();
}

void Receiver::findLogged(const Logbook &log)
{
    if (m_heard.findLogged(log)) {
        Q_EMIT changed();
    }
}

void Receiver::take(const ReceiverEvent &event, qint64 when)
{
    m_listening.take(event, when);
    if (const auto *const tuned = std::get_if<Tuned>(&event); tuned != nullptr && tuned->hertz == 0) {
        m_inDoubt = m_listening.hertz() > 0 && when - m_typedAt > typedAhead;
    }
    if (const auto &station = m_listening.station()) {
        m_heard.note(*station);
    }
    if (!m_gather.isActive()) {
        m_gather.start();
    }
}

} // namespace quillon
