#pragma once

#include "platform/filecalls.h"
#include "stats/charttable.h"
#include "ui/chartcontrol_style.h"

#include <QChartView>
#include <QFont>
#include <QImage>
#include <QPalette>

#include <optional>

class QBarSeries;

namespace quillon {

/// A bar chart of a table of counts: one group of bars a category, one colour a series. Pointing at a bar
/// tells its period, series and count.
class ChartControl : public QChartView
{
    Q_OBJECT

public:
    /// A bar by its category and series, both from 0.
    struct Bar
    {
        int category = 0;
        int series = 0;

        bool operator==(const Bar &) const = default;
    };

    explicit ChartControl(QWidget *parent = nullptr);

    /// Draws this table in place of what stood there.
    void setTable(const ChartTable &table);
    [[nodiscard]] const ChartTable &table() const { return m_table; }

    /// Shows or hides the list of the series.
    void setLegend(bool visible, const QFont &font);
    /// The pen of the grid lines.
    void setGridPenStyle(Qt::PenStyle style);
    /// The fill of the area behind the chart.
    void setBackdrop(QPalette::ColorRole colour, Qt::BrushStyle style);
    /// The layout of the plot, axes and legend is automatic again.
    void setAutomaticLayout();
    /// What a category and a count are called, in place of "Period" and "Receptions".
    void setWords(const QString &category, const QString &count);
    /// How many steps the counts are divided into at most: fewer for a low chart.
    void setMostSteps(int steps) { m_mostSteps = steps; }
    /// What is said before there is a table.
    void setEmptyText(const QString &text);

    /// Where a bar stands, in pixels of the chart; of height 0 for a count of 0.
    [[nodiscard]] QRectF barPlace(Bar bar) const;
    /// The bar of the place in the chart, whatever its height.
    [[nodiscard]] std::optional<Bar> barAt(QPointF place) const;
    /// Period, series where there are several, and count.
    [[nodiscard]] QString barText(Bar bar) const;

    /// The chart on a light ground, 1920 x 1080 pixels of 24 used bits, whatever the size of the control.
    [[nodiscard]] QImage picture() const;
    /// Copies the picture to the clipboard, and gives it back.
    QImage copyPicture() const;

protected:
    void changeEvent(QEvent *event) override;
    void drawForeground(QPainter *painter, const QRectF &rect) override;
    void leaveEvent(QEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    void addSeries();
    void addAxes(QBarSeries *series);
    void applyStyle();
    void applyFonts();
    void describe();
    void paintNote(QPainter &painter, const QString &text) const;
    void paintPeriods(QPainter &painter) const;
    void paintNumbers(QPainter &painter) const;
    void paintHovered(QPainter &painter) const;
    void paintOver(QPainter &painter) const;
    [[nodiscard]] qreal groupWidth() const;
    void setHovered(std::optional<Bar> bar);

    ChartTable m_table;
    AxisScale m_scale;
    ChartStyle m_style;
    QString m_emptyText;
    int m_mostSteps = 10;
    QString m_categoryWord;
    QString m_countWord;
    bool m_legend = false;
    QFont m_legendFont;
    Qt::PenStyle m_gridPenStyle = Qt::SolidLine;
    QPalette::ColorRole m_backdropRole = QPalette::Base;
    Qt::BrushStyle m_backdropStyle = Qt::SolidPattern;
    std::optional<Bar> m_hovered;
};

/// Writes the image as a Windows bitmap of 24 bits, whole or not at all, over any file of that name. Throws
/// the run-time error of what failed, with the path.
void saveBitmap(const QImage &image, const QString &path, FileCalls &calls = FileCalls::real());

} // namespace quillon
