#pragma once

#include <QEvent>
#include <QObject>
#include <QWidget>

namespace quillon::test {

/// How often a widget was painted.
class Paintings : public QObject
{
public:
    explicit Paintings(QWidget &widget) { widget.installEventFilter(this); }
    int count = 0;

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

} // namespace quillon::test
