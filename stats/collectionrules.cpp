#include "stats/collectionrules.h"

#include "geo/distance.h"
#include "platform/numbers.h"

namespace quillon {

std::optional<double> positiveNumber(QStringView text)
{
    const auto number = numeric(text);
    return number && *number > 0 ? number : std::nullopt;
}

std::optional<double> kilometresOf(const LogEntry &entry, bool inMiles)
{
    const auto number = positiveNumber(entry.dist);
    return number && inMiles ? std::optional(rounded(*number * kilometresPerMile, 1)) : number;
}

} // namespace quillon
