#include "tour/look.h"

#include "ui/looks.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyleFactory>

namespace quillon::tour {

using namespace Qt::StringLiterals;

namespace {

struct Colours
{
    QRgb window;
    QRgb base;
    QRgb alternate;
    QRgb button;
    QRgb text;
    QRgb quiet;
    QRgb highlight;
    QRgb link;
};

constexpr Colours lightColours {
    0xffefefef, 0xffffffff, 0xfff6f6f7, 0xfff4f4f4, 0xff1b1c1e, 0xff8b8d91, 0xff2f6fb5, 0xff1a5fb4};
constexpr Colours darkColours {
    0xff2b2d30, 0xff1f2123, 0xff26282b, 0xff36393d, 0xffe4e6e8, 0xff83878c, 0xff3874b3, 0xff7fb2f0};

QPalette paletteOf(const Colours &colours)
{
    QPalette palette(QColor(colours.button), QColor(colours.window));
    palette.setColor(QPalette::Base, QColor(colours.base));
    palette.setColor(QPalette::AlternateBase, QColor(colours.alternate));
    palette.setColor(QPalette::ToolTipBase, QColor(colours.base));
    for (const QPalette::ColorRole role :
        {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, QColor(colours.text));
        palette.setColor(QPalette::Disabled, role, QColor(colours.quiet));
    }
    palette.setColor(QPalette::PlaceholderText, QColor(colours.quiet));
    palette.setColor(QPalette::Highlight, QColor(colours.highlight));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(colours.link));
    return palette;
}

} // namespace

void setLook()
{
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    installLooks();
    QFont font(u"DejaVu Sans"_s);
    font.setPointSize(9);
    QApplication::setFont(font);
    QApplication::setCursorFlashTime(0);
    for (const Qt::UIEffect effect : {Qt::UI_AnimateMenu, Qt::UI_FadeMenu, Qt::UI_AnimateCombo}) {
        QApplication::setEffectEnabled(effect, false);
    }
}

void setShade(Shade shade)
{
    QApplication::setPalette(paletteOf(shade == Shade::Light ? lightColours : darkColours));
}

} // namespace quillon::tour
