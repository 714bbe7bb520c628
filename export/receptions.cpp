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

} // namespace quillon
