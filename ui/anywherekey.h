#pragma once

#include <QObject>

class QWidget;

namespace quillon {

/// A key of the whole program: it works in all its windows, below a modal box and while an import keeps the
/// other windows out of reach. A key that is held down counts once.
class AnywhereKey : public QObject
{
    Q_OBJECT

public:
    /// Lives as long as the window, which has to be shown and enabled for it to work.
    AnywhereKey(Qt::Key key, QWidget &window);

Q_SIGNALS:
    /// The key was pressed, in whatever window.
    void pressed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Qt::Key m_key;
};

} // namespace quillon
