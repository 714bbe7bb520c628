#include "export/receptions.h"

#include <numeric>

namespace quillon {

std::vector<Reception> findReceptions(const Logbook &log, const TransmitterList &transmitters)
{
    std::vector<Reception> inLogOrder;
    // The place of each transmitter's next reception in the result.
    std::vector<std::size_t> next(static_cast<std::size_t>(transmitters.count()) + 1);
    qint32 number = 0;
    for (const LogEntry &entry : log) {
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

ReceptionLines::ReceptionLines(const Logbook &log, const CodePage &codePage)
{
    constexpr qsizetype usualLength = 64;
    m_bytes.reserve(log.count() * usualLength);
    m_starts.reserve(static_cast<std::size_t>(log.count()) + 1);
    for (const LogEntry &entry : log) {
        m_starts.push_back(m_bytes.size());
        m_bytes += "<li>[";
        codePage.appendEncoded(m_bytes, generalText(entry.dateTime));
        m_bytes += "] [";
        codePage.appendEncoded(m_bytes, entry.piCode);
        m_bytes += "] [";
        codePage.appendEncoded(m_bytes, entry.rdsName);
        m_bytes += "] [";
        codePage.appendEncoded(m_bytes, entry.freq);
        m_bytes += "]</li>\r\n";
    }
    m_starts.push_back(m_bytes.size());
}

QByteArrayView ReceptionLines::of(qint32 entry) const
{
    const auto index = static_cast<std::size_t>(entry);
    return QByteArrayView(m_bytes).sliced(m_starts[index], m_starts[index + 1] - m_starts[index]);
}

} // namespace quillon
