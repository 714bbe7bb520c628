#include "core/foldedtext.h"
#include "core/logfilter.h"
#include "core/propagation.h"

#include <QSet>

#include <algorithm>
#include <functional>
#include <tuple>

namespace quillon {

namespace {

// Texts by their letters, with those first that `rank` puts there.
QStringList inOrder(const QSet<QString> &texts, const std::function<qsizetype(const QString &)> &rank)
{
    std::vector<std::tuple<qsizetype, QString, QString>> keyed;
    keyed.reserve(static_cast<std::size_t>(texts.size()));
    for (const QString &text : texts) {
        keyed.emplace_back(rank(text), folded(text), text);
    }
    std::ranges::sort(keyed);
    QStringList sorted;
    sorted.reserve(texts.size());
    for (const auto &[place, letters, text] : keyed) {
        sorted += text;
    }
    return sorted;
}

qsizetype placeOfMode(const QString &mode)
{
    return std::ranges::find(propagationModes, QStringView(mode)) - propagationModes.begin();
}

} // namespace

FilterLists filterLists(const Logbook &log)
{
    QSet<QString> modes;
    QSet<QString> countries;
    QSet<int> years;
    for (const LogEntry &entry : log) {
        if (!isDeleted(entry)) {
            modes.insert(entry.prop);
            countries.insert(entry.country);
            years.insert(civil(entry.dateTime).year);
        }
    }
    modes.remove({});
    countries.remove({});
    FilterLists lists;
    lists.modes = inOrder(modes, placeOfMode);
    lists.countries = inOrder(countries, [](const QString &) { return 0; });
    lists.years.assign(years.begin(), years.end());
    std::ranges::sort(lists.years, std::greater());
    return lists;
}

} // namespace quillon
