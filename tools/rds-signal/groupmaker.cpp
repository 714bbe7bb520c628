#include "rds-signal/groupmaker.h"

#include "live/rdscharset.h"
#include "platform/strangerstext.h"

#include <algorithm>

namespace quillon::rdssignal {

namespace {

constexpr qint64 modifiedJulianDay1970 = 40587;
/// Popular music with traffic programme, as blocks B have it.
constexpr unsigned programme = 0x0400U | (10U << 5U);

quint8 byteOf(QChar c)
{
    for (int byte = 0x20; byte <= 0xFF; ++byte) {
        if (rdsCharacter(static_cast<quint8>(byte)) == c) {
            return static_cast<quint8>(byte);
        }
    }
    return c == u'\r' ? 0x0D : '?';
}

quint16 pairOf(const QByteArray &bytes, int at)
{
    return static_cast<quint16>((static_cast<quint8>(bytes[at]) << 8U) | static_cast<quint8>(bytes[at + 1]));
}

quint16 blockB(unsigned type, bool versionB, unsigned rest)
{
    return static_cast<quint16>((type << 12U) | (versionB ? 0x0800U : 0U) | programme | rest);
}

} // namespace

QByteArray rdsBytes(QStringView text, qsizetype length)
{
    QByteArray bytes;
    for (const QChar c : text.left(length)) {
        bytes.append(static_cast<char>(byteOf(c)));
    }
    return bytes.leftJustified(length, ' ');
}

RdsGroup nameGroup(quint16 pi, const QByteArray &ps, int segment, quint16 frequencies)
{
    return {{pi, blockB(0, false, 8U | static_cast<unsigned>(segment)), frequencies, pairOf(ps, 2 * segment)},
        {}};
}

RdsGroup nameGroupB(quint16 pi, const QByteArray &ps, int segment)
{
    return {{pi, blockB(0, true, 8U | static_cast<unsigned>(segment)), pi, pairOf(ps, 2 * segment)}, {}};
}

RdsGroup countryGroup(quint16 pi, quint8 ecc)
{
    return {{pi, blockB(1, false, 0), ecc, 0}, {}};
}

RdsGroup textGroup(quint16 pi, const QByteArray &text, int segment, bool flag)
{
    const unsigned rest = (flag ? 0x10U : 0U) | static_cast<unsigned>(segment);
    return {{pi, blockB(2, false, rest), pairOf(text, 4 * segment), pairOf(text, 4 * segment + 2)}, {}};
}

RdsGroup textGroupB(quint16 pi, const QByteArray &text, int segment, bool flag)
{
    const unsigned rest = (flag ? 0x10U : 0U) | static_cast<unsigned>(segment);
    return {{pi, blockB(2, true, rest), pi, pairOf(text, 2 * segment)}, {}};
}

RdsGroup clockGroup(quint16 pi, DateTime moment)
{
    const CivilTime time = civil(moment);
    const auto day = static_cast<unsigned>(moment.seconds / secondsPerDay + modifiedJulianDay1970);
    const auto hour = static_cast<unsigned>(time.hour);
    const auto minute = static_cast<unsigned>(time.minute);
    const auto c = static_cast<quint16>(((day & 0x7FFFU) << 1U) | (hour >> 4U));
    const auto d = static_cast<quint16>(((hour & 0xFU) << 12U) | (minute << 6U));
    return {{pi, blockB(4, false, day >> 15U), c, d}, {}};
}

GroupMaker::GroupMaker(const SignalStation &station)
    : m_station(station)
    , m_ps(rdsBytes(station.ps, longestPs))
{
    const QString text = station.text.left(longestRadiotext);
    if (!text.isEmpty()) {
        const QString marked = text.size() < longestRadiotext ? text + u'\r' : text;
        m_segments = static_cast<int>((marked.size() + 3) / 4);
        m_text = rdsBytes(marked, longestRadiotext);
    }
}

qint64 GroupMaker::elapsed() const
{
    return static_cast<qint64>(static_cast<double>(m_groups * qint64 {bitsOfGroup}) * 1000.0 / bitRate);
}

RdsGroup GroupMaker::next()
{
    const qint64 before = elapsed();
    const qint64 turn = m_groups++ % 10;
    const quint16 pi = m_station.pi;
    if (m_station.clock) {
        const qint64 minutes = (m_station.clock->seconds + before / 1000) / 60;
        if (minutes != m_minutes) {
            m_minutes = minutes;
            return clockGroup(pi, DateTime {minutes * 60});
        }
    }
    if (turn == 9 && m_station.ecc != 0) {
        return countryGroup(pi, m_station.ecc);
    }
    if (turn % 3 == 2 && m_segments > 0) {
        return textGroup(pi, m_text, m_ofText++ % m_segments);
    }
    const int segment = m_ofName++ % 4;
    constexpr qint64 lowest = 87'600'000;
    constexpr qint64 highest = 107'900'000;
    const bool inBand = m_station.hertz >= lowest && m_station.hertz <= highest;
    const auto code = static_cast<quint16>((m_station.hertz - 87'500'000 + 50'000) / 100'000);
    return nameGroup(pi, m_ps, segment, inBand ? static_cast<quint16>(0xE100U | code) : quint16 {0xE0CD});
}

} // namespace quillon::rdssignal
