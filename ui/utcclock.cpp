#include "ui/utcclock.h"

#include <QDateTime>

namespace quillon {

using namespace Qt::StringLiterals;

UtcClock::UtcClock(QWidget *parent)
    : QLabel(parent)
{
    setObjectName(u"utcClock"_s);
    setAccessibleName(u"Time in UTC"_s);
    setToolTip(u"The time of this computer's clock in UTC"_s);
    setTextFormat(Qt::PlainText);
    // The bar does not move with the digits.
    setMinimumWidth(fontMetrics().horizontalAdvance(u"00:00:00 UTC"_s) + 2);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, [this] { tick(); });
}

void UtcClock::showEvent(QShowEvent *event)
{
    tick();
    QLabel::showEvent(event);
}

void UtcClock::hideEvent(QHideEvent *event)
{
    m_timer.stop();
    QLabel::hideEvent(event);
}

// Again when the next second begins.
void UtcClock::tick()
{
    constexpr int second = 1000;
    const QTime now = QDateTime::currentDateTimeUtc().time();
    setText(now.toString(u"HH:mm:ss"_s) + u" UTC"_s);
    m_timer.start(second - now.msec());
}

} // namespace quillon
