#include "evening.h"
#include "live/frequency.h"
#include "live/heardtable.h"
#include "live/listening.h"
#include "live/reception.h"

#include <QTest>

#include <algorithm>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

class TestEvening : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Twenty minutes of groups, sent fast. Whatever is certain is logged once.
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
        constexpr int loggedOnes = 35;
        Evening evening(seed);
        const KnownStations nothing;
        Listening listening(nothing);
        HeardTable table;
        Logbook log;
        std::vector<std::size_t> numbers;
        std::vector<qint64> firsts;

        for (std::size_t i = 0; i < evening.heard().size(); ++i) {
            bool isLogged = false;
            const auto first = evening.listenTo(i, [&](const ReceiverEvent &event, qint64 when) {
                listening.take(event, when);
                const auto &now = listening.station();
                if (!now) {
                    return;
                }
                table.note(*now);
                // The listener presses the key once it is certain and named.
                if (!isLogged && now->certain && !now->ps.isEmpty() && log.count() < loggedOnes) {
                    QVERIFY(!loggedWithin(log, now->hertz, now->pi, DateTime {now->first / 1000}));
                    log.AddEntry(receptionOf(*now, false, false).entry);
                    table.setLogged(*now);
                    isLogged = true;
                }
            });
            if (isLogged) {
                numbers.push_back(i);
                firsts.push_back(first.value_or(0));
            }
        }

        QCOMPARE(log.count(), loggedOnes);
        for (qint32 i = 0; i < log.count(); ++i) {
            const LogEntry &entry = log.entry(i);
            const auto &sent = evening.heard()[numbers[std::size_t(i)]].station;
            QCOMPARE(entry.freq, megahertzText(sent.hertz));
            QCOMPARE(entry.piCode, piText(sent.pi));
            QCOMPARE(entry.rdsName, QString(sent.ps).replace(u' ', u'_'));
            QCOMPARE(entry.dateTime.seconds, firsts[std::size_t(i)] / 1000);
            QCOMPARE(entry.country, u"TBD"_s);
        }
        const auto &rows = table.rows();
        QCOMPARE(std::ranges::count_if(rows, &HeardRow::logged), loggedOnes);
        for (const HeardRow &row : rows) {
            const bool sent = std::ranges::any_of(evening.heard(), [&](const Evening::Heard &heard) {
                return heard.station.hertz == row.station.hertz && heard.station.pi == row.station.pi;
            });
            QVERIFY2(sent || !row.station.certain, qPrintable(piText(row.station.pi)));
        }
    }
};

QTEST_GUILESS_MAIN(TestEvening)
#include "tst_evening.moc"
