#pragma once

#include "core/logbook.h"
#include "core/logrows.h"
#include "platform/filecalls.h"
#include "stats/statsdata.h"

#include <QDialog>
#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

namespace quillon {

class ChartControl;
class ChartTable;

namespace Ui {
class logStats;
}

/// The statistics window: bar charts of how many receptions were logged by month or day, and by hour.
class logStats : public QDialog
{
    Q_OBJECT

public:
    /// The logbook must outlive the window; it is read at opening, for its years, and at each Draw Graph. The
    /// years throw as yearChoices does. Pictures are proposed for, and relative names taken in, the
    /// directory.
    logStats(const Logbook &logbook, const QString &applicationDirectory, QWidget *parent = nullptr,
        FileCalls &calls = FileCalls::real());
    ~logStats() override;

    /// Offers "Shown only", which counts these rows alone; they must outlive the window.
    void setRows(const LogRows &rows);

    /// Counts and hands the buckets to the chart routine that draws them.
    void logStatsGetData(const QString &mode, const QString &year, const QString &month);

    /// Makes the chart ready, with no data yet.
    void initGraph();
    /// Lays the plot out automatically and shows the list of the series when `legendTgl` is true.
    void AddLegend(ChartControl &MyChart, bool legendTgl);
    /// Gives the grid its pen and the backdrop its colour and fill.
    void FX_ResetMSChart(ChartControl &MyChart);
    /// Draws the receptions of each month.
    void renderDataMonth(const MonthCounts &Data);
    /// Draws the receptions of each day of a month.
    void renderDataDays(const DayCounts &Data);
    /// Draws the receptions of each day in two-hour series.
    void renderDataDaysTime(const DayHourCounts &Data);
    /// Draws the receptions of each month in two-hour series.
    void renderDataMonthsTime(const MonthHourCounts &Data);

    // Interfaces that nothing in the program calls.

    /// Draws a fixed chart, for trying out the control.
    void renderDataTest();
    /// Draws the receptions of each day in 24 series; renderDataDaysTime replaces it.
    void renderDataDaysTime24depracated(const DayHourCounts &Data);

public Q_SLOTS:
    /// The log has changed: its years, and its modes beyond the usual ones, are offered from now on. What is
    /// chosen or typed stays, and the chart.
    void logChanged();
    /// Other rows are shown: a chart of "Shown only" is soon drawn again.
    void shownChanged();

private:
    void logStats_Form_Load();
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void draw(const StatsSelection &chosen);
    void drawAgain();
    [[nodiscard]] bool isShownOnly() const;
    [[nodiscard]] std::vector<LogEntry> shownEntries() const;
    [[nodiscard]] StatsSelection selection() const;
    [[nodiscard]] QString title() const;
    void render(const ChartTable &table, bool legendTgl);

    const Logbook &m_logbook;
    const LogRows *m_rows = nullptr;
    std::optional<StatsSelection> m_drawn; ///< what the chart shows
    QTimer m_drawLater;
    QString m_applicationDirectory;
    FileCalls &m_calls;
    std::unique_ptr<Ui::logStats> ui;
};

} // namespace quillon
