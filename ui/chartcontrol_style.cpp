#include "ui/chartcontrol_style.h"

#include <QFontInfo>
#include <QPalette>

#include <array>

namespace quillon {

namespace {

constexpr int clockSteps = 12;
using Clock = std::array<QRgb, clockSteps>;

// Chosen in the OKLab colour space so that the least distance of any two, seen with normal sight or without
// one of the three kinds of cones, is as large as it gets.
constexpr Clock clockOnLight {0xff2f006e, 0xff3016ae, 0xff4a5ca2, 0xff098989, 0xff4ba9bc, 0xff07d4a8,
    0xffe6b43a, 0xffc2904c, 0xff9b6d06, 0xff981a03, 0xff73335a, 0xff560030};
constexpr Clock clockOnDark {0xff3b3cad, 0xff7868ae, 0xff4673fe, 0xff7fabd0, 0xff17dca2, 0xff8bffe1,
    0xfff1f55c, 0xfff7b013, 0xffe2780c, 0xffb26260, 0xffa90502, 0xff674868};

constexpr std::array<QRgb, 2> pairOnLight {0xff2a6fb3, 0xffc46a12};
constexpr std::array<QRgb, 2> pairOnDark {0xff64aef0, 0xfff0a050};

QColor mixed(const QColor &first, const QColor &second, float shareOfSecond)
{
    const auto mix = [shareOfSecond](float a, float b) { return a + (b - a) * shareOfSecond; };
    return QColor::fromRgbF(mix(first.redF(), second.redF()), mix(first.greenF(), second.greenF()),
        mix(first.blueF(), second.blueF()));
}

} // namespace

ChartStyle ChartStyle::of(const QPalette &palette)
{
    constexpr float quietness = 0.3F;
    constexpr float gridFaintness = 0.86F;
    ChartStyle style;
    style.ground = palette.color(QPalette::Base);
    style.text = palette.color(QPalette::Text);
    style.quiet = mixed(style.text, style.ground, quietness);
    style.grid = mixed(style.text, style.ground, gridFaintness);
    style.dark = style.ground.lightness() < style.text.lightness();
    return style;
}

QColor ChartStyle::series(int number, int count) const
{
    const auto &pair = dark ? pairOnDark : pairOnLight;
    if (count <= static_cast<int>(pair.size())) {
        return pair.at(static_cast<std::size_t>(number));
    }
    const auto &clock = dark ? clockOnDark : clockOnLight;
    const int scaled = number * clockSteps;
    const QColor colour = clock.at(static_cast<std::size_t>(scaled / count));
    if (scaled % count == 0) {
        return colour;
    }
    const QColor next = clock.at(static_cast<std::size_t>((scaled / count + 1) % clockSteps));
    return mixed(colour, next, static_cast<float>(scaled % count) / static_cast<float>(count));
}

QFont scaledFont(QFont font, qreal factor)
{
    font.setPointSizeF(QFontInfo(font).pointSizeF() * factor);
    return font;
}

QPalette lightPalette()
{
    QPalette palette(QColor(0xf0, 0xf0, 0xf0));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, QColor(0x1c, 0x1c, 0x1c));
    return palette;
}

} // namespace quillon
