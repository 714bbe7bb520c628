#include "core/logbooklines.h"
#include "import/rdsdx.h"
#include "import/rdsspy.h"
#include "supportimport.h"

#include <QFile>
#include <QLocale>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <dirent.h>
#include <string>
#include <vector>

// Each import beside a plain loop over the same input.

using namespace quillon;
using namespace quillon::bench;
using namespace Qt::StringLiterals;

namespace {

const Regional &regional()
{
    static const Regional western {CodePage(1252), NumberFormat(), MonthNames::of(QLocale::c())};
    return western;
}

const QString &folder()
{
    static const QTemporaryDir directory;
    static const QString path = [] {
        writeSpyFolder(directory.path());
        return directory.path();
    }();
    return path;
}

const QByteArray &rdsdxFile()
{
    static const QByteArray file = rdsdxLog();
    return file;
}

void listOneDay(benchmark::State &state)
{
    const auto day = dayOf(u"12/06/2010"_s, regional().months);
    (void)folder();
    for (auto _ : state) {
        benchmark::DoNotOptimize(listRdsSpyFolder(folder(), day.value(), regional()));
    }
}
BENCHMARK(listOneDay)->Unit(benchmark::kMillisecond);

void readTheFolderAlone(benchmark::State &state)
{
    const QByteArray path = QFile::encodeName(folder());
    for (auto _ : state) {
        std::vector<std::string> names;
        DIR *open = ::opendir(path.constData());
        while (const dirent *entry = ::readdir(open)) {
            names.emplace_back(entry->d_name);
        }
        ::closedir(open);
        benchmark::DoNotOptimize(names);
    }
}
BENCHMARK(readTheFolderAlone)->Unit(benchmark::kMillisecond);

void importAndSerialise(benchmark::State &state)
{
    for (auto _ : state) {
        Logbook log;
        LogChange import;
        import.added =
            readRdsdx(rdsdxFile(), u"/logs/20100612.txt"_s, regional(), [](const QString &) {}).entries;
        log.apply(import);
        benchmark::DoNotOptimize(logbookBytes(log, regional().codePage));
    }
}
BENCHMARK(importAndSerialise)->Unit(benchmark::kMillisecond);

void cutTheLinesAlone(benchmark::State &state)
{
    for (auto _ : state) {
        const std::string text = rdsdxFile().toStdString();
        std::vector<std::vector<std::string>> lines;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = text.find("\r\n", at);
            const std::string line = text.substr(at, end - at);
            lines.push_back({line.substr(0, 6), line.substr(7, 4), line.substr(12, 8), line.substr(21, 7),
                line.substr(29, 3), line.substr(33)});
            at = end + 2;
        }
        benchmark::DoNotOptimize(lines);
    }
}
BENCHMARK(cutTheLinesAlone)->Unit(benchmark::kMillisecond);

} // namespace
