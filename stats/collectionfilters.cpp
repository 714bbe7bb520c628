#include "stats/collectionfilters.h"

#include "core/filterreader.h"
#include "platform/numbers.h"

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QString quoted(DateTime moment)
{
    return u'"' + formatted(moment, u"yyyy-mm-dd hh:nn:ss", MonthNames()) + u'"';
}

} // namespace

QString modeFilter(std::size_t mode)
{
    if (mode < propagationModes.size()) {
        return filterTerm(LogField::Prop, propagationModes[mode].toString());
    }
    QString others;
    for (const QStringView known : propagationModes) {
        others += (others.isEmpty() ? u"-" : u" -") + filterTerm(LogField::Prop, known.toString());
    }
    return mode == otherMode ? others : QString();
}

QString stationFilter(const LogEntry &entry)
{
    const QString byName =
        entry.piCode.isEmpty() ? u' ' + filterTerm(LogField::RdsName, entry.rdsName) : QString();
    return filterTerm(LogField::PiCode, entry.piCode) + byName + u' '
        + filterTerm(LogField::Transmitter, entry.transmitter) + u' '
        + filterTerm(LogField::Country, entry.country);
}

QString momentFilter(DateTime moment)
{
    return u"date:"_s + quoted(moment);
}

QString spanFilter(DateTime first, DateTime last)
{
    return u"-date<"_s + quoted(first) + u" -date>"_s + quoted(last);
}

QString kilometresFilter(double kilometres)
{
    return u"km:"_s + plainText(kilometres);
}

QString bothFilters(const QString &first, const QString &second)
{
    return first.isEmpty() || second.isEmpty() ? QString(first + second) : QString(first + u' ' + second);
}

} // namespace quillon
