#include "live/receiversettings.h"
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
};

QTEST_MAIN(TestReceiverSettings)
#include "tst_receiversettings.moc"
