#pragma once

#include <QObject>

class QWidget;

namespace quillon {

/// As long as it lives, keys, clicks and the wheel reach this window and the boxes that it shows, and no
/// other window of the program: what is done elsewhere is dropped, not kept for later. A key of the whole
/// program (AnywhereKey) works on. For work that lets the events of its own window through.
class InputOnlyIn : public QObject
{
    Q_OBJECT

public:
    explicit InputOnlyIn(QWidget &window);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] bool mayPass(const QObject *object) const;

    QWidget &m_window;
};

} // namespace quillon
