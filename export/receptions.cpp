#include "export/receptions.h"

#include "core/fetchahead.h"

#include <algorithm>
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

// The most bytes that a line takes: no character takes more than one.
qsizetype longest(const LogEntry &entry)
{
    constexpr qsizetype moment = 19;
    return lineBegin.size() + moment + 3 * betweenFields.size() + entry.piCode.size() + entry.rdsName.size()
        + entry.freq.size() + lineEnd.size();
}

} // namespace

ReceptionLines::ReceptionLines(const Logbook &log, const CodePage &codePage)
{
    m_starts.reserve(static_cast<std::size_t>(log.count()) + 1);
    qsizetype size = 0;
    for (const LogEntry &entry : log) {
        size += longest(entry);
    }
    m_bytes = QByteArray(size, Qt::Uninitialized);
    char *const begin = m_bytes.data();
    char *out = begin;
    const auto put = [&out](const auto &characters) { out = std::ranges::copy(characters, out).out; };
    GeneralCharacters moments;
    qint32 number = 0;
    for (const LogEntry &entry : log) {
        fetchAhead(log, number++, &LogEntry::piCode, &LogEntry::rdsName, &LogEntry::freq);
        m_starts.push_back(out - begin);
        put(lineBegin);
        put(moments.of(entry.dateTime));
        put(betweenFields);
        out = codePage.encodeTo(out, entry.piCode);
        put(betweenFields);
        out = codePage.encodeTo(out, entry.rdsName);
        put(betweenFields);
        out = codePage.encodeTo(out, entry.freq);
        put(lineEnd);
    }
    m_starts.push_back(out - begin);
    m_bytes.resize(out - begin);
}

QByteArrayView ReceptionLines::of(qint32 entry) const
{
    const auto index = static_cast<std::size_t>(entry);
    return QByteArrayView(m_bytes).sliced(m_starts[index], m_starts[index + 1] - m_starts[index]);
}

} // namespace quillon
