#include "core/logchange.h"
#include "live/autolog.h"
#include "live/heardtable.h"
#include "live/listening.h"
#include "live/reception.h"
#include "live/srcp.h"
#include "rds-signal/groupmaker.h"

#include <QTest>

#include <tuple>
#include <vector>

using namespace quillon;
using namespace quillon::rdssignal;
using namespace Qt::StringLiterals;

namespace {

constexpr quint16 code = 0xD3C2;
constexpr qint64 start = 1'750'000'000'000;
constexpr qint64 second = 1'000;

LogEntry logged(const QString &freq, const QString &pi, const QString &country, qint64 seconds = 0)
{
    LogEntry entry;
    entry.freq = freq;
    entry.piCode = pi;
    entry.country = country;
    entry.dateTime.seconds = seconds;
    return entry;
}

Logbook smallLog()
{
    Logbook log;
    log.AddEntry(logged(u"98.50"_s, u"D3C2"_s, u"Germany"_s, start / 1000));
    log.AddEntry(logged(u"87,6"_s, u"e201"_s, u"Spain"_s));
    log.AddEntry(logged(u"90.0"_s, u"delete"_s, u"Italy"_s));
    log.AddEntry(logged(u"?"_s, u"5201"_s, u"Italy"_s));
    return log;
}

RdsGroup name(quint16 pi, QStringView ps, int segment)
{
    return nameGroup(pi, rdsBytes(ps, 8), segment);
}

/// Groups of a name at the rate of RDS; the moment after them.
qint64 sendName(Listening &listening, quint16 pi, QStringView ps, int groups, qint64 when)
{
    for (int i = 0; i < groups; ++i) {
        listening.take(GroupHeard {name(pi, ps, i % 4)}, when);
        when += 88;
    }
    return when;
}

} // namespace

class TestListening : public QObject
{
    Q_OBJECT

