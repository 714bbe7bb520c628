#include "backup/restoring.h"

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

LogChange logDifference(const Logbook &from, const Logbook &to)
{
    const auto [present, wanted] = std::mismatch(from.begin(), from.end(), to.begin(), to.end());
    return {{wanted, to.end()}, {present, from.end()}, {}};
}

SiteChanges siteDifference(const TransmitterList &from, const TransmitterList &to)
{
    const auto [present, wanted] = std::mismatch(from.begin(), from.end(), to.begin(), to.end());
    SiteChanges changes;
    for (int row = from.count() - 1; row >= static_cast<int>(present - from.begin()); --row) {
        changes.push_back({row, from.row(row), std::nullopt});
    }
    for (auto row = static_cast<int>(wanted - to.begin()); row < to.count(); ++row) {
        changes.push_back({row, std::nullopt, to.row(row)});
    }
    return changes;
}

QString comparedToNow(std::optional<qint32> backedUp, qint32 now)
{
    if (!backedUp) {
        return {};
    }
    if (*backedUp == now) {
        return u"as many"_s;
    }
    return *backedUp < now ? u"%1 fewer"_s.arg(now - *backedUp) : u"%1 more"_s.arg(*backedUp - now);
}

} // namespace quillon
