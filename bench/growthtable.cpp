#include "growthtable.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace quillon::bench {

double exponentOf(const GrowthTimes &times)
{
    constexpr double shortest = 0.02;
    double x = 0;
    double y = 0;
    double xx = 0;
    double xy = 0;
    for (std::size_t i = 0; i < times.size(); ++i) {
        const double size = std::log(growthSizes.at(i));
        const double time = std::log(std::max(times.at(i), shortest));
        x += size;
        y += time;
        xx += size * size;
        xy += size * time;
    }
    constexpr auto count = static_cast<double>(growthSizes.size());
    return (count * xy - x * y) / (count * xx - x * x);
}

void GrowthTable::note(const QString &command, std::size_t size, double milliseconds)
{
    if (!m_times.contains(command)) {
        m_order += command;
    }
    m_times[command].at(size) = milliseconds;
}

bool GrowthTable::tell() const
{
    constexpr double highest = 1.1;
    std::printf("%-46s", "processor time in ms, entries");
    for (const int size : growthSizes) {
        std::printf(" %9d", size);
    }
    std::printf(" %9s\n", "exponent");
    bool missed = false;
    for (const QString &command : m_order) {
        const GrowthTimes &times = m_times.at(command);
        std::printf("%-46s", qPrintable(command));
        for (const double time : times) {
            std::printf(" %9.2f", time);
        }
        const double exponent = exponentOf(times);
        std::printf(" %9.2f%s\n", exponent, exponent > highest ? "  MISSED" : "");
        missed = missed || exponent > highest;
    }
    return missed;
}

} // namespace quillon::bench
