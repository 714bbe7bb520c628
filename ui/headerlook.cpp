#include "ui/headerlook.h"

#include <algorithm>
#include <numeric>

namespace quillon {

namespace {

bool isSound(const HeaderLook &look, qsizetype columns)
{
    constexpr int widest = 10000;
    const qsizetype count = look.order.size();
    if (count == 0 || count > columns || look.widths.size() != count || look.hidden.size() != count) {
        return false;
    }
    QList<int> sorted = look.order;
    std::ranges::sort(sorted);
    QList<int> all(count);
    std::iota(all.begin(), all.end(), 0);
    return sorted == all && look.hidden.contains(0)
        && std::ranges::all_of(look.widths, [](int width) { return width >= 0 && width <= widest; });
}

} // namespace

HeaderLook lookOf(const QHeaderView &header)
{
    HeaderLook look;
    for (int i = 0; i < header.count(); ++i) {
        look.order += header.logicalIndex(i);
        look.widths += header.sectionSize(i);
        look.hidden += header.isSectionHidden(i) ? 1 : 0;
    }
    return look;
}

bool applyLook(QHeaderView &header, const HeaderLook &look)
{
    if (!isSound(look, header.count())) {
        return false;
    }
    for (int i = 0; i < look.order.size(); ++i) {
        header.moveSection(header.visualIndex(look.order[i]), i);
        if (look.widths[i] > 0) {
            header.resizeSection(i, look.widths[i]);
        }
        header.setSectionHidden(i, look.hidden[i] != 0);
    }
    return true;
}

} // namespace quillon
