#pragma once

#include <QKeySequence>
#include <QList>
#include <QObject>

class QWidget;

namespace quillon {

/// Lets shortcuts of a window work in its fields, too, where the desktop has the same keys for editing:
/// Ctrl+E and Ctrl+K move and delete to the end of a line there. It belongs to the window.
class ShortcutFirst : public QObject
{
    Q_OBJECT

public:
    ShortcutFirst(QWidget &window, QList<QKeySequence> shortcuts);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget &m_window;
    QList<QKeySequence> m_shortcuts;
};

} // namespace quillon
