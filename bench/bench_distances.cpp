#include "core/logbooklines.h"
#include "platform/files.h"
#include "support.h"
#include "txdb/distances.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

void measureAndGive(TransmitterList &list, Logbook &log, const Settings &settings)
{
    list.apply(measuredTransmitters(list, settings, false));
    log.apply(givenDistances(list, log));
}

void reportSize(benchmark::State &state, const Logbook &log, const TransmitterList &list)
{
    state.counters["entries"] = log.count();
    state.counters["transmitters"] = list.count();
}

void recalculate(benchmark::State &state)
{
    Logbook log = bench::fullLog();
    TransmitterList list = bench::fullTransmitterList();
    const Settings settings = bench::homeSettings();
    for ([[maybe_unused]] const auto step : state) {
        measureAndGive(list, log, settings);
    }
    reportSize(state, log, list);
}
BENCHMARK(recalculate)->Unit(benchmark::kMillisecond);

// The bar: 60 ms.
void recalculateAndWriteBothFiles(benchmark::State &state)
{
    Logbook log = bench::fullLog();
    TransmitterList list = bench::fullTransmitterList();
    const Settings settings = bench::homeSettings();
    const CodePage codePage;
    const QTemporaryDir directory;
    for ([[maybe_unused]] const auto step : state) {
        measureAndGive(list, log, settings);
        writeFile(directory.filePath(u"tx.lst"_s), transmitterBytes(list, codePage));
        writeFile(directory.filePath(u"RDSLog.log"_s), logbookBytes(log, codePage));
    }
    reportSize(state, log, list);
}
BENCHMARK(recalculateAndWriteBothFiles)->Unit(benchmark::kMillisecond);

// What it is held to: the list scanned from its start for every entry.
void plainScan(benchmark::State &state)
{
    Logbook log = bench::fullLog();
    TransmitterList list = bench::fullTransmitterList();
    const Settings settings = bench::homeSettings();
    for ([[maybe_unused]] const auto step : state) {
        list.apply(measuredTransmitters(list, settings, false));
        LogChange change;
        for (qint32 index = 0; index < log.count(); ++index) {
            const LogEntry &entry = log.entry(index);
            for (const Transmitter &row : list) {
                if (row.name == entry.transmitter && row.country == entry.country
                    && !row.distance.isEmpty()) {
                    change.setField(index, entry, LogField::Dist, row.distance);
                    break;
                }
            }
        }
        log.apply(change);
    }
    reportSize(state, log, list);
}
BENCHMARK(plainScan)->Unit(benchmark::kMillisecond);

} // namespace
