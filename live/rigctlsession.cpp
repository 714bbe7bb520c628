#include "live/rigctlsession.h"

#include "live/grouplines.h"
#include "platform/strangerstext.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quillon {

namespace {

constexpr QByteArrayView refused = "RPRT";
/// In a fifth of a second each: longer than a station takes for the next segment of its name.
constexpr int askingsOfPs = 3;

bool isRefused(QByteArrayView answer)
{
    return answer.startsWith(refused);
}

QString textOf(QByteArrayView answer, qsizetype longest)
{
    return strangersText(QString::fromUtf8(answer.first(std::min<qsizetype>(answer.size(), 1024))), longest);
}

} // namespace

void RigctlSession::begin()
{
    if (m_step == Step::Done) {
        m_step = m_tuneTo ? Step::Tune : Step::Frequency;
    }
}

QByteArray RigctlSession::next()
{
    switch (m_step) {
    case Step::Name:
        return QByteArrayLiteral("_\n");
    case Step::Can:
        return QByteArrayLiteral("p ?\n");
    case Step::Off:
        return QByteArrayLiteral("U RDS 0\n");
    case Step::On:
        return QByteArrayLiteral("U RDS 1\n");
    case Step::Frequency:
    case Step::Again:
        return QByteArrayLiteral("f\n");
    case Step::Strength:
        return QByteArrayLiteral("l STRENGTH\n");
    case Step::Pi:
        return QByteArrayLiteral("p RDS_PI\n");
    case Step::Ps:
        return QByteArrayLiteral("p RDS_PS_NAME\n");
    case Step::Text:
        return QByteArrayLiteral("p RDS_RADIOTEXT\n");
    case Step::Tune:
        m_tuneSent = m_tuneTo;
        return "F " + QByteArray::number(*m_tuneTo) + '\n';
    case Step::Done:
        break;
    }
    return {};
}

std::vector<ReceiverEvent> RigctlSession::take(QByteArrayView answer)
{
    std::vector<ReceiverEvent> events;
    switch (m_step) {
    case Step::Name:
        m_isGqrx = answer.startsWith("Gqrx");
        break;
    case Step::Can:
        takeAbilities(answer);
        break;
    case Step::Frequency:
    case Step::Again:
        takeFrequency(answer, events);
        break;
    case Step::Strength:
        takeStrength(answer, m_held);
        break;
    case Step::Pi:
    case Step::Ps:
    case Step::Text:
        takeRds(answer);
        break;
    case Step::Tune:
        // Another frequency may have been wished for since.
        if (m_tuneTo == m_tuneSent) {
            m_tuneTo.reset();
        }
        break;
    case Step::Off:
    case Step::On:
    case Step::Done:
        break;
    }
    advance();
    return events;
}

void RigctlSession::advance()
{
    switch (m_step) {
    case Step::Name:
        m_step = Step::Can;
        break;
    case Step::Can:
        m_step = m_hasRds ? Step::Off : Step::Frequency;
        break;
    case Step::Off:
        m_step = Step::On;
        break;
    case Step::On:
        m_step = m_retuned ? Step::Done : Step::Frequency;
        m_retuned = false;
        break;
    case Step::Frequency:
        m_step = m_retuned ? Step::Off : Step::Strength;
        break;
    case Step::Strength:
        m_step = m_hasRds ? Step::Pi : Step::Again;
        break;
    case Step::Pi:
        m_step = m_hasPs ? Step::Ps : m_hasText ? Step::Text : Step::Again;
        break;
    case Step::Ps:
        m_step = m_hasText ? Step::Text : Step::Again;
        break;
    case Step::Text:
        m_step = Step::Again;
        break;
    case Step::Again:
        m_step = m_retuned ? Step::Off : Step::Done;
        break;
    case Step::Tune:
        m_step = Step::Frequency;
        break;
    case Step::Done:
        break;
    }
}

void RigctlSession::takeAbilities(QByteArrayView answer)
{
    m_hasRds = answer.contains("RDS_PI");
    m_hasPs = answer.contains("RDS_PS_NAME");
    m_hasText = answer.contains("RDS_RADIOTEXT");
}

void RigctlSession::takeFrequency(QByteArrayView answer, std::vector<ReceiverEvent> &events)
{
    constexpr double highest = 1e10;
    bool ok = false;
    const double number = answer.trimmed().toDouble(&ok);
    if (!ok || !(number > 0) || number > highest) {
        m_held.clear();
        return;
    }
    const qint64 hertz = std::llround(number);
    if (hertz != m_hertz) {
        m_held.clear();
        m_sameAnswers = 0;
        m_retuned = m_hasRds && m_hertz != 0;
        m_hertz = hertz;
        events.emplace_back(Tuned {hertz});
    } else if (m_step == Step::Again) {
        events = std::exchange(m_held, {});
    }
}

void RigctlSession::takeStrength(QByteArrayView answer, std::vector<ReceiverEvent> &events) const
{
    bool ok = false;
    const double value = answer.trimmed().toDouble(&ok);
    if (ok && std::isfinite(value) && std::abs(value) <= 1000) {
        events.emplace_back(SignalHeard {value, m_isGqrx ? QStringView(u"dBFS") : QStringView(u"dB")});
    }
}

void RigctlSession::takeRds(QByteArrayView answer)
{
    if (isRefused(answer)) {
        return;
    }
    if (m_step == Step::Ps) {
        takePs(textOf(answer, longestPs));
    } else if (m_step == Step::Text) {
        m_held.emplace_back(RadiotextHeard {textOf(answer, longestRadiotext)});
    } else if (const auto pi = hexNumber(answer.trimmed()); pi && *pi > 0 && *pi <= 0xFFFF) {
        if (*pi != m_piOfPs) {
            m_piOfPs = static_cast<quint16>(*pi);
            m_sameAnswers = 0;
        }
        m_held.emplace_back(PiHeard {static_cast<quint16>(*pi), PiTrust::Asked});
    } else {
        m_held.emplace_back(PiGone {});
    }
}

void RigctlSession::takePs(const QString &ps)
{
    m_sameAnswers = m_sameAnswers > 0 && ps == m_ps ? std::min(m_sameAnswers + 1, askingsOfPs) : 1;
    m_ps = ps;
    if (m_sameAnswers == askingsOfPs && !ps.trimmed().isEmpty()) {
        m_held.emplace_back(PsHeard {ps});
    }
}

} // namespace quillon
