#pragma once

#include "stats/statsdata.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace quillon {

/// The data of a bar chart: a table of cells indexed from 1. Cell (1, 1) reads "Period", the rest of column 1
/// holds the category labels, the rest of row 1 the series labels, the body the counts.
class ChartTable
{
public:
    ChartTable() = default;
    /// All counts are 0.
    ChartTable(QString title, QStringList categories, QStringList series);

    /// Stands above the chart.
    [[nodiscard]] const QString &title() const { return m_title; }
    [[nodiscard]] const QStringList &categories() const { return m_categories; }
    [[nodiscard]] const QStringList &series() const { return m_series; }
    /// True for a table without a series or without a category.
    [[nodiscard]] bool isEmpty() const { return m_counts.empty(); }

    /// The number of rows and columns, labels included.
    [[nodiscard]] int rows() const { return static_cast<int>(m_categories.size()) + 1; }
    [[nodiscard]] int columns() const { return static_cast<int>(m_series.size()) + 1; }

    /// The count of a category and a series, both from 0. Throws "Subscript out of range".
    [[nodiscard]] int count(int category, int series) const;
    void setCount(int category, int series, int count);
    /// The largest count; 0 when there is none.
    [[nodiscard]] int largest() const;

    // An interface that nothing in the program calls: the table as a grid of texts.

    /// The text of a cell, row 1 to rows(), column 1 to columns(). Throws "Subscript out of range".
    [[nodiscard]] QString cell(int row, int column) const;

private:
    [[nodiscard]] std::size_t position(int category, int series) const;

    QString m_title;
    QStringList m_categories;
    QStringList m_series;
    std::vector<int> m_counts;
};

/// Year " / " month " / " mode, for instance "2010 / All / Es".
[[nodiscard]] QString selectionText(const StatsSelection &selection);

/// "Jan" to "Dec", one series labelled with the title.
[[nodiscard]] ChartTable monthTable(const MonthCounts &counts, const QString &title);

/// " 1" to " 31", one series labelled with the title.
[[nodiscard]] ChartTable dayTable(const DayCounts &counts, const QString &title);

/// "Jan" to "Dec", 12 series "00 & 01 hrs" to "22 & 23 hrs", each the sum of the two hours it names.
[[nodiscard]] ChartTable monthHoursTable(const MonthHourCounts &counts, const QString &title);

/// " 1" to " 31", the same 12 series of two hours.
[[nodiscard]] ChartTable dayHoursTable(const DayHourCounts &counts, const QString &title);

/// " 1" to " 31", 24 series "00hr" to "23hr".
[[nodiscard]] ChartTable dayHoursTable24(const DayHourCounts &counts, const QString &title);

/// "Jan" to "Dec", two fixed series, for trying out a chart: "Test 1" rises from 1 to 12, "Test 2" falls.
[[nodiscard]] ChartTable testTable();

/// How the count axis of a chart is divided.
struct AxisScale
{
    int maximum = 1; ///< upper end, a multiple of the step
    int step = 1; ///< between two grid lines: 1, 2 or 5 times a power of ten

    bool operator==(const AxisScale &) const = default;
};

/// A scale of whole numbers from 0 with at most `mostSteps` steps, 2 or more, which leaves room for a number
/// above the largest bar. `largest` is 0 to a thousand million.
[[nodiscard]] AxisScale axisScale(int largest, int mostSteps = 10);

} // namespace quillon
