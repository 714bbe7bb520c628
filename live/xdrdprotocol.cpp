#include "live/xdrdprotocol.h"

#include "live/grouplines.h"

#include <QCryptographicHash>

#include <algorithm>
#include <cmath>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype digitsOfBlock = 4;
constexpr qsizetype oldGroup = 3 * digitsOfBlock + 2;
constexpr qsizetype newGroup = 4 * digitsOfBlock + 2;
constexpr qsizetype longestSalt = 64;

BlockState state(quint32 errors, unsigned shift)
{
    return static_cast<BlockState>((errors >> shift) & 3U);
}

std::optional<ReceiverEvent> tuned(QByteArrayView digits)
{
    bool ok = false;
    const qint64 kilohertz = digits.toLongLong(&ok);
    constexpr qint64 highest = 10'000'000;
    if (!ok || kilohertz <= 0 || kilohertz > highest) {
        return {};
    }
    return Tuned {kilohertz * 1000};
}

/// After "S": a letter for stereo or mono, the strength, then other figures.
std::optional<ReceiverEvent> signal(QByteArrayView rest)
{
    if (rest.size() < 2) {
        return {};
    }
    rest = rest.sliced(1);
    const qsizetype comma = rest.indexOf(',');
    bool ok = false;
    const double value = (comma < 0 ? rest : rest.first(comma)).toDouble(&ok);
    if (!ok || !std::isfinite(value) || std::abs(value) > 1000) {
        return {};
    }
    return SignalHeard {value, u"dBf"};
}

} // namespace

QByteArray xdrdLogin(QByteArrayView salt, const QString &password)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    hash.addData(salt);
    hash.addData(password.toUtf8());
    return hash.result().toHex() + '\n';
}

QByteArray xdrdTune(qint64 hertz)
{
    return 'T' + QByteArray::number((hertz + 500) / 1000) + '\n';
}

XdrdSession::Reply XdrdSession::take(QByteArrayView line)
{
    Reply reply;
    if (!m_greeted) {
        m_greeted = true;
        reply.send = xdrdLogin(line.first(std::min(line.size(), longestSalt)), m_password);
        return reply;
    }
    if (line.isEmpty()) {
        return reply;
    }
    const QByteArrayView rest = line.sliced(1);
    switch (line.front()) {
    case 'a':
        if (rest == "0") {
            reply.refused = m_password.isEmpty() ? u"it takes no guests without a password"_s
                                                 : u"it does not accept the password"_s;
        }
        break;
    case 'T':
        m_pi.reset();
        if (const auto event = tuned(rest)) {
            reply.events.push_back(*event);
        }
        break;
    case 'S':
        if (const auto event = signal(rest)) {
            reply.events.push_back(*event);
        }
        break;
    case 'P':
        if (const auto pi = hexNumber(rest.first(std::min(rest.size(), digitsOfBlock)));
            pi && rest.size() >= digitsOfBlock) {
            m_pi = static_cast<quint16>(*pi);
            m_doubt = static_cast<int>(std::count(rest.begin(), rest.end(), '?'));
            reply.events.emplace_back(PiHeard {*m_pi, PiTrust::Doubtful});
        }
        break;
    case 'R':
        takeGroup(rest, reply.events);
        break;
    default:
        break;
    }
    return reply;
}

void XdrdSession::takeGroup(QByteArrayView digits, std::vector<ReceiverEvent> &events) const
{
    if (digits.size() != newGroup && digits.size() != oldGroup) {
        return;
    }
    const bool hasA = digits.size() == newGroup;
    const auto errors = hexNumber(digits.last(2));
    if (!errors) {
        return;
    }
    RdsGroup group;
    for (std::size_t i = hasA ? 0 : 1; i < group.blocks.size(); ++i) {
        const auto block = hexNumber(digits.first(digitsOfBlock));
        if (!block) {
            return;
        }
        group.blocks[i] = static_cast<quint16>(*block);
        digits = digits.sliced(digitsOfBlock);
    }
    if (hasA) {
        group.states = {state(*errors, 6), state(*errors, 4), state(*errors, 2), state(*errors, 0)};
    } else {
        // Older firmware counts the errors of block B in the lowest bits.
        const BlockState a = m_pi ? static_cast<BlockState>(std::min(m_doubt, 3)) : BlockState::Lost;
        group.blocks[0] = m_pi.value_or(0);
        group.states = {a, state(*errors, 0), state(*errors, 2), state(*errors, 4)};
    }
    events.emplace_back(GroupHeard {group});
}

} // namespace quillon
