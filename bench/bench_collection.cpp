#include "platform/numbers.h"
#include "stats/collectiontables.h"
#include "support.h"

#include <benchmark/benchmark.h>

#include <numeric>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

std::vector<qint32> allOf(const Logbook &log)
{
    std::vector<qint32> entries(static_cast<std::size_t>(log.count()));
    std::iota(entries.begin(), entries.end(), 0);
    return entries;
}

struct Full
{
    Full() { novelty.count(log); }

    Logbook log = bench::fullLog();
    TransmitterList sites = bench::fullTransmitterList();
    Settings settings = bench::homeSettings();
    Novelty novelty;
    CollectionSource source {log, sites, settings, novelty, countedEntries(log, allOf(log))};
};

// What it is held to: walking over the entries, their times taken apart and their distances read.
void walkEntries(benchmark::State &state)
{
    const Full full;
    for ([[maybe_unused]] const auto step : state) {
        double sum = 0;
        for (const LogEntry &entry : full.log) {
            sum += numeric(entry.dist).value_or(0) + civil(entry.dateTime).day;
        }
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(walkEntries)->Unit(benchmark::kMicrosecond);

// All of it, as the program does at its start.
void countNovelty(benchmark::State &state)
{
    const Full full;
    for ([[maybe_unused]] const auto step : state) {
        Novelty novelty;
        novelty.count(full.log);
        benchmark::DoNotOptimize(novelty.marks(0));
    }
}
BENCHMARK(countNovelty)->Unit(benchmark::kMicrosecond);

// An entry at the end is changed, as an Add and its undo do; the bar is 300 us.
void updateNoveltyAtEnd(benchmark::State &state)
{
    Full full;
    const std::array last {full.log.count() - 1};
    for ([[maybe_unused]] const auto step : state) {
        full.novelty.update(full.log, last);
    }
}
BENCHMARK(updateNoveltyAtEnd)->Unit(benchmark::kMicrosecond);

void updateNoveltyAtBegin(benchmark::State &state)
{
    Full full;
    const std::array first {0};
    for ([[maybe_unused]] const auto step : state) {
        full.novelty.update(full.log, first);
    }
}
BENCHMARK(updateNoveltyAtBegin)->Unit(benchmark::kMicrosecond);

// The window opens with the countries; the bar is 100 ms for it, the window included.
template<typename Work>
void count(benchmark::State &state, const Work &work)
{
    const Full full;
    for ([[maybe_unused]] const auto step : state) {
        benchmark::DoNotOptimize(work(full));
    }
}
BENCHMARK_CAPTURE(count, countries, [](const Full &full) {
    CollectionSource source = full.source;
    source.entries = countedEntries(full.log, allOf(full.log));
    return countriesView(source).table.rows;
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(count, stations, [](const Full &full) {
    return stationsView(full.source).table.rows;
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(count, records, [](const Full &full) {
    return recordsView(full.source).table.rows;
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(count, calendar, [](const Full &full) {
    return yearFigures(full.log, full.source.entries).size();
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(count, directions, [](const Full &full) {
    SiteLegs legs(full.sites, full.settings);
    return directionFigures(full.log, full.source.entries, legs).unknown;
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(count, openings, [](const Full &full) {
    SiteLegs legs(full.sites, full.settings);
    return openings(full.log, full.source.entries, false, legs, full.novelty).size();
})->Unit(benchmark::kMillisecond);

} // namespace
