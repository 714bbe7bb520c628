#include "platform/pause.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

using namespace quillon;

class TestPause : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void twoSecondsAreTwoSecondsOfTheWallClock()
    {
        const qint64 before = QDateTime::currentSecsSinceEpoch();
        Pause(2);
        const qint64 after = QDateTime::currentSecsSinceEpoch();
        QVERIFY(after >= before + 2);
        QVERIFY(after <= before + 3);
    }

    void noneIsNone()
    {
        QElapsedTimer clock;
        clock.start();
        Pause(0);
        Pause(-1);
        QVERIFY(clock.elapsed() < 15);
    }

    void noEventsRunMeanwhile()
    {
        bool ran = false;
        QTimer::singleShot(0, this, [&ran] { ran = true; });
        Pause(0.5F);
        QVERIFY(!ran);
        QTRY_VERIFY(ran);
    }
};

QTEST_GUILESS_MAIN(TestPause)
#include "tst_pause.moc"
