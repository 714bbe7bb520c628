#pragma once

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>

#include <optional>
#include <vector>

class QPainter;

namespace quillon {

/// Keeps texts on the map from covering one another.
class LabelRoom
{
public:
    explicit LabelRoom(const QRectF &area)
        : m_area(area)
    {
    }

    /// Nothing else is put here.
    void take(const QRectF &place) { m_taken.push_back(place); }
    /// True when the place is inside the area and free.
    [[nodiscard]] bool isFree(const QRectF &place) const;
    /// Takes a place of that size beside a point, `gap` pixels off: right, left, above, below or askew,
    /// whichever is free first.
    [[nodiscard]] std::optional<QRectF> beside(QPointF point, QSizeF size, double gap);

private:
    QRectF m_area;
    std::vector<QRectF> m_taken;
};

/// The room that a line of text takes.
[[nodiscard]] QSizeF textSize(const QFont &font, const QString &text);

/// Paints a line of text with a halo, readable on any ground.
void paintHaloText(QPainter &painter, const QRectF &place, const QFont &font, const QString &text,
    const QColor &colour, const QColor &halo);

} // namespace quillon
