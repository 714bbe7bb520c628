#include "stations/heardstations.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

LogEntry heardOn(const QString &freq, const QString &pi, const QString &site)
{
    LogEntry entry;
    entry.freq = freq;
    entry.piCode = pi;
    entry.transmitter = site;
    entry.country = u"D"_s;
    return entry;
}

QStringList told(const std::vector<HeardStation> &stations)
{
    QStringList texts;
    for (const HeardStation &heard : stations) {
        texts += u"%1 %2"_s.arg(heard.station.site).arg(heard.times);
    }
    return texts;
}

} // namespace

/// The stations of a log by frequency, whatever the order in which they were logged.
class TestHeardStations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachFrequencyHasItsOwnInTheOrderOfTheLog()
    {
        Logbook log;
        for (int round = 0; round < 10; ++round) {
            log.AddEntry(heardOn(u"107.9"_s, u"D3C1"_s, u"Berlin"_s));
            log.AddEntry(heardOn(u"87,6"_s, u"D3C3"_s, u"Zugspitze"_s));
            log.AddEntry(heardOn(u"99.40"_s, u"D313"_s, u"Ochsenkopf"_s));
            log.AddEntry(heardOn(u"87.60"_s, u"D3C2"_s, u"Brocken"_s));
        }
        log.AddEntry(heardOn(u"87.6"_s, u"delete"_s, u"Gone"_s));
        log.AddEntry(heardOn(u"87.6"_s, u"D3C4"_s, {}));
        const TransmitterList sites;
        const HeardStations heard(log, sites);
        QCOMPARE(told(heard.on(87'600)), (QStringList {u"Zugspitze 10"_s, u"Brocken 10"_s}));
        QCOMPARE(told(heard.on(99'400)), QStringList(u"Ochsenkopf 10"_s));
        QCOMPARE(told(heard.on(107'900)), QStringList(u"Berlin 10"_s));
        QCOMPARE(told(heard.on(95'000)), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestHeardStations)
#include "tst_heardstations.moc"
