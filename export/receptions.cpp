#include "export/receptions.h"

#include "core/fetchahead.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace quillon {

std::vector<Reception> findReceptions(const Logbook &log, const TransmitterList &transmitters)
{
    std::vector<Reception> inLogOrder;
    // The place of each transmitter's next reception in the result.
    std::vector<std::size_t> next(static_cast<std::size_t>(transmitters.count()) + 1);
    qint32 number = 0;
    for (const LogEntry &entry : log) {
        fetchAhead(log, number, &LogEntry::transmitter, &LogEntry::country);
        if (const auto row = transmitters.find(entry.transmitter, entry.country)) {
            inLogOrder.push_back({*row, number});
            ++next[static_cast<std::size_t>(*row) + 1];
        }
        ++number;
    }
    std::partial_sum(next.begin(), next.end(), next.begin());

    std::vector<Reception> result(inLogOrder.size());
    for (const Reception &reception : inLogOrder) {
        result[next[static_cast<std::size_t>(reception.transmitter)]++] = reception;
    }
    return result;
}

namespace {

constexpr QByteArrayView lineBegin = "<li>[";
constexpr QByteArrayView betweenFields = "] [";
constexpr QByteArrayView lineEnd = "]</li>\r\n";

// What most lines take, so that the bytes need not grow often.
constexpr qsizetype usualLine = 64;

} // namespace

ReceptionLines::ReceptionLines(const Logbook &log, const CodePage &codePage)
{
    m_starts.reserve(static_cast<std::size_t>(log.count()) + 1);
    m_bytes.reserve(usualLine * log.count());
    GeneralCharacters moments;
    qint32 number = 0;
    for (const LogEntry &entry : log) {
        fetchAhead(log, number++, &LogEntry::piCode, &LogEntry::rdsName, &LogEntry::freq);
        m_starts.push_back(m_bytes.size());
        appendLine(moments.of(entry.dateTime), {entry.piCode, entry.rdsName, entry.freq}, codePage);
    }
    m_starts.push_back(m_bytes.size());
}

// The room for a line is that of the very texts which are then written: no character takes more than one
// byte.
void ReceptionLines::appendLine(
    std::span<const char> moment, const std::array<QStringView, 3> &texts, const CodePage &codePage)
{
    qsizetype room = lineBegin.size() + std::ssize(moment) + lineEnd.size();
    for (const QStringView text : texts) {
        room += betweenFields.size() + text.size();
    }
    const qsizetype start = m_bytes.size();
    m_bytes.resize(start + room);
    char *out = m_bytes.data() + start;
    out = std::ranges::copy(lineBegin, out).out;
    out = std::ranges::copy(moment, out).out;
    for (const QStringView text : texts) {
        out = std::ranges::copy(betweenFields, out).out;
        out = codePage.encodeTo(out, text);
    }
    out = std::ranges::copy(lineEnd, out).out;
    m_bytes.truncate(out - m_bytes.constData());
}

QByteArrayView ReceptionLines::of(qint32 entry) const
{
    const auto index = static_cast<std::size_t>(entry);
    return QByteArrayView(m_bytes).sliced(m_starts[index], m_starts[index + 1] - m_starts[index]);
}

} // namespace quillon
