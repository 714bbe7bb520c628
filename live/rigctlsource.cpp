#include "live/rigctlsource.h"

#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int betweenRounds = 200;
constexpr int secondsToAnswer = 5;

} // namespace

RigctlSource::RigctlSource(HostPort address, QObject *parent)
    : TcpLineSource(std::move(address), parent)
{
    m_round.setSingleShot(true);
    m_round.setInterval(betweenRounds);
    connect(&m_round, &QTimer::timeout, this, [this] {
        m_session.begin();
        ask();
    });
    m_answer.setSingleShot(true);
    connect(&m_answer, &QTimer::timeout, this, [this] { lost(u"it does not answer"_s); });
}

void RigctlSource::connectionStands()
{
    m_session = RigctlSession();
    ask();
}

void RigctlSource::hangUp()
{
    m_round.stop();
    m_answer.stop();
    m_asked = false;
    m_askNext = false;
    TcpLineSource::hangUp();
}

void RigctlSource::ask()
{
    const QByteArray question = m_session.next();
    if (question.isEmpty()) {
        m_round.start();
        return;
    }
    m_asked = true;
    m_answer.start(secondsToAnswer * second());
    send(question);
}

void RigctlSource::lineCame(QByteArrayView line)
{
    // What comes unasked would shift all answers after it.
    if (!m_asked) {
        return;
    }
    m_asked = false;
    m_answer.stop();
    m_askNext = true;
    tell(m_session.take(line));
}

// What came behind the answer is no answer to a question that was not asked yet.
void RigctlSource::linesRead()
{
    if (std::exchange(m_askNext, false) && state() == ReceiverState::Listening) {
        ask();
    }
}

void RigctlSource::tune(qint64 hertz)
{
    m_session.tune(hertz);
}

} // namespace quillon
