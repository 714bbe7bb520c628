#pragma once

#include <QImage>
#include <QRect>
#include <QWidget>

#include <vector>

namespace quillon::test {

/// A widget as it is painted, one pixel to each of its own on every screen.
[[nodiscard]] inline QImage painted(QWidget &widget)
{
    QImage image(widget.size(), QImage::Format_RGB32);
    widget.render(&image);
    return image;
}

/// The areas of exactly this colour, from left to right: each as the rectangle around a run of columns that
/// hold it, broken by any column that does not.
[[nodiscard]] inline std::vector<QRect> areasOf(const QImage &image, QRgb colour)
{
    std::vector<QRect> areas;
    int last = -2;
    for (int x = 0; x < image.width(); ++x) {
        int top = -1;
        int bottom = -1;
        for (int y = 0; y < image.height(); ++y) {
            if ((image.pixel(x, y) | 0xff000000U) == (colour | 0xff000000U)) {
                top = top < 0 ? y : top;
                bottom = y;
            }
        }
        if (top >= 0) {
            const QRect column(x, top, 1, bottom - top + 1);
            if (last == x - 1) {
                areas.back() = areas.back().united(column);
            } else {
                areas.push_back(column);
            }
            last = x;
        }
    }
    return areas;
}

} // namespace quillon::test
