#pragma once

#include "stats/collection.h"
#include "stats/ui/paintedchart.h"

#include <memory>

namespace quillon {

/// Where the receptions came from: a sector for each ten degrees, as long as it has receptions, in a colour
/// for each mode.
class RoseChart : public PaintedChart
{
    Q_OBJECT

public:
    explicit RoseChart(QWidget *parent = nullptr);

    void setFigures(std::shared_ptr<const DirectionFigures> figures);

    /// A place in the outer end of a direction's sector.
    [[nodiscard]] QPoint placeOf(std::size_t direction) const;

Q_SIGNALS:
    void directionChosen(std::size_t direction);

protected:
    void paintChart(QPainter &painter, QSize size, const ChartStyle &style) const override;
    [[nodiscard]] int pictureHeight(int width, const QFont &font) const override;
    [[nodiscard]] QString tip(QPoint place) const override;
    void choose(QPoint place) override;

private:
    [[nodiscard]] std::optional<std::size_t> directionAt(QPoint place) const;
    void paintRings(QPainter &painter, QPointF centre, qreal radius, const ChartStyle &style) const;
    void paintLegend(QPainter &painter, QPointF corner, const ChartStyle &style) const;

    std::shared_ptr<const DirectionFigures> m_figures;
    std::vector<std::size_t> m_modes; ///< those that occur
    qint32 m_most = 0; ///< receptions of a direction
};

} // namespace quillon
