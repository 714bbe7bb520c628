#include "stats/charttable.h"

#include "platform/runtimeerror.h"

#include <algorithm>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int monthsInYear = 12;
constexpr int daysInMonth = 31;
constexpr int hoursInDay = 24;
constexpr int hoursInSeries = 2;

QStringList monthLabels()
{
    return {u"Jan"_s, u"Feb"_s, u"Mar"_s, u"Apr"_s, u"May"_s, u"Jun"_s, u"Jul"_s, u"Aug"_s, u"Sep"_s,
        u"Oct"_s, u"Nov"_s, u"Dec"_s};
}

QStringList dayLabels()
{
    QStringList labels;
    for (int day = 1; day <= daysInMonth; ++day) {
        labels.append(u' ' + QString::number(day));
    }
    return labels;
}

QString hourText(int hour)
{
    return QString::number(hour).rightJustified(2, u'0');
}

QStringList twoHourLabels()
{
    QStringList labels;
    for (int hour = 0; hour < hoursInDay; hour += hoursInSeries) {
        labels.append(hourText(hour) + u" & "_s + hourText(hour + 1) + u" hrs"_s);
    }
    return labels;
}

QStringList hourLabels()
{
    QStringList labels;
    for (int hour = 0; hour < hoursInDay; ++hour) {
        labels.append(hourText(hour) + u"hr"_s);
    }
    return labels;
}

// Buckets are numbered from 1, categories from 0.
template<typename Counts>
int bucket(const Counts &counts, int category)
{
    return counts[static_cast<std::size_t>(category) + 1];
}

template<typename Counts>
ChartTable plainTable(const Counts &counts, const QString &title, const QStringList &categories)
{
    ChartTable table(title, categories, {title});
    for (int category = 0; category < categories.size(); ++category) {
        table.setCount(category, 0, bucket(counts, category));
    }
    return table;
}

template<typename HourCounts>
ChartTable hoursTable(const HourCounts &counts, const QString &title, const QStringList &categories,
    const QStringList &series, int hoursInOne)
{
    ChartTable table(title, categories, series);
    for (int hour = 0; hour < hoursInDay; ++hour) {
        for (int category = 0; category < categories.size(); ++category) {
            const int one = hour / hoursInOne;
            table.setCount(category, one,
                table.count(category, one) + bucket(counts[static_cast<std::size_t>(hour)], category));
        }
    }
    return table;
}

} // namespace

ChartTable::ChartTable(QString title, QStringList categories, QStringList series)
    : m_title(std::move(title))
    , m_categories(std::move(categories))
    , m_series(std::move(series))
    , m_counts(static_cast<std::size_t>(m_categories.size()) * static_cast<std::size_t>(m_series.size()))
{
}

QString ChartTable::cell(int row, int column) const
{
    if (row == 1 && column == 1) {
        return u"Period"_s;
    }
    if (row == 1 && column >= 2 && column <= columns()) {
        return m_series[column - 2];
    }
    if (column == 1 && row >= 2 && row <= rows()) {
        return m_categories[row - 2];
    }
    return QString::number(count(row - 2, column - 2));
}

int ChartTable::count(int category, int series) const
{
    return m_counts[position(category, series)];
}

void ChartTable::setCount(int category, int series, int count)
{
    m_counts[position(category, series)] = count;
}

int ChartTable::largest() const
{
    return m_counts.empty() ? 0 : *std::ranges::max_element(m_counts);
}

std::size_t ChartTable::position(int category, int series) const
{
    if (category < 0 || category >= m_categories.size() || series < 0 || series >= m_series.size()) {
        throw RuntimeError(ErrorName::SubscriptOutOfRange,
            u"The chart has no cell in row %1, column %2"_s.arg(category + 2).arg(series + 2));
    }
    return static_cast<std::size_t>(category * m_series.size() + series);
}

QString selectionText(const StatsSelection &selection)
{
    return selection.year + u" / "_s + selection.month + u" / "_s + selection.mode;
}

ChartTable monthTable(const MonthCounts &counts, const QString &title)
{
    return plainTable(counts, title, monthLabels());
}

ChartTable dayTable(const DayCounts &counts, const QString &title)
{
    return plainTable(counts, title, dayLabels());
}

ChartTable monthHoursTable(const MonthHourCounts &counts, const QString &title)
{
    return hoursTable(counts, title, monthLabels(), twoHourLabels(), hoursInSeries);
}

ChartTable dayHoursTable(const DayHourCounts &counts, const QString &title)
{
    return hoursTable(counts, title, dayLabels(), twoHourLabels(), hoursInSeries);
}

ChartTable dayHoursTable24(const DayHourCounts &counts, const QString &title)
{
    return hoursTable(counts, title, dayLabels(), hourLabels(), 1);
}

ChartTable testTable()
{
    ChartTable table(u"Test"_s, monthLabels(), {u"Test 1"_s, u"Test 2"_s});
    for (int month = 0; month < monthsInYear; ++month) {
        table.setCount(month, 0, month + 1);
        table.setCount(month, 1, monthsInYear - month);
    }
    return table;
}

AxisScale axisScale(int largest, int mostSteps)
{
    // Room for a number above the largest bar: a sixteenth of its height, at least a part of a step.
    const auto maximumFor = [highest = qint64 {largest}](
                                qint64 step) { return (highest + highest / 16 + step) / step * step; };
    constexpr std::array<int, 3> factors {1, 2, 5};
    for (qint64 power = 1;; power *= 10) {
        for (const int factor : factors) {
            const qint64 step = power * factor;
            if (maximumFor(step) <= step * mostSteps) {
                return largest == 0 ? AxisScale {}
                                    : AxisScale {static_cast<int>(maximumFor(step)), static_cast<int>(step)};
            }
        }
    }
}

} // namespace quillon
