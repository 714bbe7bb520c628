#include "live/receiversettings.h"
#include "platform/runtimeerror.h"
#include "support/faultycalls.h"
#include "support/testfiles.h"

#include <QTest>

#include <array>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

constexpr std::array choices {&ReceiverSettings::connectAtStart, &ReceiverSettings::textAsNotes,
    &ReceiverSettings::mayTune, &ReceiverSettings::sound, &ReceiverSettings::notification};

ReceiverSettings kept(const ReceiverSettings &settings)
{
    const TestDirectory folder;
    writeReceiverSettings(folder.path(), settings);
    return readReceiverSettings(folder.path());
}

} // namespace

/// What the listener has set about receivers, from one start of the program to the next.
class TestReceiverSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachChoiceIsKeptForItself_data()
    {
        QTest::addColumn<int>("chosen");
        QTest::newRow("nothing") << -1;
        QTest::newRow("connect at start") << 0;
        QTest::newRow("radiotext as notes") << 1;
        QTest::newRow("tuning") << 2;
        QTest::newRow("sound") << 3;
        QTest::newRow("notification") << 4;
    }

    void eachChoiceIsKeptForItself()
    {
        QFETCH(int, chosen);
        ReceiverSettings settings;
        for (int i = 0; i < static_cast<int>(choices.size()); ++i) {
            settings.*choices[static_cast<std::size_t>(i)] = i == chosen;
        }
        const ReceiverSettings read = kept(settings);
        for (const auto choice : choices) {
            QCOMPARE(read.*choice, settings.*choice);
        }
    }

    void aSourceIsKept()
    {
        ReceiverSettings settings;
        settings.last = {SourceKind::RdsSpy, u"/evening.spy"_s, {}, true};
        const SourceSettings read = kept(settings).last;
        QCOMPARE(read.kind, SourceKind::RdsSpy);
        QCOMPARE(read.address, u"/evening.spy"_s);
        QVERIFY(read.atOnce);
    }

    void whicheverCallFailsThePasswordsAreTheOldOrTheNewOnes()
    {
        ReceiverSettings old;
        old.last = {SourceKind::Xdrd, u"tuner:7373"_s, u"old"_s, false};
        ReceiverSettings next = old;
        next.last.password = u"new"_s;
        for (int failing = 1;; ++failing) {
            const TestDirectory folder;
            writeReceiverSettings(folder.path(), old);
            FaultyCalls calls(failing);
            bool told = false;
            try {
                writeReceiverSettings(folder.path(), next, calls);
            } catch (const RuntimeError &) {
                told = true;
            }
            QCOMPARE(told, calls.failed());
            const QString password = readReceiverSettings(folder.path()).last.password;
            QVERIFY2(password == (told ? u"old"_s : u"new"_s) || (told && password == u"new"_s),
                qPrintable(password));
            if (!calls.failed()) {
                QVERIFY(failing > 4);
                break;
            }
        }
    }
};

QTEST_MAIN(TestReceiverSettings)
#include "tst_receiversettings.moc"
