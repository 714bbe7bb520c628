#pragma once

#include "core/logbook.h"

#include <QRandomGenerator>

namespace quillon::test {

/// Entries whose texts, moments and distances come from so small a choice that nearly everything occurs
/// twice.
class RandomEntries
{
public:
    explicit RandomEntries(quint32 seed)
        : m_random(seed)
    {
    }

    [[nodiscard]] int below(int bound) { return static_cast<int>(m_random.bounded(bound)); }

    [[nodiscard]] LogEntry next()
    {
        LogEntry entry;
        entry.piCode = of({"", "D3C3", "E211", "F201", "2301", "delete"});
        entry.rdsName = of({"", "RNE_1", "MDR_JUMP", "=1+1", "two, \"three\""});
        entry.transmitter = of({"", "Brocken", "Málaga", "a\tb"});
        entry.country = of({"", "TBD", "D", "E", "EST"});
        entry.prop = of({"", "Es", "Es", "Es", "Tropo", "MS", "LOS", "es"});
        entry.freq = of({"87.6", "98,5", "107.90", ""});
        entry.power = of({"", "100", "0.1", "0,5", "0", "much", "-1"});
        entry.dist = of({"", "-1", "0", "12.4", "812", "812,4", "1999.9", "2400"});
        // A few winters and summers, in clusters of some hours, so that there are openings.
        const qint64 day = of({0, 1, 200, 365, 900}) * secondsPerDay;
        entry.dateTime.seconds = 1'420'070'400 + day + below(30) * 1200;
        return entry;
    }

private:
    template<typename Value>
    [[nodiscard]] Value one(std::initializer_list<Value> choice)
    {
        return *(choice.begin() + below(static_cast<int>(choice.size())));
    }
    [[nodiscard]] QString of(std::initializer_list<const char *> choice)
    {
        return QString::fromUtf8(one(choice));
    }
    [[nodiscard]] qint64 of(std::initializer_list<int> choice) { return one(choice); }

    QRandomGenerator m_random;
};

} // namespace quillon::test
