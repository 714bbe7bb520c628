#pragma once

#include "stats/collection.h"
#include "stats/ui/paintedchart.h"

#include <memory>

namespace quillon {

/// Years below each other, the latest above: a square for each day in a column for each week, in colour by
/// its receptions, and how long the Es season was.
class CalendarChart : public PaintedChart
{
    Q_OBJECT

public:
    using PaintedChart::PaintedChart;

    void setYears(std::shared_ptr<const std::vector<YearFigures>> years);

    /// Where the day stands, 0 being the first of the year.
    [[nodiscard]] QRectF dayPlace(std::size_t year, int day) const;

    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void dayChosen(quillon::DateTime day);

protected:
    void paintChart(QPainter &painter, QSize size, const ChartStyle &style) const override;
    [[nodiscard]] int pictureHeight(int width, const QFont &font) const override;
    [[nodiscard]] QString tip(QPoint place) const override;
    void choose(QPoint place) override;

private:
    struct Day
    {
        std::size_t year = 0;
        int day = 0;
    };
    [[nodiscard]] std::optional<Day> dayAt(QPoint place) const;
    void paintYear(QPainter &painter, std::size_t year, int width, const ChartStyle &style) const;

    std::shared_ptr<const std::vector<YearFigures>> m_years;
    qint32 m_most = 0; ///< receptions of a day
};

} // namespace quillon
