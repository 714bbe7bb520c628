#include "live/rdscharset.h"
#include "live/rdsreader.h"
#include "rds-signal/channel.h"
#include "rds-signal/groupmaker.h"

#include <QTest>

using namespace quillon;
using namespace quillon::rdssignal;
using namespace Qt::StringLiterals;

namespace {

constexpr quint16 code = 0xD3C2;

void sendName(RdsReader &reader, QStringView ps, const QList<int> &segments)
{
    const QByteArray bytes = rdsBytes(ps, 8);
    for (const int segment : segments) {
        reader.take(nameGroup(code, bytes, segment));
    }
}

void sendText(RdsReader &reader, QStringView text, const QList<int> &segments, bool flag = false)
{
    const QByteArray bytes = rdsBytes(text, 64);
    for (const int segment : segments) {
        reader.take(textGroup(code, bytes, segment, flag));
    }
}

RdsGroup with(RdsGroup group, std::size_t block, BlockState state)
{
    group.states[block] = state;
    return group;
}

} // namespace

class TestRdsReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNameStandsWhenEachSegmentCameTwice_data()
    {
        QTest::addColumn<QList<int>>("segments");
        QTest::addColumn<QString>("ps");
        QTest::addColumn<QString>("soFar");
        QTest::newRow("nothing") << QList<int> {} << u""_s << u""_s;
        QTest::newRow("once") << QList<int> {0, 1, 2, 3} << u""_s << u""_s;
        QTest::newRow("three twice") << QList<int> {0, 1, 2, 3, 0, 1, 2} << u""_s << u"MDR JU??"_s;
        QTest::newRow("all twice") << QList<int> {0, 1, 2, 3, 0, 1, 2, 3} << u"MDR JUMP"_s << u"MDR JUMP"_s;
        QTest::newRow("in any order")
            << QList<int> {3, 3, 1, 0, 0, 2, 1, 2} << u"MDR JUMP"_s << u"MDR JUMP"_s;
    }

    void aNameStandsWhenEachSegmentCameTwice()
    {
        QFETCH(QList<int>, segments);
        RdsReader reader;
        sendName(reader, u"MDR JUMP", segments);
        QTEST(reader.name().ps(), "ps");
        QTEST(reader.name().soFar(), "soFar");
    }

    void aNewNameNeverMixesWithTheOld()
    {
        RdsReader reader;
        sendName(reader, u"RADIO 21", {0, 1, 2, 3, 0, 1, 2, 3});
        sendName(reader, u"THE NEWS", {0, 0, 1, 1, 2});
        QCOMPARE(reader.name().ps(), u"RADIO 21"_s);
        sendName(reader, u"THE NEWS", {2, 3, 3});
        QCOMPARE(reader.name().ps(), u"THE NEWS"_s);
    }

    void aSingleWrongSegmentChangesNothing()
    {
        RdsReader reader;
        sendName(reader, u"RADIO 21", {0, 1, 2, 3, 0, 1, 2, 3});
        sendName(reader, u"XXXXXXXX", {0});
        sendName(reader, u"RADIO 21", {0, 0});
        QCOMPARE(reader.name().ps(), u"RADIO 21"_s);
    }

    void blocksThatDidNotComeThroughAreLeftOut_data()
    {
        QTest::addColumn<int>("block");
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("read");
        QTest::newRow("clean") << 1 << int(BlockState::Clean) << true;
        QTest::newRow("A lost") << 0 << int(BlockState::Lost) << true;
        QTest::newRow("B corrected") << 1 << int(BlockState::Corrected) << false;
        QTest::newRow("B lost") << 1 << int(BlockState::Lost) << false;
        QTest::newRow("C lost") << 2 << int(BlockState::Lost) << true;
        QTest::newRow("D corrected") << 3 << int(BlockState::Corrected) << true;
        QTest::newRow("D guessed") << 3 << int(BlockState::Guessed) << false;
        QTest::newRow("D lost") << 3 << int(BlockState::Lost) << false;
    }

    void blocksThatDidNotComeThroughAreLeftOut()
    {
        QFETCH(int, block);
        QFETCH(int, state);
        QFETCH(bool, read);
        RdsReader reader;
        const QByteArray ps = rdsBytes(u"RADIO 21", 8);
        for (const int segment : {0, 1, 2, 3, 0, 1, 2, 3}) {
            reader.take(with(nameGroup(code, ps, segment), std::size_t(block), BlockState(state)));
        }
        QCOMPARE(reader.name().ps(), read ? u"RADIO 21"_s : u""_s);
    }

    void versionBHasNoFrequencies()
    {
        RdsReader reader;
        const QByteArray ps = rdsBytes(u"RADIO 21", 8);
        for (const int segment : {0, 1, 2, 3, 0, 1, 2, 3}) {
            reader.take(nameGroupB(code, ps, segment));
        }
        QCOMPARE(reader.name().ps(), u"RADIO 21"_s);
        QCOMPARE(reader.frequencies(), QList<int>());
    }

    void alternativeFrequencies_data()
    {
        QTest::addColumn<QList<int>>("pairs");
        QTest::addColumn<QList<int>>("kilohertz");
        QTest::newRow("none") << QList<int> {0xE0CD} << QList<int> {};
        QTest::newRow("two, sorted") << QList<int> {0xE26E, 0x0A6E, 0x0ACD} << QList<int> {88500, 98500};
        QTest::newRow("three times") << QList<int> {0xE16E, 0xE16E, 0xE16E} << QList<int> {98500};
        QTest::newRow("lowest and highest") << QList<int> {0x01CC, 0x01CC} << QList<int> {87600, 107900};
        QTest::newRow("once") << QList<int> {0xE16E} << QList<int> {};
        QTest::newRow("medium wave") << QList<int> {0xFA6E, 0xFA6E} << QList<int> {};
        QTest::newRow("codes without a meaning")
            << QList<int> {0x00CD, 0xCEDF, 0x00CD, 0xCEDF} << QList<int> {};
    }

    void alternativeFrequencies()
    {
        QFETCH(QList<int>, pairs);
        RdsReader reader;
        for (const int pair : pairs) {
            reader.take(nameGroup(code, rdsBytes(u"A", 8), 0, quint16(pair)));
        }
        QTEST(reader.frequencies(), "kilohertz");
    }

    void moreThan25FrequenciesAreNotKept()
    {
        RdsReader reader;
        for (int n = 1; n < 200; ++n) {
            // Both codes of a pair are the same, so it counts as twice.
            reader.take(nameGroup(code, rdsBytes(u"A", 8), 0, quint16((n << 8) | n)));
        }
        QCOMPARE(reader.frequencies().size(), 25);
    }

    void theCountryCodeStandsWhenItCameTwice()
    {
        RdsReader reader;
        reader.take(countryGroup(code, 0xE0));
        QVERIFY(!reader.ecc());
        reader.take(countryGroup(code, 0xE1));
        QVERIFY(!reader.ecc());
        QVERIFY(reader.take(countryGroup(code, 0xE1)).ecc);
        QCOMPARE(*reader.ecc(), quint8(0xE1));
        RdsGroup language = countryGroup(code, 0xE4);
        language.blocks[2] = 0x3009;
        reader.take(language);
        reader.take(language);
        QCOMPARE(*reader.ecc(), quint8(0xE1));
    }

    void radiotext_data()
    {
        QTest::addColumn<QString>("sent");
        QTest::addColumn<QList<int>>("segments");
        QTest::addColumn<QString>("text");
        const QString full = u"0123456789abcdef0123456789ABCDEF0123456789abcdef0123456789ABCDEF"_s;
        const QList<int> all {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
        QTest::newRow("up to its end") << u"Now: Sade\r"_s << QList<int> {0, 1, 2} << u"Now: Sade"_s;
        QTest::newRow("end first") << u"Now: Sade\r"_s << QList<int> {2, 0, 1} << u"Now: Sade"_s;
        QTest::newRow("a gap") << u"Now: Sade\r"_s << QList<int> {0, 2} << u""_s;
        QTest::newRow("all places") << full << all << full;
        QTest::newRow("all but one") << full << all.mid(1) << u""_s;
        QTest::newRow("no end mark, one round") << u"Now: Sade"_s << QList<int> {0, 1, 2} << u""_s;
        QTest::newRow("no end mark, two rounds")
            << u"Now: Sade"_s << QList<int> {0, 1, 2, 0, 1, 2, 0} << u"Now: Sade"_s;
        QTest::newRow("blanks at the end") << u"Hello   \r"_s << QList<int> {0, 1, 2} << u"Hello"_s;
        QTest::newRow("empty") << u"\r"_s << QList<int> {0} << u""_s;
    }

    void radiotext()
    {
        QFETCH(QString, sent);
        QFETCH(QList<int>, segments);
        RdsReader reader;
        sendText(reader, sent, segments);
        QTEST(reader.text(), "text");
    }

    void aTurnedFlagBeginsANewText()
    {
        RdsReader reader;
        sendText(reader, u"First text\r", {0, 1}, false);
        sendText(reader, u"Other here\r", {2}, true);
        QCOMPARE(reader.text(), u""_s);
        sendText(reader, u"Other here\r", {0, 1}, true);
        QCOMPARE(reader.text(), u"Other here"_s);
    }

    void anotherLetterBeginsANewText()
    {
        RdsReader reader;
        sendText(reader, u"First text\r", {0, 1, 2});
        QCOMPARE(reader.text(), u"First text"_s);
        sendText(reader, u"Other here\r", {0});
        QCOMPARE(reader.text(), u"First text"_s);
        sendText(reader, u"Other here\r", {1, 2});
        QCOMPARE(reader.text(), u"Other here"_s);
    }

    void radiotextOfVersionB()
    {
        RdsReader reader;
        const QByteArray text = rdsBytes(u"Half as long\r", 32);
        for (int segment = 0; segment < 7; ++segment) {
            reader.take(textGroupB(code, text, segment));
        }
        QCOMPARE(reader.text(), u"Half as long"_s);
    }

    void clock_data()
    {
        QTest::addColumn<CivilTime>("time");
        QTest::newRow("an evening") << CivilTime {2025, 11, 21, 18, 30, 0};
        QTest::newRow("leap day") << CivilTime {2024, 2, 29, 23, 59, 0};
        QTest::newRow("after the 16th bit of the day") << CivilTime {2038, 4, 23, 16, 0, 0};
    }

    void clock()
    {
        QFETCH(CivilTime, time);
        RdsReader reader;
        QVERIFY(reader.take(clockGroup(code, *fromCivil(time))).clock);
        QCOMPARE(reader.clock()->seconds, fromCivil(time)->seconds);
    }

    void aClockThatIsNoneIsLeftOut()
    {
        QVERIFY(!rdsClock(0, 0, 0));
        const quint16 hour31 = 0xF000;
        QVERIFY(!rdsClock(1, 0xD2B7 | 1, hour31));
        // The vector of IEC 62106: 6 December 1985 is day 46405.
        const auto moment = rdsClock(1, quint16((46405U << 1U) & 0xFFFFU), 0);
        QCOMPARE(civil(*moment).year, 1985);
        QCOMPARE(civil(*moment).day, 6);
    }

    void characters()
    {
        QCOMPARE(rdsText("Espa\x9A"
                         "a \x82"),
            u"Españaé"_s.insert(6, u' ').left(8));
        QCOMPARE(rdsText(QByteArrayView("\x01\x0A\x1F\x7F", 4)), u"    "_s);
        QCOMPARE(rdsText("\xD7\xAB\x99"), u"Ö$ü"_s);
    }

    // Whatever errors are strewn in: what is told is what was sent, or nothing yet.
    void withErrorsStrewnInOnlyTheTruthIsTold_data()
    {
        QTest::addColumn<double>("errors");
        QTest::addColumn<bool>("arrives");
        QTest::newRow("none") << 0.0 << true;
        QTest::newRow("one bit in a thousand") << 0.001 << true;
        QTest::newRow("one in a hundred") << 0.01 << true;
        QTest::newRow("one in twenty-five") << 0.04 << false;
    }

    void withErrorsStrewnInOnlyTheTruthIsTold()
    {
        QFETCH(double, errors);
        QFETCH(bool, arrives);
        for (quint32 seed = 1; seed <= 40; ++seed) {
            SignalStation station {
                98'500'000, quint16(0x1000 + seed), u"RADIO %1"_s.arg(seed % 10), {}, {}, 0, 0xE2};
            station.text = u"Text number %1 of a station far away"_s.arg(seed);
            station.clock = DateTime {1'763'750'000 + seed * 1000};
            GroupMaker maker(station);
            Channel channel({0, 0, 4, errors, seed});
            RdsReader reader;
            for (int i = 0; i < 700; ++i) {
                reader.take(channel.received(maker.next(), 0));
            }
            const QString ps = reader.name().ps();
            QVERIFY2(ps.isEmpty() || ps == station.ps.leftJustified(8), qPrintable(ps));
            QVERIFY2(station.text.startsWith(reader.text()), qPrintable(reader.text()));
            QVERIFY(!reader.ecc() || reader.ecc() == station.ecc);
            QVERIFY(reader.frequencies().isEmpty() || reader.frequencies() == QList<int> {98500});
            QVERIFY(errors > 0 || reader.clock());
            QVERIFY(!reader.clock() || std::abs(reader.clock()->seconds - station.clock->seconds) < 120);
            if (arrives) {
                QCOMPARE(ps, station.ps.leftJustified(8));
                QCOMPARE(reader.text(), station.text);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestRdsReader)
#include "tst_rdsreader.moc"
