#include "live/grouplines.h"
#include "live/rdsreader.h"
#include "platform/files.h"
#include "rds-signal/blockcode.h"
#include "rds-signal/channel.h"
#include "rds-signal/stationlist.h"
#include "support/testfiles.h"

#include <QFileInfo>
#include <QProcess>
#include <QTest>

#include <algorithm>

using namespace quillon;
using namespace quillon::rdssignal;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

struct Run
{
    int exitCode = -1;
    QByteArray out;
    QByteArray complaint;
};

Run run(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral(QUILLON_RDS_SIGNAL), arguments);
    process.waitForFinished();
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

const QString jump = u"98.5;D3C2;MDR JUMP;Now: Sade;2025-06-01 12:00;3;E0"_s;

} // namespace

class TestRdsSignal : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void checkwords_data()
    {
        QTest::addColumn<quint16>("block");
        QTest::addColumn<quint16>("check");
        // By hand: the rest of the block times x^10, divided by the generator.
        QTest::newRow("nought") << quint16(0) << quint16(0);
        QTest::newRow("one") << quint16(1) << quint16(0x1B9);
        QTest::newRow("two") << quint16(2) << quint16(0x372);
        QTest::newRow("three") << quint16(3) << quint16(0x1B9 ^ 0x372);
    }

    void checkwords()
    {
        QFETCH(quint16, block);
        QTEST(checkword(block), "check");
    }

    void everySingleWrongBitIsNoticed()
    {
        const RdsGroup sent {{0xD3C2, 0x2548, 0x0D20, 0x2020}, {}};
        QCOMPARE(decoded(encoded(sent)), sent);
        for (std::size_t bit = 0; bit < bitsOfGroup; ++bit) {
            GroupBits bits = encoded(sent);
            bits[bit] = !bits[bit];
            const RdsGroup received = decoded(bits);
            QCOMPARE(std::ranges::count(received.states, BlockState::Lost), 1);
            QCOMPARE(received.states[bit / 26], BlockState::Lost);
        }
    }

    void linesOfStations_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<bool>("good");
        QTest::newRow("whole") << jump << true;
        QTest::newRow("short") << u"98.5;D3C2"_s << true;
        QTest::newRow("empty fields") << u"98.5;D3C2;;;;;"_s << true;
        QTest::newRow("no frequency") << u"x;D3C2"_s << false;
        QTest::newRow("no code") << u"98.5;D3"_s << false;
        QTest::newRow("no clock") << u"98.5;D3C2;;;31.2.2025"_s << false;
        QTest::newRow("no length") << u"98.5;D3C2;;;;-1"_s << false;
        QTest::newRow("no country") << u"98.5;D3C2;;;;1;XX"_s << false;
    }

    void linesOfStations()
    {
        QFETCH(QString, line);
        QTEST(readStation(line).has_value(), "good");
    }

    void groupsAsLines()
    {
        const Run made = run({u"--form"_s, u"hex"_s, u"--station"_s, jump});
        QCOMPARE(made.exitCode, 0);
        RdsReader reader;
        int groups = 0;
        for (const QByteArrayView line : splitLines(QByteArrayView(made.out))) {
            const auto group = groupOf(line);
            QVERIFY(group);
            QCOMPARE(group->blocks[0], quint16(0xD3C2));
            reader.take(*group);
            ++groups;
        }
        QCOMPARE(groups, 35);
        QCOMPARE(reader.name().ps(), u"MDR JUMP"_s);
        QCOMPARE(reader.text(), u"Now: Sade"_s);
        QCOMPARE(generalText(*reader.clock()), u"01/06/2025 12:00:00"_s);
    }

    void groupsAsARecordedFile()
    {
        const TestDirectory directory;
        const QString path = directory.path() + u"/made.spy"_s;
        const QStringList arguments {u"--form"_s, u"spy"_s, u"--station"_s, jump, u"--errors"_s, u"0.01"_s,
            u"--seed"_s, u"7"_s, u"--begin"_s, u"2020-02-04 17:26"_s, u"--out"_s, path};
        QCOMPARE(run(arguments).exitCode, 0);
        const QByteArray file = readFile(path);
        const auto lines = splitLines(QByteArrayView(file));
        QCOMPARE(lines.size(), 36);
        QVERIFY(!spyLine(lines[0]));
        const auto first = spyLine(lines[1]);
        QCOMPARE(*first->time, fromCivil({2020, 2, 4, 17, 26, 0})->seconds * 1000 + 80);
        QVERIFY(file.contains("----"));
        QCOMPARE(run(arguments).exitCode, 0);
        QCOMPARE(readFile(path), file);
        QCOMPARE(run(arguments + QStringList {u"--seed"_s, u"8"_s}).exitCode, 0);
        QVERIFY(readFile(path) != file);
    }

    void signalsHaveTheirLength_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<qint64>("bytes");
        QTest::newRow("iq") << u"iq"_s << qint64(3 * 240'000 * 8);
        QTest::newRow("mpx") << u"mpx"_s << qint64(3 * 171'000 * 2);
    }

    void signalsHaveTheirLength()
    {
        QFETCH(QString, form);
        const TestDirectory directory;
        const QString path = directory.path() + u"/signal"_s;
        QCOMPARE(run({u"--form"_s, form, u"--station"_s, jump, u"--noise"_s, u"0.01"_s, u"--out"_s, path})
                     .exitCode,
            0);
        QTEST(QFileInfo(path).size(), "bytes");
    }

    void whatIsWrongIsSaid_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("complaint");
        QTest::newRow("nothing") << QStringList {} << QByteArray("rds-signal: no station given\n");
        QTest::newRow("station")
            << QStringList {u"--station"_s, u"x"_s}
            << QByteArray(
                   "rds-signal: no station: x (wanted: MHz;PI;PS;text;yyyy-mm-dd hh:nn;seconds;ECC)\n");
        QTest::newRow("form") << QStringList {u"--station"_s, jump, u"--form"_s, u"wav"_s}
                              << QByteArray("rds-signal: no form: wav\n");
        QTest::newRow("rate") << QStringList {u"--station"_s, jump, u"--form"_s, u"iq"_s, u"--rate"_s,
            u"8000"_s} << QByteArray("rds-signal: the rate has to be 125000 at least\n");
    }

    void whatIsWrongIsSaid()
    {
        QFETCH(QStringList, arguments);
        const Run made = run(arguments);
        QCOMPARE(made.exitCode, 1);
        QTEST(made.complaint, "complaint");
    }

    void fadingTakesBlocksAway()
    {
        const RdsGroup sent {{0xD3C2, 0x2548, 0x0D20, 0x2020}, {}};
        Channel channel({0, 1, 4, 0, 3});
        int lost = 0;
        int clean = 0;
        for (int i = 0; i < 400; ++i) {
            const RdsGroup received = channel.received(sent, i * 0.0876);
            lost += received.states[0] == BlockState::Lost ? 1 : 0;
            clean += received == sent ? 1 : 0;
        }
        QVERIFY(lost > 80);
        QVERIFY(clean > 80);
    }
};

QTEST_GUILESS_MAIN(TestRdsSignal)
#include "tst_rdssignal.moc"
