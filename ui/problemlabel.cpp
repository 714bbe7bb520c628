#include "ui/problemlabel.h"

#include "ui/plaintip.h"

#include <QAccessible>
#include <QEvent>

namespace quillon {

using namespace Qt::StringLiterals;

QColor problemColour(const QColor &background)
{
    constexpr QRgb onLight = 0xffb00020;
    constexpr QRgb onDark = 0xffff9b90;
    // How bright it looks: by its lightness yellow would be no brighter than grey.
    return {qGray(background.rgb()) < 128 ? onDark : onLight};
}

ProblemLabel::ProblemLabel(QWidget *parent)
    : QLabel(parent)
{
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.9);
    setFont(small);
    setTextFormat(Qt::PlainText);
    takeRoom();
    chooseColour();
}

void ProblemLabel::setLines(int lines)
{
    m_lines = lines;
    takeRoom();
}

void ProblemLabel::tell(const QString &problem)
{
    if (problem == text()) {
        return;
    }
    setText(problem);
    setToolTip(plainTip(problem));
    setAccessibleName(problem.isEmpty() ? u"No problem"_s : u"Problem: "_s + problem);
    takeRoom();
    if (!problem.isEmpty()) {
        QAccessibleEvent alert(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}

void ProblemLabel::showProblem(const QString &problem, QWidget *field)
{
    clearProblem();
    if (problem.isEmpty()) {
        return;
    }
    m_field = field;
    field->setAccessibleDescription(problem);
    tell(problem);
}

void ProblemLabel::clearProblem()
{
    tell({});
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

void ProblemLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    takeRoom();
}

void ProblemLabel::takeRoom()
{
    const int kept = m_lines * fontMetrics().lineSpacing();
    setMinimumHeight(wordWrap() && !text().isEmpty() ? qMax(kept, heightForWidth(width())) : kept);
}

void ProblemLabel::chooseColour()
{
    QPalette colours = palette();
    const QColor red = problemColour(colours.color(QPalette::Window));
    if (colours.color(QPalette::WindowText) != red) {
        colours.setColor(QPalette::WindowText, red);
        setPalette(colours);
    }
}

} // namespace quillon
