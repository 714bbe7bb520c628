#include "live/ui/notification.h"

#include <QDBusConnection>
#include <QProcess>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

/// The part of a desktop that shows notifications.
class Desktop : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QStringList shown;

public Q_SLOTS:
    uint Notify(const QString &program, uint /*replaced*/, const QString &icon, const QString &title,
        const QString &text, const QStringList & /*actions*/, const QVariantMap & /*hints*/, int /*time*/)
    {
        shown += QStringList {program, icon, title, text}.join(u'|');
        return 1;
    }
};

/// Notifications, on a session bus of the test's own.
class TestNotification : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theDesktopShowsIt();
    void withoutADesktopNothingHappens();
    void cleanupTestCase();

private:
    QProcess m_bus;
    QString m_address;
};

void TestNotification::initTestCase()
{
    m_bus.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address=1"_s});
    QVERIFY(m_bus.waitForStarted());
    while (!m_bus.canReadLine()) {
        QVERIFY(m_bus.waitForReadyRead());
    }
    m_address = QString::fromLatin1(m_bus.readLine().trimmed());
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_address.toLatin1());
}

void TestNotification::theDesktopShowsIt()
{
    QDBusConnection bus = QDBusConnection::connectToBus(m_address, u"desktop"_s);
    Desktop desktop;
    QVERIFY(
        bus.registerObject(u"/org/freedesktop/Notifications"_s, &desktop, QDBusConnection::ExportAllSlots));
    QVERIFY(bus.registerService(u"org.freedesktop.Notifications"_s));
    notifyDesktop(u"98.5 MHz E201 <b>1"_s, u"new PI"_s);
    QTRY_COMPARE(desktop.shown, QStringList {u"Quillon|quillon|98.5 MHz E201 <b>1|new PI"_s});
    QVERIFY(bus.unregisterService(u"org.freedesktop.Notifications"_s));
    QDBusConnection::disconnectFromBus(u"desktop"_s);
}

void TestNotification::withoutADesktopNothingHappens()
{
    QElapsedTimer clock;
    clock.start();
    notifyDesktop(u"98.5 MHz E201"_s, u"new PI"_s);
    QVERIFY(clock.elapsed() < 1'000);
}

void TestNotification::cleanupTestCase()
{
    m_bus.kill();
    QVERIFY(m_bus.waitForFinished());
}

QTEST_GUILESS_MAIN(TestNotification)
#include "tst_notification.moc"
