#include "live/receiversource.h"

#include "platform/strangerstext.h"

#include <QDateTime>

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int longestPause = 30;
constexpr int mostDoublings = 5;
constexpr int secondsOfSilence = 30;
/// A server may have had its say in it.
constexpr qsizetype longestReason = 300;

} // namespace

QString stateText(ReceiverState state)
{
    switch (state) {
    case ReceiverState::NotConnected:
        return u"not connected"_s;
    case ReceiverState::Connecting:
        return u"connecting"_s;
    case ReceiverState::Listening:
        return u"listening"_s;
    case ReceiverState::Lost:
        return u"lost"_s;
    }
    return {};
}

qint64 nowMilliseconds()
{
    return QDateTime::currentMSecsSinceEpoch();
}

void ReceiverSource::start()
{
    stop();
    m_wanted = true;
    m_tries = 0;
    m_again.setSingleShot(true);
    connect(&m_again, &QTimer::timeout, this, &ReceiverSource::attempt, Qt::UniqueConnection);
    m_silence.setSingleShot(true);
    connect(&m_silence, &QTimer::timeout, this, &ReceiverSource::fallSilent, Qt::UniqueConnection);
    setState(ReceiverState::Connecting, {});
    attempt();
}

void ReceiverSource::stop()
{
    m_wanted = false;
    m_again.stop();
    m_silence.stop();
    hangUp();
    setState(ReceiverState::NotConnected, {});
}

void ReceiverSource::listening()
{
    m_tries = 0;
    setState(ReceiverState::Listening, {});
}

void ReceiverSource::lost(const QString &why)
{
    if (!m_wanted || m_again.isActive()) {
        return;
    }
    m_silence.stop();
    hangUp();
    m_again.start(std::min(1 << m_tries, longestPause) * m_second);
    m_tries = std::min(m_tries + 1, mostDoublings);
    setState(ReceiverState::Lost, why);
}

void ReceiverSource::ended(const QString &why)
{
    stop();
    setState(ReceiverState::NotConnected, why);
}

void ReceiverSource::somethingCame()
{
    if (m_wanted) {
        m_silence.start(secondsOfSilence * m_second);
    }
}

void ReceiverSource::fallSilent()
{
    lost(u"nothing has come for %1 seconds"_s.arg(secondsOfSilence));
}

void ReceiverSource::tell(const std::vector<ReceiverEvent> &events)
{
    const qint64 now = events.empty() ? 0 : nowMilliseconds();
    for (const ReceiverEvent &event : events) {
        Q_EMIT told(event, now);
    }
}

void ReceiverSource::setState(ReceiverState state, const QString &reason)
{
    const QString why = strangersText(reason, longestReason);
    if (m_state != state || m_why != why) {
        m_state = state;
        m_why = why;
        Q_EMIT stateChanged();
    }
}

} // namespace quillon
