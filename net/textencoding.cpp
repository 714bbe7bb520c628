#include "net/textencoding.h"

#include "platform/numbers.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype referenceLength = 6;

bool isKept(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

// The number of the reference that begins the text; nothing when none does.
std::optional<std::size_t> referenceAt(QStringView text)
{
    if (text.size() < referenceLength || text[0] != u'&' || text[1] != u'#' || !isDigit(text[2])
        || !isDigit(text[3]) || !isDigit(text[4]) || text[5] != u';') {
        return std::nullopt;
    }
    const auto digit = [text](qsizetype at) { return static_cast<std::size_t>(text[at].unicode() - u'0'); };
    return digit(2) * 100 + digit(3) * 10 + digit(4);
}

// Where each of the thousand references matches in the text, in rising order.
using MatchPositions = std::array<std::vector<qsizetype>, 1000>;

MatchPositions matchPositions(QStringView text)
{
    MatchPositions matches;
    for (qsizetype i = 0; i < text.size() - referenceLength; ++i) {
        if (const auto reference = referenceAt(text.sliced(i, referenceLength))) {
            matches[*reference].push_back(i);
        }
    }
    return matches;
}

// Gives in one pass what a removal of all equal references for each match in turn would give. The position of
// a match serves as the time of its removals: a reference that exists from the start goes at the first equal
// match, one that a removal at time t puts together goes at the first equal match after t.
class ReferenceStripper
{
public:
    ReferenceStripper(const MatchPositions &matches, qsizetype size)
        : m_matches(matches)
    {
        m_text.reserve(size);
    }

    void add(QChar c)
    {
        m_text += c;
        if (c == u';' && m_text.size() >= referenceLength) {
            removeLast();
        }
    }

    [[nodiscard]] QString text() const { return m_text; }

private:
    // Something was removed just before the character `at`, the last of it at `time`.
    struct Gap
    {
        qsizetype at;
        qsizetype time;
    };

    void removeLast()
    {
        const qsizetype begin = m_text.size() - referenceLength;
        const auto reference = referenceAt(QStringView(m_text).sliced(begin));
        if (!reference) {
            return;
        }
        qsizetype formed = -1;
        auto inside = m_gaps.size();
        while (inside > 0 && m_gaps[inside - 1].at > begin) {
            formed = std::max(formed, m_gaps[--inside].time);
        }
        const auto &times = m_matches[*reference];
        const auto removal = std::ranges::upper_bound(times, formed);
        if (removal == times.end()) {
            return;
        }
        m_gaps.resize(inside);
        m_text.truncate(begin);
        if (!m_gaps.empty() && m_gaps.back().at == begin) {
            m_gaps.back().time = std::max(m_gaps.back().time, *removal);
        } else {
            m_gaps.push_back({begin, *removal});
        }
    }

    const MatchPositions &m_matches;
    QString m_text;
    std::vector<Gap> m_gaps;
};

} // namespace

QString URLEncode(QStringView text, const CodePage &codePage)
{
    QString encoded;
    encoded.reserve(text.size() * 3);
    for (const QChar c : text) {
        if (isKept(c)) {
            encoded += c;
        } else if (c == u' ') {
            encoded += u'+';
        } else {
            encoded += u'%' + QString::number(codePage.byteOf(c), 16).toUpper();
        }
    }
    return encoded;
}

QString W3CEncode(QStringView text, const CodePage &codePage)
{
    QString encoded;
    encoded.reserve(text.size());
    for (const QChar c : text) {
        if (isKept(c) || c == u' ') {
            encoded += c;
        } else {
            encoded += "&#"_L1 + QString::number(codePage.byteOf(c)) + u';';
        }
    }
    return encoded;
}

QString StripCharRefs(const QString &text)
{
    const MatchPositions matches = matchPositions(text);
    ReferenceStripper stripper(matches, text.size());
    for (const QChar c : text) {
        stripper.add(c);
    }
    return stripper.text();
}

} // namespace quillon
