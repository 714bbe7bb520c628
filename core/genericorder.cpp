#include "core/genericorder.h"

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

} // namespace

std::weak_ordering genericOrder(const QString &left, const QString &right)
{
    return order({numeric(left), &left}, {numeric(right), &right});
}

std::vector<int> genericSort(const std::vector<QString> &texts, bool descending)
{
    std::vector<SortKey> keys;
    keys.reserve(texts.size());
    for (const QString &text : texts) {
        keys.push_back({numeric(text), &text});
    }
    std::vector<int> positions(texts.size());
    std::iota(positions.begin(), positions.end(), 0);
    std::ranges::stable_sort(positions, [&](int left, int right) {
        const SortKey &first = keys[static_cast<std::size_t>(descending ? right : left)];
        const SortKey &second = keys[static_cast<std::size_t>(descending ? left : right)];
        return order(first, second) < 0;
    });
    return positions;
}

} // namespace quillon
