#pragma once

#include <QApplication>
#include <QTest>
#include <QWheelEvent>

#include <qtestspontaneevent.h>

namespace quillon::test {

/// Turns the mouse wheel over the middle of a widget, as if by hand: up for positive steps, down for
/// negative.
inline void turnWheel(QWidget &widget, int steps)
{
    constexpr int degreesOfAStep = 120; // in eighths, as mice count
    const QPoint middle = widget.rect().center();
    QWidget *child = widget.childAt(middle);
    QWidget &over = child ? *child : widget;
    QWheelEvent event(over.mapFrom(&widget, middle), widget.mapToGlobal(middle), {},
        {0, steps * degreesOfAStep}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(&over, &event);
}

} // namespace quillon::test
