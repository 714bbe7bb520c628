#include "export/months.h"

#include <QLocale>

#include <algorithm>

namespace quillon {

namespace {

bool canBeLinked(const QString &name, const CodePage &codePage)
{
    constexpr QStringView reserved = u"/\\:*?\"<>|#%&";
    return !name.isEmpty() && codePage.decode(codePage.encode(name)) == name
        && std::ranges::none_of(name, [&](QChar c) { return reserved.contains(c) || !c.isPrint(); });
}

} // namespace

MonthNames exportMonths(const Regional &regional)
{
    const bool usable = std::ranges::all_of(regional.months.abbreviated,
        [&](const QString &name) { return canBeLinked(name, regional.codePage); });
    return usable ? regional.months : MonthNames::of(QLocale::c());
}

MonthKeys::MonthKeys(const MonthNames &months)
{
    for (std::size_t i = 0; i < months.abbreviated.size(); ++i) {
        const auto first = std::ranges::find(months.abbreviated, months.abbreviated[i]);
        m_months[i] = static_cast<int>(first - months.abbreviated.begin());
    }
}

int MonthKeys::of(DateTime moment) const
{
    const CivilTime parts = civil(moment);
    return parts.year * 12 + m_months[static_cast<std::size_t>(parts.month - 1)];
}

} // namespace quillon
