#include "geo/ui/mapstyle.h"

#include "stats/mapdata.h"

#include <QPalette>

#include <algorithm>
#include <array>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

using Modes = std::array<QRgb, mapModeCount>;

// Es, Tropo, MS, TEP, Aur, F2, FAI, other. Chosen in the OKLab colour space so that the least distance of any
// two, seen with normal sight or without one of the three kinds of cones, is as large as it gets near the
// usual colours.
constexpr Modes modesOnLight {
    0xffc24905, 0xff0a70be, 0xfff2b503, 0xff913c79, 0xff45ac5a, 0xff24b5ff, 0xff603b08, 0xff808080};
constexpr Modes modesOnDark {
    0xffff8428, 0xff327cd7, 0xffffe933, 0xffef95ff, 0xff66e4a9, 0xffc1ffff, 0xff9f6917, 0xffa0a0a0};

// From few to many.
constexpr std::array<QRgb, 4> densityOnLight {0x00fdd49e, 0xb0fc8d59, 0xd0c01f3d, 0xe04a0b4f};
constexpr std::array<QRgb, 4> densityOnDark {0x00641a80, 0xb0b5367a, 0xd0fb8761, 0xe0fcfdbf};

int mixed(int from, int to, double share)
{
    return from + static_cast<int>((to - from) * share);
}

} // namespace

MapStyle MapStyle::of(const QPalette &palette)
{
    MapStyle style;
    style.dark = palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
    style.beyond = palette.color(QPalette::Window);
    style.link = style.dark ? QColor(0x8a, 0xc4, 0xff) : palette.color(QPalette::Link);
    if (style.dark) {
        style.sea = QColor(0x16, 0x20, 0x2a);
        style.land = QColor(0x2d, 0x37, 0x3f);
        style.coast = QColor(0x5b, 0x6b, 0x78);
        style.border = QColor(0x49, 0x56, 0x61);
        style.ring = QColor(255, 255, 255, 44);
        style.text = QColor(0xf2, 0xf2, 0xf2);
        style.quiet = QColor(0xb4, 0xc0, 0xca);
        style.halo = QColor(0x10, 0x17, 0x1e, 210);
        style.path = QColor(0xff, 0xff, 0xff);
    } else {
        style.sea = QColor(0xdc, 0xe9, 0xf3);
        style.land = QColor(0xf6, 0xf3, 0xea);
        style.coast = QColor(0x9a, 0xae, 0xbd);
        style.border = QColor(0xcf, 0xc9, 0xba);
        style.ring = QColor(20, 50, 80, 52);
        style.text = QColor(0x1c, 0x22, 0x28);
        style.quiet = QColor(0x4c, 0x5e, 0x6e);
        style.halo = QColor(255, 255, 255, 215);
        style.path = QColor(0x14, 0x1c, 0x24);
    }
    return style;
}

QColor MapStyle::mode(std::size_t number) const
{
    return (dark ? modesOnDark : modesOnLight).at(std::min(number, otherMode));
}

QColor MapStyle::edge() const
{
    return dark ? QColor(0, 0, 0, 200) : QColor(40, 30, 20, 190);
}

QColor MapStyle::density(double share) const
{
    const auto &stops = dark ? densityOnDark : densityOnLight;
    const double place = std::clamp(share, 0.0, 1.0) * static_cast<double>(stops.size() - 1);
    const auto index = std::min(static_cast<std::size_t>(place), stops.size() - 2);
    const double rest = place - static_cast<double>(index);
    const QColor from = QColor::fromRgba(stops.at(index));
    const QColor to = QColor::fromRgba(stops.at(index + 1));
    return {mixed(from.red(), to.red(), rest), mixed(from.green(), to.green(), rest),
        mixed(from.blue(), to.blue(), rest), mixed(from.alpha(), to.alpha(), rest)};
}

QString MapStyle::linked(const QString &words) const
{
    return u"<a href=\"#\" style=\"color:"_s + link.name() + u"\">"_s + words.toHtmlEscaped() + u"</a>"_s;
}

} // namespace quillon
