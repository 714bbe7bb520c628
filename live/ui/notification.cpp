#include "live/ui/notification.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QStringList>
#include <QVariantMap>

namespace quillon {

using namespace Qt::StringLiterals;

void notifyDesktop(const QString &title, const QString &text)
{
    constexpr uint nothingReplaced = 0;
    constexpr int usualTime = -1;
    QDBusMessage call = QDBusMessage::createMethodCall(u"org.freedesktop.Notifications"_s,
        u"/org/freedesktop/Notifications"_s, u"org.freedesktop.Notifications"_s, u"Notify"_s);
    call.setArguments({u"Quillon"_s, nothingReplaced, u"quillon"_s, title, text, QStringList(),
        QVariantMap {{u"desktop-entry"_s, u"quillon"_s}}, usualTime});
    // The number that it gets is of no use here: no answer is waited for.
    (void)QDBusConnection::sessionBus().send(call);
}

} // namespace quillon
