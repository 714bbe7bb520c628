#pragma once

#include "ui/chartcontrol_style.h"

#include <QImage>
#include <QWidget>

#include <optional>

namespace quillon {

/// A chart that no chart library has: painted in the colours of the other charts, on the screen and as a
/// picture. Pointing at a place tells what it is, a click chooses it.
class PaintedChart : public QWidget
{
    Q_OBJECT

public:
    explicit PaintedChart(QWidget *parent = nullptr);

    /// The chart on a light ground, 1920 pixels wide.
    [[nodiscard]] QImage picture() const;

protected:
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

    virtual void paintChart(QPainter &painter, QSize size, const ChartStyle &style) const = 0;
    [[nodiscard]] virtual int pictureHeight(int width, const QFont &font) const = 0;
    [[nodiscard]] virtual QString tip(QPoint place) const = 0;
    virtual void choose(QPoint place) = 0;
};

/// A colour between two.
[[nodiscard]] QColor between(const QColor &first, const QColor &second, float shareOfSecond);

} // namespace quillon
