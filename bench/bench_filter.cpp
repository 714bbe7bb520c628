#include "core/filterreader.h"
#include "core/logfilter.h"
#include "core/logrows.h"
#include "support.h"

#include <QLocale>

#include <benchmark/benchmark.h>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

LogFilter filterOf(const char *text, const MonthNames &months)
{
    LogFilter filter;
    filter.terms = readFilter(QString::fromUtf8(text), months).terms;
    return filter;
}

// A key in the filter's box to the rows of the grid. The bar: 30 ms of processor time, the grid included.
void filterRows(benchmark::State &state, const char *text)
{
    const Logbook log = bench::fullLog();
    const MonthNames months = MonthNames::of(QLocale::c());
    LogRows rows(log, months);
    rows.refill();
    for ([[maybe_unused]] const auto step : state) {
        rows.setFilter([matches = LogFilterMatcher(filterOf(text, months), false)](
                           const LogEntry &entry, qint32) mutable { return matches(entry); });
    }
    state.counters["shown"] = static_cast<double>(rows.shown().size());
}
BENCHMARK_CAPTURE(filterRows, oneLetter, "a")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(filterRows, noSuchWord, "malaga")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(filterRows, words, "radio strong germany -gone")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(filterRows, frequency, "87,60")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(filterRows, keys, "freq>88 km>1500 date:2015 prop:es")->Unit(benchmark::kMillisecond);

// What it is held to: each cell of the grid made and looked at, whatever the case of its letters.
void plainRows(benchmark::State &state)
{
    const Logbook log = bench::fullLog();
    LogRows rows(log, MonthNames::of(QLocale::c()));
    rows.refill();
    for ([[maybe_unused]] const auto step : state) {
        rows.setFilter([](const LogEntry &entry, qint32) {
            for (int column = 0; column < gridColumnCount; ++column) {
                if (cellText(entry, static_cast<GridColumn>(column))
                        .contains("malaga"_L1, Qt::CaseInsensitive)) {
                    return true;
                }
            }
            return false;
        });
    }
}
BENCHMARK(plainRows)->Unit(benchmark::kMillisecond);

void listsOfTheLog(benchmark::State &state)
{
    const Logbook log = bench::fullLog();
    for ([[maybe_unused]] const auto step : state) {
        benchmark::DoNotOptimize(filterLists(log));
    }
}
BENCHMARK(listsOfTheLog)->Unit(benchmark::kMillisecond);

} // namespace
