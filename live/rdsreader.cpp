#include "live/rdsreader.h"

#include "live/rdscharset.h"

#include <algorithm>

namespace quillon {

namespace {

constexpr int groupName = 0;
constexpr int groupCountry = 1;
constexpr int groupText = 2;
constexpr int groupClock = 4;

constexpr qsizetype mostFrequencies = 25;
constexpr int highestFrequencyCode = 204;
constexpr int longOrMediumWave = 250;
constexpr qint64 modifiedJulianDay1970 = 40587;

bool isClean(const RdsGroup &group, std::size_t block)
{
    return group.states[block] == BlockState::Clean;
}

bool isGood(const RdsGroup &group, std::size_t block)
{
    return group.states[block] <= BlockState::Corrected;
}

quint8 high(quint16 block)
{
    return static_cast<quint8>(block >> 8U);
}

quint8 low(quint16 block)
{
    return static_cast<quint8>(block & 0xFFU);
}

} // namespace

std::optional<int> alternativeKilohertz(int code)
{
    return code >= 1 && code <= highestFrequencyCode ? std::optional(87'500 + 100 * code) : std::nullopt;
}

bool addFrequency(QList<int> &frequencies, int kilohertz)
{
    const auto place = std::ranges::lower_bound(frequencies, kilohertz);
    if (frequencies.size() >= mostFrequencies || (place != frequencies.end() && *place == kilohertz)) {
        return false;
    }
    frequencies.insert(place, kilohertz);
    return true;
}

RdsReader::Changes RdsReader::take(const RdsGroup &group)
{
    Changes changes;
    // Block B says what the others mean: one mended wrongly would put letters in the wrong place.
    if (!isClean(group, 1)) {
        return changes;
    }
    const bool versionB = (group.blocks[1] & 0x0800U) != 0;
    switch (group.blocks[1] >> 12U) {
    case groupName:
        takeName(group, versionB, changes);
        break;
    case groupCountry:
        if (!versionB && isClean(group, 2)) {
            takeEcc(group.blocks[2], changes);
        }
        break;
    case groupText:
        takeText(group, versionB, changes);
        break;
    case groupClock:
        if (!versionB && isClean(group, 2) && isClean(group, 3)) {
            takeClock(group, changes);
        }
        break;
    default:
        break;
    }
    return changes;
}

void RdsReader::takeName(const RdsGroup &group, bool versionB, Changes &changes)
{
    if (isGood(group, 3)) {
        changes.ps = m_ps.take(group.blocks[1] & 3U, group.blocks[3]);
    }
    if (!versionB && isClean(group, 2)) {
        takeFrequencies(group.blocks[2], changes);
    }
}

void RdsReader::takeFrequencies(quint16 pair, Changes &changes)
{
    if (high(pair) == longOrMediumWave) {
        return;
    }
    for (const int code : {int(high(pair)), int(low(pair))}) {
        const auto kilohertz = alternativeKilohertz(code);
        if (!kilohertz) {
            continue;
        }
        if (!m_frequencyOnce.test(static_cast<std::size_t>(code))) {
            m_frequencyOnce.set(static_cast<std::size_t>(code));
            continue;
        }
        changes.frequencies = addFrequency(m_frequencies, *kilohertz) || changes.frequencies;
    }
}

void RdsReader::takeEcc(quint16 block, Changes &changes)
{
    constexpr unsigned variant = 0x7000U;
    if ((block & variant) != 0 || low(block) == 0) {
        return;
    }
    const quint8 ecc = low(block);
    if (m_eccOnce == ecc && m_ecc != ecc) {
        m_ecc = ecc;
        changes.ecc = true;
    }
    m_eccOnce = ecc;
}

void RdsReader::takeText(const RdsGroup &group, bool versionB, Changes &changes)
{
    const int segment = group.blocks[1] & 0xFU;
    const bool flag = (group.blocks[1] & 0x10U) != 0;
    const quint16 c = group.blocks[2];
    const quint16 d = group.blocks[3];
    const unsigned goodD = isClean(group, 3) ? 3U : 0U;
    if (versionB) {
        changes.text = m_text.take(segment, 2, flag, {high(d), low(d), 0, 0}, goodD);
    } else {
        const unsigned goodC = isClean(group, 2) ? 3U : 0U;
        changes.text =
            m_text.take(segment, 4, flag, {high(c), low(c), high(d), low(d)}, goodC | (goodD << 2U));
    }
}

void RdsReader::takeClock(const RdsGroup &group, Changes &changes)
{
    if (const auto clock = rdsClock(group.blocks[1], group.blocks[2], group.blocks[3])) {
        m_clock = clock;
        changes.clock = true;
    }
}

std::optional<DateTime> rdsClock(quint16 b, quint16 c, quint16 d)
{
    const qint64 day = ((b & 3U) << 15U) | (c >> 1U);
    const qint64 hour = ((c & 1U) << 4U) | (d >> 12U);
    const qint64 minute = (d >> 6U) & 0x3FU;
    if (day < modifiedJulianDay1970 || hour > 23 || minute > 59) {
        return {};
    }
    return DateTime {(day - modifiedJulianDay1970) * secondsPerDay + hour * 3600 + minute * 60};
}

bool PsReader::take(int segment, quint16 characters)
{
    Segment &part = m_segments[static_cast<std::size_t>(segment)];
    if (part.characters != characters || part.times == 0) {
        part.characters = characters;
        part.times = 1;
        return false;
    }
    part.times = 2;
    quint16 &stands = m_name[static_cast<std::size_t>(segment)];
    if (part.confirmed && stands == characters) {
        return false;
    }
    if (part.confirmed) {
        for (Segment &other : m_segments) {
            other.confirmed = false;
        }
    }
    part.confirmed = true;
    stands = characters;
    if (!std::ranges::all_of(m_segments, &Segment::confirmed)) {
        return false;
    }
    QString whole = soFar();
    if (whole == m_ps) {
        return false;
    }
    m_ps = std::move(whole);
    return true;
}

QString PsReader::soFar() const
{
    if (std::ranges::none_of(m_segments, &Segment::confirmed)) {
        return {};
    }
    QString text;
    for (std::size_t i = 0; i < m_segments.size(); ++i) {
        const bool confirmed = m_segments[i].confirmed;
        text += confirmed ? rdsCharacter(high(m_name[i])) : QChar(u'?');
        text += confirmed ? rdsCharacter(low(m_name[i])) : QChar(u'?');
    }
    return text;
}

void RadiotextReader::clear()
{
    m_known.fill(false);
    m_lastSegment = -1;
    m_end = 0;
    m_endOfRound = 0;
}

bool RadiotextReader::take(int segment, int width, bool flag, std::array<quint8, 4> characters, unsigned good)
{
    if (m_flag != flag) {
        clear();
        m_flag = flag;
    }
    const auto isOther = [&](int i) {
        const int place = segment * width + i;
        const auto at = static_cast<std::size_t>(place);
        return (good & (1U << static_cast<unsigned>(i))) != 0 && m_known[at]
            && m_characters[at] != characters[static_cast<std::size_t>(i)];
    };
    // Not every station turns the flag for a new text.
    if (isOther(0) || isOther(1) || (width > 2 && (isOther(2) || isOther(3)))) {
        clear();
    }
    bool changed = false;
    if (segment < m_lastSegment) {
        changed = m_end == m_endOfRound && tell();
        m_endOfRound = m_end;
    }
    m_lastSegment = segment;
    for (int i = 0; i < width; ++i) {
        if ((good & (1U << static_cast<unsigned>(i))) == 0) {
            continue;
        }
        const int place = segment * width + i;
        const auto at = static_cast<std::size_t>(place);
        m_characters[at] = characters[static_cast<std::size_t>(i)];
        m_known[at] = true;
        m_end = std::max(m_end, place + 1);
    }
    const bool whole = m_end == 16 * width;
    const auto *const endMark = std::find(m_characters.begin(), m_characters.begin() + m_end, quint8 {0x0D});
    if (whole || endMark != m_characters.begin() + m_end) {
        changed = tell() || changed;
    }
    return changed;
}

bool RadiotextReader::tell()
{
    int length = 0;
    for (; length < m_end; ++length) {
        const auto at = static_cast<std::size_t>(length);
        if (!m_known[at]) {
            return false;
        }
        if (m_characters[at] == 0x0D) {
            break;
        }
    }
    QString text = rdsText(QByteArrayView(m_characters.data(), length));
    while (text.endsWith(u' ')) {
        text.chop(1);
    }
    if (text.isEmpty() || text == m_text) {
        return false;
    }
    m_text = std::move(text);
    return true;
}

} // namespace quillon
