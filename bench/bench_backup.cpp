// The backup of a log of full size, in time of the clock: what the first change of a day waits for.

#include "backup/backupfiles.h"
#include "backup/backups.h"
#include "core/logbooklines.h"
#include "logfile.h"
#include "platform/files.h"
#include "support.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace quillon;
using namespace quillon::bench;
using namespace Qt::StringLiterals;

namespace {

struct Home
{
    Home()
    {
        writeFile(directory.filePath(u"RDSLog.log"_s), fullLogbookFile());
        writeFile(directory.filePath(u"tx.lst"_s), transmitterBytes(fullTransmitterList(), CodePage(1252)));
        writeFile(directory.filePath(u"LOGBOOK.INI"_s), "LOGBOOK_FILENAME=RDSLog.log\r\n");
        config.readConfig();
    }

    QTemporaryDir directory;
    QTemporaryDir backups;
    Config config {directory.path()};
};

void backUp(benchmark::State &state)
{
    const Home home;
    Backups backups(home.backups.path(), home.config);
    const QString path = home.backups.filePath(u"a.zip"_s);
    for (auto _ : state) {
        backups.makeAs(path, {});
    }
    state.counters["bytes"] = static_cast<double>(readFile(path).size());
}

// The same bytes, written one file after the other.
void copyTheFilesAlone(benchmark::State &state)
{
    const Home home;
    for (auto _ : state) {
        for (const QString &name : {u"RDSLog.log"_s, u"tx.lst"_s, u"LOGBOOK.INI"_s}) {
            copyFile(home.directory.filePath(name), home.backups.filePath(name));
        }
    }
}

void readBack(benchmark::State &state)
{
    const Home home;
    Backups backups(home.backups.path(), home.config);
    const QString path = home.backups.filePath(u"a.zip"_s);
    backups.makeAs(path, {});
    for (auto _ : state) {
        benchmark::DoNotOptimize(readBackup(path, logbookName(home.config), regional()).log.count());
    }
}

} // namespace

BENCHMARK(backUp)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(copyTheFilesAlone)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(readBack)->Unit(benchmark::kMillisecond)->UseRealTime();
