#include "live/receiver.h"
#include "live/rigctlsource.h"
#include "program.h"

#include <QTest>

#include <optional>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

// The real rigctld with its receiver of straw.
class TestRigctld : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFrequencyFollowsAndTheReceiverIsFoundAgain()
    {
        const quint16 port = freePort();
        const QStringList arguments {
            u"-m"_s, u"1"_s, u"-T"_s, u"127.0.0.1"_s, u"-t"_s, QString::number(port)};
        std::optional<Program> rigctld;
        rigctld.emplace(u"rigctld"_s, arguments, QProcessEnvironment::systemEnvironment());
        QVERIFY2(rigctld->started(), "rigctld is not installed (package libhamlib-utils)");

        Receiver receiver;
        auto source = std::make_unique<RigctlSource>(HostPort {u"127.0.0.1"_s, port});
        source->setSecond(100);
        RigctlSource *const rig = source.get();
        receiver.listenTo(std::move(source));
        QTRY_COMPARE_WITH_TIMEOUT(receiver.state(), ReceiverState::Listening, 20'000);
        rig->setSecond(1'000);
        receiver.tune(98'500'000);
        QTRY_COMPARE_WITH_TIMEOUT(receiver.listening().hertz(), qint64(98'500'000), 20'000);
        QTRY_VERIFY_WITH_TIMEOUT(receiver.listening().signal(), 20'000);
        QCOMPARE(receiver.listening().signal()->unit, u"dB");
        receiver.tune(99'050'000);
        QTRY_COMPARE_WITH_TIMEOUT(receiver.listening().hertz(), qint64(99'050'000), 20'000);
        QVERIFY(!receiver.listening().station());

        rigctld.reset();
        QTRY_COMPARE_WITH_TIMEOUT(receiver.state(), ReceiverState::Lost, 20'000);
        rigctld.emplace(u"rigctld"_s, arguments, QProcessEnvironment::systemEnvironment());
        QTRY_COMPARE_WITH_TIMEOUT(receiver.state(), ReceiverState::Listening, 40'000);
        receiver.tune(87'600'000);
        QTRY_COMPARE_WITH_TIMEOUT(receiver.listening().hertz(), qint64(87'600'000), 20'000);
    }
};

QTEST_GUILESS_MAIN(TestRigctld)
#include "tst_rigctld.moc"
