// What a reception probably was: 100,000 stations, and the full log.

#include "stations/candidates.h"
#include "stations/stationcollector.h"
#include "support.h"
#include "txdb/derivedcells.h"

#include <benchmark/benchmark.h>

#include <QRandomGenerator>

#include <algorithm>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

constexpr int listedStations = 100'000;

// Some 490 stations a frequency, one in ten of a chain that has one PI code at many sites.
QByteArray bigList()
{
    QRandomGenerator random(875);
    const auto below = [&random](int bound) { return static_cast<int>(random.bounded(bound)); };
    StationCollector collector;
    for (int i = 0; i < listedStations; ++i) {
        const int channel = 875 + below(205);
        const bool chain = below(10) == 0;
        const int pi = chain ? 0xD310 : 0x1000 + below(0xEFFF);
        collector.add({.frequency = QString::number(channel / 10.0, 'f', 1),
                          .pi = QString::number(pi, 16),
                          .regionalPi = {},
                          .names = u"RADIO_%1"_s.arg(below(100), 2, 10, QChar(u'0')),
                          .programme = u"Programme %1"_s.arg(below(5'000)),
                          .region = u"Region %1"_s.arg(below(200)),
                          .site = u"Transmitter %1"_s.arg(i / 10),
                          .country = u"C%1"_s.arg(below(50)),
                          .latitude = QString::number(35 + below(30'000) / 1000.0),
                          .longitude = QString::number(-10 + below(45'000) / 1000.0),
                          .kilowatts = QString::number((1 + below(1'000)) / 10.0),
                          .polarisation = u"H"_s,
                          .inactive = {},
                          .id = QString::number(i)},
            i + 1);
    }
    return collector.file();
}

HeardSignal signal(const char *pi, const char *name)
{
    HeardSignal heard = heardSignal(u"98.5", QString::fromLatin1(pi), QString::fromLatin1(name)).value();
    heard.home = homePosition(bench::homeSettings());
    heard.esLikely = true;
    return heard;
}

// One search as the form asks it, the look at the hour included. The bar: 5 ms.
void searchStations(benchmark::State &state, const char *pi, const char *name)
{
    const StationList list(bigList(), u"stations.lst"_s);
    const Logbook log = bench::fullLog();
    const HeardStations heard(log, bench::fullTransmitterList());
    const HeardSignal asked = signal(pi, name);
    std::size_t found = 0;
    for ([[maybe_unused]] const auto step : state) {
        benchmark::DoNotOptimize(isEsHour(log, log.entry(log.count() / 2).dateTime, -1));
        found = candidates(asked, list, heard).size();
    }
    state.counters["stations"] = static_cast<double>(list.count());
    state.counters["found"] = static_cast<double>(found);
}
BENCHMARK_CAPTURE(searchStations, piAndName, "D310", "RADIO 42")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchStations, nameAlone, "", "RADIO 42")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchStations, unknownPi, "0001", "RADIO 42")->Unit(benchmark::kMillisecond);

// What it is held to: every line of the list split at its bars and looked at.
void plainScan(benchmark::State &state)
{
    const QByteArray file = bigList();
    for ([[maybe_unused]] const auto step : state) {
        qsizetype found = 0;
        for (const QByteArray &line : file.split('\n')) {
            const QList<QByteArray> pieces = line.split('|');
            found += pieces.size() > 1 && pieces[0] == "98500" && pieces[1] == "D310" ? 1 : 0;
        }
        benchmark::DoNotOptimize(found);
    }
}
BENCHMARK(plainScan)->Unit(benchmark::kMillisecond);

// Once, when the tab is first shown.
void readList(benchmark::State &state)
{
    const QByteArray file = bigList();
    for ([[maybe_unused]] const auto step : state) {
        benchmark::DoNotOptimize(StationList(file, u"stations.lst"_s).count());
    }
}
BENCHMARK(readList)->Unit(benchmark::kMillisecond);

// After each change of the log, while the tab is shown.
void stationsOfTheLog(benchmark::State &state)
{
    const Logbook log = bench::fullLog();
    const TransmitterList sites = bench::fullTransmitterList();
    for ([[maybe_unused]] const auto step : state) {
        benchmark::DoNotOptimize(HeardStations(log, sites));
    }
}
BENCHMARK(stationsOfTheLog)->Unit(benchmark::kMillisecond);

} // namespace
