#include "stats/statsdata.h"

#include "core/propagation.h"
#include "platform/numbers.h"
#include "platform/runtimeerror.h"

#include <QSet>

#include <algorithm>
#include <bitset>
#include <limits>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<QStringView, 12> monthNames {u"January", u"February", u"March", u"April", u"May",
    u"June", u"July", u"August", u"September", u"October", u"November", u"December"};

constexpr int yearsEnd = 10000;
constexpr int yearDigits = 4;

// A number that no year has, for a text that is not four digits.
constexpr int noYear = -1;

QStringList withEverything(std::span<const QStringView> texts)
{
    QStringList choices {everything.toString()};
    for (const QStringView text : texts) {
        choices.append(text.toString());
    }
    return choices;
}

int yearNumber(QStringView text)
{
    return text.size() == yearDigits && std::ranges::all_of(text, isDigit) ? text.toInt() : noYear;
}

QString nameOf(qsizetype index, const LogEntry &entry)
{
    return u"entry %1 of the log (%2, %3 MHz)"_s.arg(QString::number(index), entry.piCode, entry.freq);
}

CivilTime checkedTime(std::span<const LogEntry> entries, std::size_t index)
{
    static const DateTime first = *fromCivil({100, 1, 1, 0, 0, 0});
    static const DateTime last = *fromCivil({9999, 12, 31, 23, 59, 59});
    const LogEntry &entry = entries[index];
    if (entry.dateTime < first || entry.dateTime > last) {
        throw RuntimeError(ErrorName::TypeMismatch,
            u"Counting the receptions: the date and time of "_s + nameOf(static_cast<qsizetype>(index), entry)
                + u" is outside the years 100 to 9999"_s);
    }
    return civil(entry.dateTime);
}

[[noreturn]] void throwOverflow(qsizetype index, const LogEntry &entry)
{
    throw RuntimeError(ErrorName::Overflow,
        u"Counting the receptions: at "_s + nameOf(index, entry) + u" a counter passes "_s
            + QString::number(std::numeric_limits<qint16>::max()));
}

template<typename Buckets, typename BucketOf>
Buckets counted(std::span<const LogEntry> entries, const EntryFilter &passes, BucketOf bucketOf)
{
    Buckets buckets {};
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const CivilTime time = checkedTime(entries, i);
        if (passes(entries[i], time)) {
            qint16 &counter = bucketOf(buckets, time);
            if (counter == std::numeric_limits<qint16>::max()) {
                throwOverflow(static_cast<qsizetype>(i), entries[i]);
            }
            ++counter;
        }
    }
    return buckets;
}

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

} // namespace

int convertMonthToNumber(QStringView month)
{
    const auto found = std::ranges::find(monthNames, month);
    return found == monthNames.end() ? 0 : static_cast<int>(found - monthNames.begin()) + 1;
}

QStringList modeChoices()
{
    return withEverything(propagationModes);
}

QStringList modeChoices(std::span<const LogEntry> entries)
{
    QStringList choices = modeChoices();
    const qsizetype most = choices.size() + mostModes;
    QSet<QString> offered(choices.begin(), choices.end());
    for (const LogEntry &entry : entries) {
        if (choices.size() == most) {
            break;
        }
        if (!entry.prop.isEmpty() && entry.prop.size() <= longestMode && !offered.contains(entry.prop)) {
            offered.insert(entry.prop);
            choices.append(entry.prop);
        }
    }
    return choices;
}

QStringList monthChoices()
{
    return withEverything(monthNames);
}

QStringList yearChoices(std::span<const LogEntry> entries)
{
    QStringList choices {everything.toString()};
    std::bitset<yearsEnd> seen;
    for (std::size_t i = 0; i < entries.size() && choices.size() <= mostYears; ++i) {
        const int year = checkedTime(entries, i).year;
        if (!seen.test(at(year))) {
            seen.set(at(year));
            choices.append(QString::number(year).rightJustified(yearDigits, u'0'));
        }
    }
    return choices;
}

EntryFilter::EntryFilter(const StatsSelection &selection)
{
    if (selection.mode != everything) {
        m_mode = selection.mode;
    }
    if (selection.year != everything) {
        m_year = yearNumber(selection.year);
    }
    if (selection.month != everything) {
        m_month = convertMonthToNumber(selection.month);
    }
}

bool EntryFilter::operator()(const LogEntry &entry, const CivilTime &time) const
{
    return (!m_year || *m_year == time.year) && (!m_mode || *m_mode == entry.prop)
        && (!m_month || *m_month == time.month);
}

StatsBuckets countReceptions(std::span<const LogEntry> entries, const StatsSelection &selection)
{
    const EntryFilter passes(selection);
    if (selection.month == everything) {
        if (selection.timeDistribution) {
            return counted<MonthHourCounts>(
                entries, passes, [](MonthHourCounts &counts, const CivilTime &time) -> qint16 & {
                    return counts[at(time.hour)][at(time.month)];
                });
        }
        return counted<MonthCounts>(entries, passes,
            [](MonthCounts &counts, const CivilTime &time) -> qint16 & { return counts[at(time.month)]; });
    }
    if (selection.timeDistribution) {
        return counted<DayHourCounts>(
            entries, passes, [](DayHourCounts &counts, const CivilTime &time) -> qint16 & {
                return counts[at(time.hour)][at(time.day)];
            });
    }
    return counted<DayCounts>(entries, passes,
        [](DayCounts &counts, const CivilTime &time) -> qint16 & { return counts[at(time.day)]; });
}

} // namespace quillon