    KnownStations m_none;

private Q_SLOTS:
    void aStationIsCertain_data()
    {
        QTest::addColumn<qint64>("hertz");
        QTest::addColumn<QList<qint64>>("moments");
        QTest::addColumn<bool>("certain");
        using M = QList<qint64>;
        QTest::newRow("one group") << qint64(99'000'000) << M {0} << false;
        QTest::newRow("two") << qint64(99'000'000) << M {0, 100} << false;
        QTest::newRow("three") << qint64(99'000'000) << M {0, 100, 200} << true;
        QTest::newRow("three within ten seconds") << qint64(99'000'000) << M {0, 5'000, 10'000} << true;
        QTest::newRow("three within more") << qint64(99'000'000) << M {0, 5'000, 10'001} << false;
        QTest::newRow("one of a known pair") << qint64(98'500'000) << M {0} << false;
        QTest::newRow("two of a known pair") << qint64(98'500'000) << M {0, 10'000} << true;
        QTest::newRow("two of a known pair within more") << qint64(98'500'000) << M {0, 10'001} << false;
        QTest::newRow("two without a frequency") << qint64(0) << M {0, 100} << false;
    }

    void aStationIsCertain()
    {
        QFETCH(qint64, hertz);
        QFETCH(QList<qint64>, moments);
        const KnownStations known(smallLog());
        Listening listening(known);
        if (hertz > 0) {
            listening.take(Tuned {hertz}, start);
        }
        for (const qint64 moment : moments) {
            listening.take(GroupHeard {name(code, u"RADIO 21", 0)}, start + moment);
        }
        QVERIFY(listening.station());
        QTEST(listening.station()->certain, "certain");
        QCOMPARE(shownPi(*listening.station()), listening.station()->certain ? u"D3C2"_s : u"D3C2?"_s);
    }

    void whoTunesNobodyKnowsWhereHearsAnotherStation()
    {
        Listening listening(m_none);
        listening.take(GroupHeard {name(code, u"RADIO 21", 0)}, start);
        listening.take(GroupHeard {name(code, u"RADIO 21", 1)}, start + 100);
        QVERIFY(listening.station());
        listening.take(Tuned {0}, start + 10'000);
        QVERIFY(!listening.station());
        QCOMPARE(listening.hertz(), qint64(0));
    }

    void whatIsKnownFollowsTheLog()
    {
        const auto numbers = [](std::initializer_list<qint32> entries) { return std::vector(entries); };
        const auto knows = [](const KnownStations &known) {
            return std::tuple(known.knows(98'500'000, code), known.knows(87'600'000, 0xE201),
                known.knows(99'000'000, 0xE202), known.marks(0, 0xE999, std::nullopt).country);
        };
        Logbook log = smallLog();
        KnownStations known(log);
        QCOMPARE(knows(known), std::tuple(true, true, false, false));
        log.AddEntry(logged(u"99.0"_s, u"E202"_s, u"Spain"_s));
        log.AddEntry(logged(u"99.1"_s, u"delete"_s, u"Spain"_s));
        known.follow(log, numbers({4, 5}));
        QCOMPARE(knows(known), std::tuple(true, true, true, false));
        // While receptions are only added the others are not looked at, and are when one of them changes.
        LogChange change;
        change.fields.push_back({0, LogField::PiCode, u"D3C2"_s, u"D3C3"_s});
        log.apply(change);
        log.AddEntry(logged(u"99.2"_s, u"E203"_s, u"Spain"_s));
        known.follow(log, numbers({6}));
        QCOMPARE(knows(known), std::tuple(true, true, true, false));
        QVERIFY(known.knows(0xE203));
        known.follow(log, numbers({0}));
        QCOMPARE(knows(known), std::tuple(false, true, true, false));
        Logbook shorter = smallLog();
        known.follow(shorter, numbers({4, 5}));
        QCOMPARE(knows(known), std::tuple(true, true, false, false));
        QVERIFY(!KnownStations(Logbook()).knows(code));
    }

    void aBlockAWithErrorsDoesNotCount()
    {
        Listening listening(m_none);
        for (int i = 0; i < 20; ++i) {
            RdsGroup group = name(code, u"RADIO 21", i % 4);
            group.states[0] = i < 2 ? BlockState::Clean : BlockState::Corrected;
            listening.take(GroupHeard {group}, start + i * 88);
        }
        QVERIFY(!listening.station()->certain);
        QCOMPARE(listening.station()->ps, u"RADIO 21"_s);
    }

    void sourcesThatDecodeThemselves_data()
    {
        QTest::addColumn<int>("trust");
        QTest::addColumn<int>("times");
        QTest::addColumn<bool>("certain");
        QTest::newRow("told") << int(PiTrust::Told) << 1 << true;
        QTest::newRow("doubtful") << int(PiTrust::Doubtful) << 9 << false;
        QTest::newRow("two askings") << int(PiTrust::Asked) << 2 << false;
        QTest::newRow("three askings") << int(PiTrust::Asked) << 3 << true;
        QTest::newRow("two groups") << int(PiTrust::Group) << 2 << false;
        QTest::newRow("three groups") << int(PiTrust::Group) << 3 << true;
    }

    void sourcesThatDecodeThemselves()
    {
        QFETCH(int, trust);
        QFETCH(int, times);
        Listening listening(m_none);
        for (int i = 0; i < times; ++i) {
            listening.take(PiHeard {code, PiTrust(trust)}, start + i * 200);
        }
        QCOMPARE(listening.station()->pi, code);
        QTEST(listening.station()->certain, "certain");
    }

    void askingsCountOnlyInARow()
    {
        Listening listening(m_none);
        const auto ask = [&](quint16 pi) { listening.take(PiHeard {pi, PiTrust::Asked}, start); };
        ask(code);
        ask(code);
        ask(0xF201);
        ask(code);
        listening.take(PiGone {}, start);
        ask(code);
        ask(code);
        QVERIFY(!listening.station()->certain);
        ask(code);
        QVERIFY(listening.station()->certain);
    }

    void aRetuneEndsAStationAtOnce()
    {
        Listening listening(m_none);
        listening.take(Tuned {98'500'000}, start);
        const qint64 when = sendName(listening, code, u"RADIO 21", 20, start + second);
        QCOMPARE(listening.psSoFar(), u"RADIO 21"_s);
        listening.take(Tuned {99'000'000}, when);
        QVERIFY(!listening.station());
        QCOMPARE(listening.psSoFar(), u""_s);
        QCOMPARE(listening.hertz(), qint64(99'000'000));
    }

    void theSameFrequencyAgainEndsNothing()
    {
        Listening listening(m_none);
        listening.take(Tuned {98'500'000}, start);
        listening.take(PiHeard {code, PiTrust::Told}, start);
        listening.take(Tuned {98'500'120}, start);
        QVERIFY(listening.station());
        listening.end(start);
        QVERIFY(!listening.station());
        QCOMPARE(listening.hertz(), qint64(98'500'120));
    }

    void aRetuneToWhoKnowsWhereEndsTheFrequency()
    {
        Listening listening(m_none);
        listening.take(Tuned {98'500'000}, start);
        // Typed ahead: nothing was heard on it yet.
        listening.take(Tuned {}, start + second);
        QCOMPARE(listening.hertz(), qint64(98'500'000));
        listening.take(PiHeard {code, PiTrust::Told}, start + 2 * second);
        listening.take(Tuned {}, start + 3 * second);
        QVERIFY(!listening.station());
        QCOMPARE(listening.hertz(), qint64(0));
        listening.take(PiHeard {0xF201, PiTrust::Told}, start + 4 * second);
        QCOMPARE(listening.station()->hertz, qint64(0));
    }

    void whatASourceKnowsOfOtherFrequenciesIsOfItsStation()
    {
        Listening listening(m_none);
        listening.take(Tuned {98'500'000}, start);
        listening.take(PiHeard {code, PiTrust::Told}, start);
        listening.take(FrequenciesHeard {{98'500, 89'100}}, start);
        listening.take(FrequenciesHeard {{89'100, 87'600}}, start + second);
        QCOMPARE(listening.frequencies(), (QList<int> {87'600, 89'100, 98'500}));
        for (int i = 0; i < 1'000; ++i) {
            listening.take(FrequenciesHeard {{87'600 + 100 * i}}, start + second);
        }
        QCOMPARE(listening.frequencies().size(), 25);
        listening.take(PiHeard {0xF201, PiTrust::Told}, start + 2 * second);
        QCOMPARE(listening.frequencies(), QList<int>());
    }

    void whatComesLateIsThrownAway()
    {
        Listening listening(m_none);
        listening.take(Tuned {98'500'000}, start);
        qint64 when = sendName(listening, code, u"RADIO 21", 20, start + second);
        listening.take(Tuned {99'000'000}, when);
        sendName(listening, code, u"RADIO 21", 3, when + 1);
        listening.take(PiHeard {code, PiTrust::Told}, when + 200);
        listening.take(PsHeard {u"RADIO 21"_s}, when + 200);
        QVERIFY(!listening.station());
        QCOMPARE(listening.psSoFar(), u""_s);
        // Another station is heard at once, the same one a little later.
        listening.take(PiHeard {0xF201, PiTrust::Told}, when + 210);
        QCOMPARE(listening.station()->pi, quint16(0xF201));
        listening.take(PiHeard {code, PiTrust::Told}, when + Listening::lateFor);
        QCOMPARE(listening.station()->pi, code);
    }

    void whatComesTogetherWithARetuneCounts()
    {
        Listening listening(m_none);
        listening.take(Tuned {98'500'000}, start);
        const qint64 when = sendName(listening, code, u"RADIO 21", 20, start + second);
        const QByteArray datagram = "freq=99000000;pi=" + QByteArray::number(code, 16) + ";ps=RADIO_21";
        for (const ReceiverEvent &event : srcpEvents(datagram)) {
            listening.take(event, when);
        }
        QVERIFY(listening.station());
        QCOMPARE(listening.station()->pi, code);
        QCOMPARE(listening.station()->hertz, qint64(99'000'000));
        QCOMPARE(listening.station()->ps, u"RADIO 21"_s);
    }

    void theFirstMomentIsThatOfThisTuning()
    {
        Listening listening(m_none);
        listening.take(Tuned {98'500'000}, start);
        sendName(listening, code, u"RADIO 21", 20, start + 3 * second);
        QCOMPARE(listening.station()->first, start + 3 * second);
        listening.take(Tuned {99'000'000}, start + 60 * second);
        listening.take(Tuned {98'500'000}, start + 70 * second);
        sendName(listening, code, u"RADIO 21", 20, start + 75 * second);
        QCOMPARE(listening.station()->first, start + 75 * second);
    }

    void oneWrongCodeIsNotShownInPlaceOfAStation()
    {
        Listening listening(m_none);
        qint64 when = sendName(listening, code, u"RADIO 21", 40, start);
        for (int i = 0; i < 3; ++i) {
            listening.take(GroupHeard {name(0xD3C0, u"XXXXXXXX", i)}, when);
            when = sendName(listening, code, u"RADIO 21", 5, when + 88);
        }
        QCOMPARE(listening.station()->pi, code);
        QCOMPARE(listening.station()->ps, u"RADIO 21"_s);
    }

    void aStrongerStationTakesTheFrequencyOver()
    {
        Listening listening(m_none);
        const qint64 change = sendName(listening, code, u"RADIO 21", 40, start);
        sendName(listening, 0xF201, u"FRANCE  ", 20, change);
        QCOMPARE(listening.station()->pi, quint16(0xF201));
        QCOMPARE(listening.station()->ps, u"FRANCE  "_s);
        QVERIFY(listening.station()->certain);
        QCOMPARE(listening.station()->first, change);
    }

    void groupsWithoutACodeBelongToTheStationBefore()
    {
        Listening listening(m_none);
        listening.take(GroupHeard {name(code, u"RADIO 21", 0)}, start);
        for (int i = 0; i < 8; ++i) {
            RdsGroup group = name(0, u"RADIO 21", i % 4);
            group.states[0] = BlockState::Lost;
            listening.take(GroupHeard {group}, start + 100 * i);
        }
        QCOMPARE(listening.station()->ps, u"RADIO 21"_s);
        QCOMPARE(listening.station()->groups, qint64(9));
        RdsGroup late = name(0, u"XXXXXXXX", 0);
        late.states[0] = BlockState::Lost;
        listening.take(GroupHeard {late}, start + 5 * second);
        QCOMPARE(listening.station()->groups, qint64(9));
    }

    void aFloodOfCodesTakesNoRoom()
    {
        Listening listening(m_none);
        HeardTable table;
        qint64 when = sendName(listening, code, u"RADIO 21", 20, start);
        for (quint32 i = 1; i < 60'000; ++i) {
            listening.take(GroupHeard {name(quint16(i), u"XXXXXXXX", 0)}, when);
            table.note(*listening.station());
        }
        QVERIFY(table.rows().size() <= 2);
    }

    void marksSayWhatIsNew_data()
    {
        QTest::addColumn<qint64>("hertz");
        QTest::addColumn<quint16>("pi");
        QTest::addColumn<int>("ecc");
        QTest::addColumn<QString>("marks");
        QTest::newRow("all known") << qint64(98'500'000) << code << -1 << u""_s;
        QTest::newRow("another frequency") << qint64(98'600'000) << code << -1 << u"new frequency"_s;
        QTest::newRow("no frequency") << qint64(0) << code << -1 << u""_s;
        QTest::newRow("decimal comma") << qint64(87'600'000) << quint16(0xE201) << -1 << u""_s;
        QTest::newRow("new code of a known digit")
            << qint64(98'500'000) << quint16(0xD3C3) << -1 << u"new PI"_s;
        QTest::newRow("new digit") << qint64(98'500'000) << quint16(0xF201) << -1
                                   << u"new PI, perhaps new country"_s;
        QTest::newRow("known country") << qint64(98'500'000) << quint16(0xE202) << 0xE2 << u"new PI"_s;
        QTest::newRow("known digit, new country")
            << qint64(98'500'000) << quint16(0xE202) << 0xE3 << u"new PI, perhaps new country"_s;
        QTest::newRow("deleted") << qint64(90'000'000) << quint16(0x5202) << -1 << u"new PI"_s;
    }

    void marksSayWhatIsNew()
    {
        QFETCH(qint64, hertz);
        QFETCH(quint16, pi);
        QFETCH(int, ecc);
        const KnownStations known(smallLog());
        Listening listening(known);
        if (hertz > 0) {
            listening.take(Tuned {hertz}, start);
        }
        listening.take(PiHeard {pi, PiTrust::Told}, start);
        if (ecc > 0) {
            listening.take(EccHeard {quint8(ecc)}, start);
        }
        QTEST(marksText(listening.station()->marks), "marks");
    }

    void aWrongClockIsTold()
    {
        Listening listening(m_none);
        const DateTime now {start / 1000};
        listening.take(ClockHeard {DateTime {now.seconds + 10}}, start);
        QVERIFY(!listening.clockOff());
        listening.take(ClockHeard {DateTime {now.seconds - 3600}}, start);
        QCOMPARE(*listening.clockOff(), qint64(-3600));
    }

    void aMomentIsNoStationAndTwoGroupsAre_data()
    {
        QTest::addColumn<int>("groups");
        QTest::addColumn<bool>("certain");
        QTest::addColumn<std::size_t>("rows");
        QTest::newRow("one group") << 1 << false << std::size_t(0);
        QTest::newRow("two groups") << 2 << false << std::size_t(1);
        QTest::newRow("told for certain") << 0 << true << std::size_t(1);
    }

    void aMomentIsNoStationAndTwoGroupsAre()
    {
        QFETCH(int, groups);
        QFETCH(bool, certain);
        Station station;
        station.pi = code;
        station.first = start;
        station.last = start;
        station.groups = groups;
        station.certain = certain;
        HeardTable table;
        table.note(station);
        QTEST(table.rows().size(), "rows");
    }

    void theTableKeepsWhatWasHeard()
    {
        HeardTable table;
        Listening listening(m_none);
        const auto note = [&] { table.note(*listening.station()); };
        listening.take(Tuned {98'500'000}, start);
        listening.take(GroupHeard {name(code, u"RADIO 21", 0)}, start);
        note();
        QCOMPARE(table.rows().size(), std::size_t(0));
        sendName(listening, code, u"RADIO 21", 19, start + 100);
        listening.take(SignalHeard {30, u"dBf"}, start);
        listening.take(SignalHeard {20, u"dBf"}, start);
        note();
        QCOMPARE(table.rows().size(), std::size_t(1));
        QCOMPARE(table.rows()[0].station.groups, qint64(20));
        QCOMPARE(*table.rows()[0].station.best, 30.0);
        table.setLogged(table.rows()[0].station);

        listening.take(Tuned {99'000'000}, start + 60 * second);
        listening.take(Tuned {98'500'000}, start + 61 * second);
        sendName(listening, code, u"RADIO 21", 5, start + 62 * second);
        note();
        QCOMPARE(table.rows().size(), std::size_t(1));
        QCOMPARE(table.rows()[0].station.groups, qint64(25));
        QCOMPARE(table.rows()[0].station.first, start);
        QVERIFY(table.rows()[0].logged);

        listening.take(Tuned {99'000'000}, start + 3 * 3600 * second);
        listening.take(Tuned {98'500'000}, start + 3 * 3600 * second + 1000);
        sendName(listening, code, u"RADIO 21", 5, start + 3 * 3600 * second + 2000);
        note();
        QCOMPARE(table.rows().size(), std::size_t(2));
        QVERIFY(!table.rows()[1].logged);
    }

    void aRowGetsTheFrequencyThatIsTypedLater()
    {
        Station station;
        station.pi = code;
        station.certain = true;
        station.first = start;
        station.last = start;
        HeardTable table;
        table.note(station);
        station.hertz = 98'500'000;
        table.nameFrequency(station);
        table.note(station);
        QCOMPARE(table.rows().size(), std::size_t(1));
        QCOMPARE(table.rows()[0].station.hertz, qint64(98'500'000));
        table.setLogged(station);
        QVERIFY(table.rows()[0].logged);
        // The next one is on a frequency of which there is a row.
        station.hertz = 0;
        station.first += 60 * second;
        station.last = station.first;
        table.note(station);
        QCOMPARE(table.rows().size(), std::size_t(2));
        const quint64 generation = table.generation();
        station.hertz = 98'500'000;
        table.nameFrequency(station);
        table.note(station);
        QCOMPARE(table.rows().size(), std::size_t(1));
        QCOMPARE(table.rows()[0].station.first, start);
        QCOMPARE(table.rows()[0].station.last, station.last);
        QVERIFY(table.generation() > generation);
    }

    void theTableHasAnEnd()
    {
        HeardTable table;
        Station station;
        station.certain = true;
        for (int i = 0; i < 10'000; ++i) {
            station.hertz = 87'500'000 + (i % 200) * 100'000;
            station.pi = quint16(i);
            table.note(station);
        }
        QVERIFY(table.rows().size() <= HeardTable::mostRows);
        QCOMPARE(table.rows().back().station.pi, quint16(9'999));
        table.setLogged(station);
        QVERIFY(table.rows().back().logged);
    }

    void whatIsLogged()
    {
        Station station;
        station.hertz = 98'550'000;
        station.pi = 0x0AB1;
        station.ps = u" RNE 1  "_s;
        station.text = u"Now | on air"_s;
        station.first = start + 999;
        const HeardReception reception = receptionOf(station, false, false);
        LogEntry wanted = logged(u"98.55"_s, u"0AB1"_s, u"TBD"_s, start / 1000);
        wanted.rdsName = u"_RNE_1"_s;
        QCOMPARE(reception.entry, wanted);
        QCOMPARE(receptionOf(station, true, false).entry.notes, u"Now / on air"_s);
        QCOMPARE(receptionOf(station, true, true).entry.notes, u"auto Now / on air"_s);
        QCOMPARE(receptionOf(station, false, true).entry.notes, u"auto"_s);
    }

    void theGuessFillsTheReception()
    {
        Station station;
        station.pi = code;
        station.guess = StationGuess {code, u"Brocken"_s, u"D"_s, u"60"_s, u"51.8"_s, u"10.6"_s, u"4711"_s};
        HeardReception reception = receptionOf(station, false, false);
        QCOMPARE(reception.entry.country, u"Germany"_s);
        QCOMPARE(reception.entry.transmitter, u"Brocken"_s);
        QCOMPARE(reception.entry.power, u"60"_s);
        QCOMPARE(reception.entry.uid, u"4711"_s);
        QCOMPARE(reception.latitude, u"51.8"_s);
        station.guess->country = u"??"_s;
        QCOMPARE(receptionOf(station, false, false).entry.country, u"TBD"_s);
        station.guess->pi = 0xF201;
        QCOMPARE(receptionOf(station, false, false).entry.uid, u""_s);
    }

    void doublesWithinAnHour_data()
    {
        QTest::addColumn<qint64>("hertz");
        QTest::addColumn<quint16>("pi");
        QTest::addColumn<int>("minutes");
        QTest::addColumn<bool>("asked");
        QTest::newRow("at once") << qint64(98'500'000) << code << 0 << true;
        QTest::newRow("an hour after") << qint64(98'500'000) << code << 60 << true;
        QTest::newRow("an hour before") << qint64(98'500'000) << code << -60 << true;
        QTest::newRow("later") << qint64(98'500'000) << code << 61 << false;
        QTest::newRow("another frequency") << qint64(98'600'000) << code << 0 << false;
        QTest::newRow("another code") << qint64(98'500'000) << quint16(0xD3C3) << 0 << false;
    }

    void doublesWithinAnHour()
    {
        QFETCH(qint64, hertz);
        QFETCH(quint16, pi);
        QFETCH(int, minutes);
        const DateTime moment {start / 1000 + minutes * 60};
        QTEST(loggedWithin(smallLog(), hertz, pi, moment), "asked");
    }

    void autoLog_data()
    {
        QTest::addColumn<AutoLogRules>("rules");
        QTest::addColumn<qint64>("after");
        QTest::addColumn<bool>("wanted");
        const auto rules = [](auto change) {
            AutoLogRules made {true, 5, 3, 60, {}};
            change(made);
            return made;
        };
        const auto as = rules([](AutoLogRules &) {});
        QTest::newRow("off") << AutoLogRules {} << qint64(9) << false;
        QTest::newRow("too early") << as << qint64(4) << false;
        QTest::newRow("in time") << as << qint64(5) << true;
        QTest::newRow("no longer heard") << as << qint64(20) << false;
        QTest::newRow("not held") << rules([](AutoLogRules &r) { r.hold = 8; }) << qint64(8) << false;
        QTest::newRow("held") << rules([](AutoLogRules &r) { r.hold = 8; }) << qint64(9) << true;
        QTest::newRow("local frequency") << rules([](AutoLogRules &r) {
            r.locals = {{98'500'000, {}}};
        }) << qint64(9) << false;
        QTest::newRow("local code") << rules([](AutoLogRules &r) {
            r.locals = {{{}, code}};
        }) << qint64(9) << false;
        QTest::newRow("local both") << rules([](AutoLogRules &r) {
            r.locals = {{98'500'000, code}};
        }) << qint64(9) << false;
        QTest::newRow("local elsewhere") << rules([](AutoLogRules &r) {
            r.locals = {{99'000'000, code}};
        }) << qint64(9) << true;
        QTest::newRow("no local at all")
            << rules([](AutoLogRules &r) { r.locals = {Local {}}; }) << qint64(9) << true;
    }

    void autoLog()
    {
        QFETCH(AutoLogRules, rules);
        QFETCH(qint64, after);
        AutoLog automatic;
        automatic.setRules(rules);
        Listening listening(m_none);
        listening.take(Tuned {98'500'000}, start);
        listening.take(PiHeard {code, PiTrust::Told}, start + second);
        QTEST(automatic.wants(listening, start + after * second), "wanted");
    }

    void autoLogWaitsBeforeItLogsAgain()
    {
        AutoLog automatic;
        automatic.setRules({true, 0, 0, 30, {}});
        Listening listening(m_none);
        listening.take(Tuned {98'500'000}, start);
        const auto hear = [&](qint64 when) {
            listening.take(PiHeard {code, PiTrust::Told}, when);
            return automatic.wants(listening, when);
        };
        QVERIFY(hear(start));
        automatic.logged(*listening.station(), start);
        QVERIFY(!hear(start + 29 * 60 * second));
        QVERIFY(hear(start + 30 * 60 * second));
    }

    void onlyCertainOnesAreLoggedByThemselves()
    {
        AutoLog automatic;
        automatic.setRules({true, 0, 0, 60, {}});
        Listening listening(m_none);
        listening.take(Tuned {98'500'000}, start);
        sendName(listening, code, u"RADIO 21", 2, start);
        QVERIFY(!automatic.wants(listening, start + second));
        sendName(listening, code, u"RADIO 21", 1, start + second);
        QVERIFY(automatic.wants(listening, start + 2 * second));
    }

    void localsAreLearntInTenMinutes()
    {
        LocalsLearner learner;
        Station station;
        station.hertz = 98'500'000;
        station.pi = code;
        learner.note(station);
        learner.start(start);
        learner.note(station);
        station.certain = true;
        learner.note(station);
        learner.note(station);
        QVERIFY(!learner.finished(start + 599 * second));
        const auto locals = learner.finished(start + 600 * second);
        QCOMPARE(*locals, (QList<Local> {{98'500'000, code}}));
        QVERIFY(!learner.isLearning());
        QVERIFY(!learner.finished(start + 601 * second));
    }

    void localsAsText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("read");
        for (const QString &text : {u"98.5 D3C2"_s, u"98.5"_s, u"D3C2"_s}) {
            QTest::newRow(qPrintable(text)) << text << text;
        }
        QTest::newRow("comma") << u" 98,50  d3c2 "_s << u"98.5 D3C2"_s;
        QTest::newRow("a code of digits") << u"8801"_s << u"8801"_s;
        QTest::newRow("nothing") << u""_s << u"-"_s;
        QTest::newRow("words") << u"one two"_s << u"-"_s;
        QTest::newRow("three") << u"98.5 D3C2 X"_s << u"-"_s;
    }

    void localsAsText()
    {
        QFETCH(QString, text);
        const auto local = readLocal(text);
        QTEST(local ? textOf(*local) : u"-"_s, "read");
    }
};

QTEST_GUILESS_MAIN(TestListening)
#include "tst_listening.moc"
