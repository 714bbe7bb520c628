#include "export/shownlog.h"

#include "platform/numbers.h"

#include <algorithm>
#include <iterator>

namespace quillon {

using namespace Qt::StringLiterals;

std::vector<qint32> withoutDeleted(const Logbook &log, std::span<const qint32> entries)
{
    std::vector<qint32> kept;
    std::ranges::copy_if(
        entries, std::back_inserter(kept), [&](qint32 number) { return !isDeleted(log.entry(number)); });
    return kept;
}

QString dataText(const LogRows &rows, qint32 entry, GridColumn column)
{
    const LogColumn &about = logColumn(column);
    const LogEntry &reception = rows.log().entry(entry);
    if (column == GridColumn::DateTime) {
        return formatted(reception.dateTime, u"yyyy-mm-ddThh:nn:ssZ", MonthNames());
    }
    QString text = about.text ? reception.*about.text : rows.text(entry, column);
    if (isNumberColumn(column) && numeric(text)) {
        text.replace(u',', u'.');
    }
    return text;
}

bool isNumberColumn(GridColumn column)
{
    switch (column) {
    case GridColumn::Freq:
    case GridColumn::Power:
    case GridColumn::Dist:
    case GridColumn::Azimuth:
    case GridColumn::Muf:
        return true;
    default:
        return false;
    }
}

} // namespace quillon
