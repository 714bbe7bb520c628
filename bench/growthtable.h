#pragma once

#include "support.h"

#include <QString>
#include <QStringList>

#include <array>
#include <map>

namespace quillon::bench {

/// The numbers of entries of the logs on which the commands are measured. A few more still fit into the
/// largest.
inline constexpr std::array growthSizes {1'000, 4'000, 16'000, fullLogSize - 20};

/// Milliseconds of a command at each of the sizes.
using GrowthTimes = std::array<double, growthSizes.size()>;

/// The slope of the line through the logarithms of sizes and times: 1 is in proportion to the log, 2 would be
/// four times as long for a log of twice the size. What takes less than the clock can tell is taken for that.
[[nodiscard]] double exponentOf(const GrowthTimes &times);

/// The times of each command, in the order in which the commands were first measured.
class GrowthTable
{
public:
    /// `size` is the place in growthSizes.
    void note(const QString &command, std::size_t size, double milliseconds);
    /// Prints them; true when one grows faster than it may.
    [[nodiscard]] bool tell() const;

private:
    QStringList m_order;
    std::map<QString, GrowthTimes> m_times;
};

} // namespace quillon::bench
