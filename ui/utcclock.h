#pragma once

#include <QLabel>
#include <QTimer>

namespace quillon {

/// The clock's time in UTC, as "18:22:05 UTC". It runs while it is seen.
class UtcClock : public QLabel
{
    Q_OBJECT

public:
    explicit UtcClock(QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void tick();

    QTimer m_timer;
};

} // namespace quillon
