#include "core/genericorder.h"

#include "core/numbering.h"
#include "platform/numbers.h"

#include <algorithm>
#include <numeric>
#include <optional>

namespace quillon {

namespace {

struct SortKey
{
    std::optional<double> number;
    const QString *text;
};

std::weak_ordering order(const SortKey &left, const SortKey &right)
{
    if (left.number && right.number) {
        return *left.number < *right.number ? std::weak_ordering::less
            : *left.number > *right.number  ? std::weak_ordering::greater
                                            : std::weak_ordering::equivalent;
    }
    if (left.number || right.number) {
        return left.number ? std::weak_ordering::less : std::weak_ordering::greater;
    }
    return left.text->compare(*right.text, Qt::CaseInsensitive) <=> 0;
}

struct Ranks
{
    std::vector<std::size_t> of; ///< each text
    std::size_t count = 0;
};

// Texts of one rank are equal in this order. A column has few different texts, and only those are compared.
Ranks ranksOf(const std::vector<QString> &texts)
{
    Ranks ranks;
    ranks.of.reserve(texts.size());
    Numbering<QString> numbers;
    std::vector<SortKey> keys;
    for (const QString &text : texts) {
        const auto key = static_cast<std::size_t>(numbers.of(text));
        if (key == keys.size()) {
            keys.push_back({numeric(text), &text});
        }
        ranks.of.push_back(key);
    }
    std::vector<std::size_t> sorted(keys.size());
    std::iota(sorted.begin(), sorted.end(), std::size_t {0});
    std::ranges::sort(
        sorted, [&keys](std::size_t left, std::size_t right) { return order(keys[left], keys[right]) < 0; });
    std::vector<std::size_t> rankOfKey(keys.size());
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        if (i == 0 || order(keys[sorted[i - 1]], keys[sorted[i]]) != 0) {
            ++ranks.count;
        }
        rankOfKey[sorted[i]] = ranks.count - 1;
    }
    std::ranges::transform(ranks.of, ranks.of.begin(), [&](std::size_t key) { return rankOfKey[key]; });
    return ranks;
}

} // namespace

std::weak_ordering genericOrder(const QString &left, const QString &right)
{
    return order({numeric(left), &left}, {numeric(right), &right});
}

std::vector<int> genericSort(const std::vector<QString> &texts, bool descending)
{
    const auto [ranks, count] = ranksOf(texts);
    // Where each rank begins; those of one rank stay in order.
    std::vector<int> next(count + 1);
    const auto placeOf = [&, last = count - 1](std::size_t rank) { return descending ? last - rank : rank; };
    for (const std::size_t rank : ranks) {
        ++next[placeOf(rank) + 1];
    }
    std::partial_sum(next.begin(), next.end(), next.begin());
    std::vector<int> positions(texts.size());
    for (std::size_t i = 0; i < ranks.size(); ++i) {
        positions[static_cast<std::size_t>(next[placeOf(ranks[i])]++)] = static_cast<int>(i);
    }
    return positions;
}

} // namespace quillon
