#include "geo/ui/problemlabel.h"

#include <QAccessible>
#include <QEvent>

namespace quillon {

ProblemLabel::ProblemLabel(QWidget *parent)
    : QLabel(parent)
{
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.9);
    setFont(small);
    setMinimumHeight(fontMetrics().height());
    chooseColour();
}

void ProblemLabel::showProblem(const QString &problem, QWidget *field)
{
    clearProblem();
    if (problem.isEmpty()) {
        return;
    }
    m_field = field;
    setText(problem);
    field->setAccessibleDescription(problem);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void ProblemLabel::clearProblem()
{
    clear();
    if (m_field) {
        m_field->setAccessibleDescription({});
    }
}

void ProblemLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        chooseColour();
    }
}

void ProblemLabel::chooseColour()
{
    constexpr QRgb onLight = 0xffb00020;
    constexpr QRgb onDark = 0xffff9b90;
    QPalette colours = palette();
    const QColor red = QColor(colours.color(QPalette::Window).lightness() < 128 ? onDark : onLight);
    if (colours.color(QPalette::WindowText) != red) {
        colours.setColor(QPalette::WindowText, red);
        setPalette(colours);
    }
}

} // namespace quillon
