#include "live/frequency.h"
#include "live/heardtable.h"
#include "live/listening.h"
#include "live/reception.h"
#include "rds-signal/channel.h"
#include "rds-signal/groupmaker.h"

#include <QTest>

#include <algorithm>
#include <random>

using namespace quillon;
using namespace quillon::rdssignal;
using namespace Qt::StringLiterals;

namespace {

constexpr int stations = 40;
constexpr int loggedOnes = 35;
constexpr qint64 lasts = 30'000;

struct Heard
{
    SignalStation station;
    qint64 from = 0;
};

/// Forty stations of Spain, half a minute each.
std::vector<Heard> opening(qint64 begin)
{
    std::vector<Heard> heard;
    for (int i = 0; i < stations; ++i) {
        const QString ps = u"RNE %1"_s.arg(i, 2, 10, QChar(u'0'));
        // A network has the same code on several frequencies.
        const auto pi = static_cast<quint16>(0xE200 + i / 2);
        const qint64 hertz = 87'600'000 + i * 450'000;
        heard.push_back({{hertz, pi, i % 3 == 0 ? ps + u" A"_s : ps, u"Radio far away"_s, {}, 30, 0xE2},
            begin + i * lasts});
    }
    return heard;
}

} // namespace

class TestEvening : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Twenty minutes of groups, sent fast: fading, wrong codes, what comes late after a retune. Whatever is
    // certain is logged once.
    void anOpeningOfFortyStations_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 10; ++seed) {
            QTest::newRow(qPrintable(u"seed %1"_s.arg(seed))) << seed;
        }
    }

    void anOpeningOfFortyStations()
    {
        QFETCH(quint32, seed);
        const qint64 begin = fromCivil({2025, 6, 12, 16, 0, 0})->seconds * 1000;
        const std::vector<Heard> evening = opening(begin);
        const KnownStations nothing;
        Listening listening(nothing);
        HeardTable table;
        Logbook log;
        Channel channel({0, 0.85, 7, 0.003, seed});
        std::mt19937 random(seed);
        std::bernoulli_distribution wrongCode(0.02);
        std::uniform_int_distribution<int> bit(0, 15);
        std::vector<qint64> firsts;

        for (const Heard &heard : evening) {
            listening.take(Tuned {heard.station.hertz}, heard.from);
            if (&heard != &evening.front()) {
                const SignalStation &before = (&heard - 1)->station;
                for (int i = 0; i < 3; ++i) {
                    const RdsGroup late = nameGroup(before.pi, rdsBytes(before.ps, 8), i);
                    listening.take(GroupHeard {late}, heard.from + 20 * i);
                }
            }
            GroupMaker maker(heard.station);
            bool isLogged = false;
            std::optional<qint64> first;
            while (maker.elapsed() < lasts - 500) {
                const qint64 when = heard.from + 400 + maker.elapsed();
                RdsGroup group = channel.received(maker.next(), double(when - begin) / 1000);
                if (group.states[0] == BlockState::Clean && wrongCode(random)) {
                    group.blocks[0] = static_cast<quint16>(group.blocks[0] ^ (1U << unsigned(bit(random))));
                }
                if (!first && group.states[0] == BlockState::Clean && group.blocks[0] == heard.station.pi) {
                    first = when;
                }
                listening.take(GroupHeard {group}, when);
                const auto &now = listening.station();
                if (!now) {
                    continue;
                }
                table.note(*now);
                // The listener presses the key once it is certain and named.
                if (!isLogged && now->certain && !now->ps.isEmpty() && log.count() < loggedOnes) {
                    QVERIFY(!loggedWithin(log, now->hertz, now->pi, DateTime {now->first / 1000}));
                    log.AddEntry(receptionOf(*now, false, false).entry);
                    table.setLogged(*now);
                    firsts.push_back(*first);
                    isLogged = true;
                }
            }
        }

        QCOMPARE(log.count(), loggedOnes);
        std::size_t next = 0;
        for (qint32 i = 0; i < log.count(); ++i) {
            const LogEntry &entry = log.entry(i);
            while (megahertzText(evening[next].station.hertz) != entry.freq) {
                ++next;
                QVERIFY2(next < evening.size(), qPrintable(entry.freq));
            }
            const SignalStation &sent = evening[next].station;
            QCOMPARE(entry.piCode, piText(sent.pi));
            QCOMPARE(entry.rdsName, QString(sent.ps).replace(u' ', u'_'));
            QCOMPARE(entry.dateTime.seconds, firsts[std::size_t(i)] / 1000);
            QCOMPARE(entry.country, u"TBD"_s);
        }
        const auto &rows = table.rows();
        QCOMPARE(std::ranges::count_if(rows, &HeardRow::logged), loggedOnes);
        for (const HeardRow &row : rows) {
            const bool sent = std::ranges::any_of(evening, [&](const Heard &heard) {
                return heard.station.hertz == row.station.hertz && heard.station.pi == row.station.pi;
            });
            QVERIFY2(sent || !row.station.certain, qPrintable(piText(row.station.pi)));
        }
    }
};

QTEST_GUILESS_MAIN(TestEvening)
#include "tst_evening.moc"
