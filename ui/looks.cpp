#include "ui/looks.h"

#include "ui/keptpictures.h"

#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QGroupBox>
#include <QLineEdit>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>

#include <algorithm>
#include <cmath>

namespace quillon {

namespace {

constexpr int ringWidth = 2;

double luminance(const QColor &colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

QColor mixed(const QColor &from, const QColor &to, double part)
{
    const auto between = [part](float one, float other) {
        return static_cast<float>(one + (other - one) * part);
    };
    return QColor::fromRgbF(between(from.redF(), to.redF()), between(from.greenF(), to.greenF()),
        between(from.blueF(), to.blueF()));
}

// As quiet as it can be and still be read on all of the backgrounds.
QColor readable(const QColor &quiet, const QColor &loud, std::initializer_list<QColor> backgrounds)
{
    constexpr double wanted = readableContrast + 0.3; // styles shade what they fill
    constexpr int steps = 32;
    for (int step = 0; step < steps; ++step) {
        const QColor colour = mixed(quiet, loud, static_cast<double>(step) / steps);
        if (std::ranges::all_of(
                backgrounds, [&](const QColor &behind) { return contrastOf(colour, behind) >= wanted; })) {
            return colour;
        }
    }
    return loud;
}

bool hasRing(const QStyleOption &option, const QWidget *widget)
{
    return (option.state & QStyle::State_HasFocus) && (option.state & QStyle::State_Enabled) && widget
        && !qobject_cast<const QComboBox *>(widget->parentWidget());
}

// Not the part of another control that is typed in.
bool isFieldOfItsOwn(const QWidget *widget)
{
    return qobject_cast<const QLineEdit *>(widget) && !qobject_cast<const QComboBox *>(widget->parentWidget())
        && !qobject_cast<const QAbstractSpinBox *>(widget->parentWidget());
}

// A box without a title, or with a tick in it, has its frame elsewhere.
bool isTitled(const QWidget *widget)
{
    const auto *box = qobject_cast<const QGroupBox *>(widget);
    return box && !box->isCheckable() && !box->title().isEmpty();
}

void drawRing(QPainter &painter, const QStyleOption &option)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(focusColour(QApplication::palette()), ringWidth));
    constexpr double inset = ringWidth / 2.0;
    painter.drawRoundedRect(QRectF(option.rect).adjusted(inset, inset, -inset, -inset), 2, 2);
    painter.restore();
}

class Looks : public QProxyStyle
{
public:
    using QProxyStyle::polish;

    Looks() { qApp->installEventFilter(this); }

    void polish(QPalette &palette) override
    {
        QProxyStyle::polish(palette);
        palette = withReadableTexts(palette);
    }

    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override
    {
        const int pixels = QProxyStyle::pixelMetric(metric, option, widget);
        const bool framed = metric == PM_DefaultFrameWidth
            && qobject_cast<const QAbstractScrollArea *>(widget) && widget->focusPolicy() != Qt::NoFocus;
        return framed ? std::max(pixels, ringWidth) : pixels;
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
        const QWidget *widget) const override
    {
        const auto draw = [&](QPainter &on) { QProxyStyle::drawPrimitive(element, option, &on, widget); };
        const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
        const bool keeps = frame && !frame->rect.isEmpty() && baseStyle()->name() == u"fusion";
        if (keeps && element == PE_PanelLineEdit && isFieldOfItsOwn(widget)) {
            m_pictures.drawFieldPanel(*painter, *frame, draw);
        } else if (keeps && element == PE_FrameGroupBox && isTitled(widget)) {
            m_pictures.drawGroupFrame(*painter, *frame, draw);
        } else {
            draw(*painter);
        }
        if ((element == PE_PanelLineEdit || element == PE_Frame) && hasRing(*option, widget)) {
            drawRing(*painter, *option);
        }
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
        const QWidget *widget) const override
    {
        const auto draw = [&](QPainter &on) {
            QProxyStyle::drawComplexControl(control, option, &on, widget);
        };
        const bool keeps = !option->rect.isEmpty() && baseStyle()->name() == u"fusion";
        if (const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
            bar && control == CC_ScrollBar && keeps) {
            m_pictures.drawScrollBar(*painter, *bar,
                baseStyle()->subControlRect(CC_ScrollBar, bar, SC_ScrollBarSlider, widget), draw);
            return;
        }
        if (const auto *combo = qstyleoption_cast<const QStyleOptionComboBox *>(option); combo && keeps) {
            m_pictures.drawCombo(*painter, *combo, draw);
        } else {
            draw(*painter);
        }
        if (control == CC_ComboBox && hasRing(*option, widget)) {
            drawRing(*painter, *option);
        }
    }

    // Colours that are set instead of the desktop's do not pass through polish.
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange) {
            const QPalette set = QApplication::palette();
            if (const QPalette wanted = withReadableTexts(set); wanted != set) {
                QApplication::setPalette(wanted);
            }
        }
        return QProxyStyle::eventFilter(watched, event);
    }

private:
    mutable KeptPictures m_pictures;
};

} // namespace

void installLooks()
{
    if (!dynamic_cast<const Looks *>(QApplication::style())) {
        QApplication::setStyle(new Looks);
    }
}

void keepRoomForCapitals(QLineEdit &field, int count)
{
    const int margins = field.minimumSizeHint().width() - field.fontMetrics().maxWidth();
    field.setMinimumWidth(
        count * field.fontMetrics().horizontalAdvance(u'M') + std::max(margins, 0) + 4 * ringWidth);
}

double contrastOf(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QPalette withReadableTexts(QPalette palette)
{
    const auto colour = [&](QPalette::ColorRole role) { return palette.color(QPalette::Disabled, role); };
    const auto make = [&](QPalette::ColorRole role, std::initializer_list<QColor> backgrounds) {
        const QColor quiet = colour(role);
        const QColor mended = readable(quiet, palette.color(QPalette::Active, role), backgrounds);
        if (mended.rgb() != quiet.rgb()) {
            palette.setColor(QPalette::Disabled, role, mended);
        }
    };
    make(QPalette::WindowText, {colour(QPalette::Window), colour(QPalette::Base)});
    make(QPalette::Text, {colour(QPalette::Base), colour(QPalette::Window), colour(QPalette::AlternateBase)});
    make(QPalette::ButtonText, {colour(QPalette::Button), colour(QPalette::Window)});
    return palette;
}

QColor focusColour(const QPalette &palette)
{
    constexpr QRgb onLight = 0xff0b57d0;
    constexpr QRgb onDark = 0xff3d8bff;
    return QColor(palette.color(QPalette::Window).lightness() < 128 ? onDark : onLight);
}

} // namespace quillon
