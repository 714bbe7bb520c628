#include "live/heardtable.h"
#include "live/listening.h"
#include "live/xdrdsource.h"
#include "receiver-standin/receiverstandin.h"

#include <QTest>

using namespace quillon;
using namespace quillon::rdssignal;
using namespace Qt::StringLiterals;

namespace {

const QStringList list {u"# MHz;PI;PS;text;clock;seconds;ECC"_s, u"88.7;E211;RNE 1;;;20;E2"_s, u""_s,
    u"102.45;E241;ONDACERO;;;20;"_s};

HostPort addressOf(const ReceiverStandIn &standIn)
{
    return {u"127.0.0.1"_s, standIn.port()};
}

} // namespace

/// The receiver of the demo, heard through the program's own source.
class TestReceiverStandIn : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itWalksThroughItsList();
    void whoHasAPasswordTunesIt();
    void aListIsRead();
};

void TestReceiverStandIn::itWalksThroughItsList()
{
    ReceiverStandIn standIn(readStations(list).stations, {0, 0.5, 9, 0.001, 1}, 20, nullptr);
    QVERIFY(standIn.listen(0));
    const KnownStations nothing;
    Listening listening(nothing);
    HeardTable heard;
    bool strength = false;
    XdrdSource source(addressOf(standIn), {});
    connect(&source, &ReceiverSource::told, this, [&](const ReceiverEvent &event, qint64 when) {
        listening.take(event, when);
        strength = strength || listening.signal();
        if (listening.station()) {
            heard.note(*listening.station());
        }
    });
    source.start();
    QTRY_VERIFY(heard.rows().size() == 2 && !heard.rows()[1].station.ps.isEmpty());
    source.stop();
    QVERIFY(strength);
    QVERIFY(!source.canTune());
    const Station &first = heard.rows()[0].station;
    QCOMPARE(first.hertz, 88'700'000);
    QCOMPARE(first.pi, 0xE211);
    QCOMPARE(first.ps.trimmed(), u"RNE 1"_s);
    QVERIFY(first.certain);
    const Station &second = heard.rows()[1].station;
    QCOMPARE(second.hertz, 102'450'000);
    QCOMPARE(second.pi, 0xE241);
    QCOMPARE(second.ps, u"ONDACERO"_s);
}

void TestReceiverStandIn::whoHasAPasswordTunesIt()
{
    ReceiverStandIn standIn(readStations(list).stations, {}, 1, nullptr);
    QVERIFY(standIn.listen(0));
    XdrdSource source(addressOf(standIn), u"any"_s);
    QList<qint64> tuned;
    connect(&source, &ReceiverSource::told, this, [&](const ReceiverEvent &event, qint64) {
        if (const auto *to = std::get_if<Tuned>(&event)) {
            tuned += to->hertz;
        }
    });
    source.start();
    QTRY_COMPARE(tuned, QList<qint64> {88'700'000});
    QVERIFY(source.canTune());
    source.tune(102'450'000);
    QTRY_COMPARE(tuned.last(), 102'450'000);
    // Where no station is, there is noise.
    source.tune(100'000'000);
    QTRY_COMPARE(tuned.last(), 100'000'000);
}

void TestReceiverStandIn::aListIsRead()
{
    QCOMPARE(readStations(list).stations.size(), 2U);
    QCOMPARE(readStations({u"# nothing"_s}).wrong, u"no station given"_s);
    QVERIFY(readStations({u"88.7;E211"_s, u"RNE 1"_s}).wrong.startsWith(u"no station: RNE 1 "_s));
}

QTEST_GUILESS_MAIN(TestReceiverStandIn)
#include "tst_receiverstandin.moc"
