#include "geo/ui/mapclouds.h"

#include "geo/muf.h"

#include <QRect>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// Pixels of the map to a cell of the field, a side.
constexpr int cell = 4;
// How far a path's middle is spread: the size of a cloud in km, bounded in pixels.
constexpr double spread = 70;
constexpr double leastPixels = 7;
constexpr double mostPixels = 64;

class Field
{
public:
    Field(int width, int height)
        : m_width(width)
        , m_height(height)
        , m_values(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
    {
    }

    [[nodiscard]] float &at(int x, int y)
    {
        return m_values[static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width)
            + static_cast<std::size_t>(x)];
    }

    // Shares a weight among the four cells around a point.
    void add(double x, double y, double weight)
    {
        const int left = static_cast<int>(std::floor(x));
        const int top = static_cast<int>(std::floor(y));
        if (left < 0 || top < 0 || left + 1 >= m_width || top + 1 >= m_height) {
            return;
        }
        const double right = x - left;
        const double below = y - top;
        at(left, top) += static_cast<float>(weight * (1 - right) * (1 - below));
        at(left + 1, top) += static_cast<float>(weight * right * (1 - below));
        at(left, top + 1) += static_cast<float>(weight * (1 - right) * below);
        at(left + 1, top + 1) += static_cast<float>(weight * right * below);
    }

    // Three running means one after the other are close to a bell curve.
    void blur(int radius)
    {
        std::vector<float> line;
        const auto width = static_cast<std::size_t>(m_width);
        const auto height = static_cast<std::size_t>(m_height);
        for (int pass = 0; pass < 3; ++pass) {
            for (std::size_t y = 0; y < height; ++y) {
                mean(y * width, 1, width, radius, line);
            }
            for (std::size_t x = 0; x < width; ++x) {
                mean(x, width, height, radius, line);
            }
        }
    }

    [[nodiscard]] float highest() const { return *std::ranges::max_element(m_values); }

    // The cells that hold more than a value lie in this rectangle.
    [[nodiscard]] QRect above(float value)
    {
        QRect area;
        for (int y = 0; y < m_height; ++y) {
            const float *first = &at(0, y);
            const float *end = first + m_width;
            const float *left = std::find_if(first, end, [value](float v) { return v > value; });
            if (left != end) {
                const float *right = end;
                while (!(*(right - 1) > value)) {
                    --right;
                }
                area |= QRect(static_cast<int>(left - first), y, static_cast<int>(right - left), 1);
            }
        }
        return area;
    }

private:
    // Of `size` cells from `first` on, `step` apart.
    void mean(std::size_t first, std::size_t step, std::size_t size, int radius, std::vector<float> &line)
    {
        const auto reach = static_cast<std::size_t>(radius);
        line.assign(size + 2 * reach + 1, 0);
        for (std::size_t i = 0; i < size; ++i) {
            line[i + reach] = m_values[first + i * step];
        }
        const float share = 1.0F / static_cast<float>(2 * radius + 1);
        float sum = 0;
        for (std::size_t i = 0; i < 2 * reach; ++i) {
            sum += line[i];
        }
        for (std::size_t i = 0; i < size; ++i) {
            sum += line[i + 2 * reach];
            // What rounding leaves must not become a value.
            m_values[first + i * step] = std::max(0.0F, sum * share);
            sum -= line[i];
        }
    }

    int m_width;
    int m_height;
    std::vector<float> m_values;
};

// The colours of shares of the highest density, ready to be painted.
class Ramp
{
public:
    explicit Ramp(const MapStyle &style)
    {
        for (std::size_t i = 0; i < m_colours.size(); ++i) {
            // By the root, so that a single reception is seen beside many.
            const double share =
                std::sqrt(static_cast<double>(i) / static_cast<double>(m_colours.size() - 1));
            m_colours[i] = qPremultiply(style.density(share).rgba());
        }
    }

    [[nodiscard]] QRgb at(float share) const
    {
        return m_colours[static_cast<std::size_t>(share * static_cast<float>(m_colours.size() - 1))];
    }

    // Shares up to this are transparent.
    [[nodiscard]] float least() const { return 1.0F / static_cast<float>(m_colours.size() - 1); }

private:
    std::array<QRgb, 1024> m_colours {};
};

bool isOneHop(const MapScene &scene, std::size_t site)
{
    const QPointF point = scene.pointOfSite(site);
    return std::hypot(point.x(), point.y()) <= longestHop;
}

// Calls with the number of each site that was received by Es in one hop.
template<typename Work>
void forEachHop(const MapScene &scene, Work work)
{
    for (std::size_t site = 0; site < scene.data().sites.size(); ++site) {
        const qint32 count = scene.data().sites[site].modes[esMode].count;
        if (count > 0) {
            work(site, count, isOneHop(scene, site));
        }
    }
}

} // namespace

CloudCounts cloudCounts(const MapScene &scene)
{
    CloudCounts counts;
    if (scene.data().home) {
        forEachHop(scene, [&counts](std::size_t, qint32 count, bool oneHop) {
            (oneHop ? counts.counted : counts.beyondOneHop) += count;
        });
    }
    return counts;
}

CloudPicture cloudPicture(const MapScene &scene, const MapViewport &viewport, const MapStyle &style)
{
    const double pixels = std::clamp(spread / viewport.kmPerPixel(), leastPixels, mostPixels);
    const int radius = std::max(1, static_cast<int>(std::lround(pixels / cell)));
    // Middles out of sight still reach into it.
    const int margin = 3 * radius + 2;
    const int width = static_cast<int>(std::ceil(viewport.size().width() / cell));
    const int height = static_cast<int>(std::ceil(viewport.size().height() / cell));
    Field field(width + 2 * margin, height + 2 * margin);
    forEachHop(scene, [&](std::size_t site, qint32 count, bool oneHop) {
        if (oneHop) {
            // Lines through home are true to distance, so the middle of the path is that of the line.
            const QPointF pixel = viewport.toPixel(scene.pointOfSite(site) / 2);
            field.add(pixel.x() / cell - 0.5 + margin, pixel.y() / cell - 0.5 + margin, count);
        }
    });
    field.blur(radius);
    const float highest = field.highest();
    const Ramp ramp(style);
    const QRect seen = field.above(ramp.least() * highest).intersected({margin, margin, width, height});
    if (highest <= 0 || seen.isEmpty()) {
        return {};
    }
    QImage image(seen.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < seen.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < seen.width(); ++x) {
            line[x] = ramp.at(field.at(x + seen.x(), y + seen.y()) / highest);
        }
    }
    return {
        image, QRectF(QPointF(seen.topLeft() - QPoint(margin, margin)) * cell, QSizeF(seen.size()) * cell)};
}

QString mapMessage(const MapScene &scene, bool clouds)
{
    if (!clouds) {
        return scene.dots().empty() ? u"No receptions to show"_s : QString();
    }
    const CloudCounts counts = cloudCounts(scene);
    if (counts.counted + counts.beyondOneHop == 0) {
        return u"No Es receptions"_s;
    }
    QString words =
        counts.counted == 1 ? u"Middle of 1 Es path"_s : u"Middles of %1 Es paths"_s.arg(counts.counted);
    if (counts.beyondOneHop > 0) {
        words += u", %1 of more than one hop left out"_s.arg(counts.beyondOneHop);
    }
    return words;
}

} // namespace quillon
