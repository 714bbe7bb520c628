#include "core/distincttexts.h"
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

// The years of many moments; neighbours in a log are mostly of the same one.
class Years
{
public:
    void insert(DateTime moment)
    {
        if (moment < m_from || moment >= m_end) {
            const int year = civil(moment).year;
            m_all.insert(year);
            m_from = fromCivil({year}).value_or(moment);
            m_end = fromCivil({year + 1}).value_or(m_from);
        }
    }
    [[nodiscard]] const QSet<int> &all() const { return m_all; }

private:
    DateTime m_from;
    DateTime m_end;
    QSet<int> m_all;
};

qsizetype placeOfMode(const QString &mode)
{
    return std::ranges::find(propagationModes, QStringView(mode)) - propagationModes.begin();
}

} // namespace

FilterLists filterLists(const Logbook &log)
{
    DistinctTexts modes;
    DistinctTexts countries;
    Years years;
    for (const LogEntry &entry : log) {
        if (isDeleted(entry)) {
            continue;
        }
        modes.insert(entry.prop);
        countries.insert(entry.country);
        years.insert(entry.dateTime);
    }
    FilterLists lists;
    lists.modes = inOrder(modes.all(), placeOfMode);
    lists.countries = inOrder(countries.all(), [](const QString &) { return 0; });
    lists.years.assign(years.all().begin(), years.all().end());
    std::ranges::sort(lists.years, std::greater());
    return lists;
}

} // namespace quillon
