#include "stats/statsdata.h"

#include <benchmark/benchmark.h>

namespace quillon {

namespace {

constexpr int fullLog = 32498;

std::vector<LogEntry> entries()
{
    using namespace Qt::StringLiterals;
    const QStringList modes = modeChoices().mid(1);
    std::vector<LogEntry> log(fullLog);
    const qint64 first = fromCivil({1985, 1, 1, 0, 0, 0})->seconds;
    for (std::size_t i = 0; i < log.size(); ++i) {
        const auto number = static_cast<qint64>(i);
        log[i].piCode = u"D3C3"_s;
        log[i].prop = modes[static_cast<qsizetype>(i) % modes.size()];
        log[i].dateTime.seconds = first + number * 38000 % (40 * 365 * secondsPerDay);
    }
    return log;
}

// What it is held to: walking over the entries and taking their times apart.
void walkEntries(benchmark::State &state)
{
    const std::vector<LogEntry> log = entries();
    for (auto _ : state) {
        int sum = 0;
        for (const LogEntry &entry : log) {
            const CivilTime time = civil(entry.dateTime);
            sum += time.month + time.day + time.hour + static_cast<int>(entry.prop.size());
        }
        benchmark::DoNotOptimize(sum);
    }
}

void count(benchmark::State &state, const StatsSelection &selection)
{
    const std::vector<LogEntry> log = entries();
    for (auto _ : state) {
        benchmark::DoNotOptimize(countReceptions(log, selection));
    }
}

void years(benchmark::State &state)
{
    const std::vector<LogEntry> log = entries();
    for (auto _ : state) {
        benchmark::DoNotOptimize(yearChoices(log));
    }
}

BENCHMARK(walkEntries)->Unit(benchmark::kMicrosecond);
BENCHMARK(years)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(count, months, StatsSelection {})->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(count, monthsAndHours,
    StatsSelection {everything.toString(), everything.toString(), everything.toString(), true})
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(count, daysAndHoursOfEs,
    StatsSelection {everything.toString(), QStringLiteral("June"), QStringLiteral("Es"), true})
    ->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace quillon
