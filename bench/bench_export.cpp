// The exports at full size: 32,498 receptions over 20 years and 5,001 transmitters. What has a bar stands
// beside what it is held to.

#include "core/logrows.h"
#include "export/kmlfiles.h"
#include "export/textlog.h"
#include "export/webpages.h"
#include "platform/files.h"
#include "platform/runtimeerror.h"

#include <QDir>
#include <QLocale>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

constexpr int entryCount = 32'498;

Regional regional()
{
    return {CodePage(1252), NumberFormat(), MonthNames::of(QLocale::c())};
}

TransmitterList fullList()
{
    TransmitterList list;
    for (int i = 0; i < TransmitterList::capacity; ++i) {
        list.add(
            {u"Sender %1/Höhe"_s.arg(i), u"C%1"_s.arg(i % 60), QString::number(35 + i % 300 * 0.1, 'f', 4),
                QString::number(-10 + i % 400 * 0.1, 'f', 4), QString::number(i)});
    }
    return list;
}

Logbook fullLog(const TransmitterList &list)
{
    constexpr qint64 twentyYears = 7305 * secondsPerDay;
    const qint64 start = fromCivil({2004, 1, 1, 0, 0, 0})->seconds;
    const QStringList props {u"Es"_s, u"Tropo"_s, u"MS"_s, u"F2"_s};
    Logbook log;
    for (int i = 0; i < entryCount; ++i) {
        // Every eighth reception is of a site that is not in the list.
        const Transmitter &site = list.row(static_cast<int>(i * 7919LL % list.count()));
        LogEntry entry;
        entry.piCode = QString::number(0x1000 + i, 16).toUpper();
        entry.dateTime = {start + twentyYears * i / entryCount};
        entry.prop = props.at(i % 4);
        entry.freq = QString::number(87.5 + i % 205 * 0.1, 'f', 1);
        entry.transmitter = i % 8 == 0 ? u"Unknown"_s : site.name;
        entry.country = site.country;
        entry.notes = i % 5 == 0 ? u"weak, with\r\nfading"_s : QString();
        entry.rdsName = u"RADIO %1"_s.arg(i % 90);
        entry.power = u"100"_s;
        entry.dist = QString::number(i % 2500);
        try {
            log.AddEntry(entry);
        } catch (const RuntimeError &) {
            // The last entry that there is room for is added, and tells that the log is full now.
            break;
        }
    }
    return log;
}

struct Full
{
    TransmitterList list = fullList();
    Logbook log = fullLog(list);
    Regional region = regional();
    LogRows rows {log, region.months};
    QTemporaryDir directory;
};

const Full &full()
{
    static Full data;
    if (data.rows.all().empty()) {
        data.rows.refill();
    }
    return data;
}

void kmlOfTheWholeLog(benchmark::State &state)
{
    for (auto _ : state) {
        writeLogbookKml(full().directory.path(), full().log, full().list, full().region.codePage);
    }
}

void kmlInMemory(benchmark::State &state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(logbookKml(full().log, full().list, full().region.codePage));
    }
}

void kmlWritingTheSameBytes(benchmark::State &state)
{
    const QByteArray bytes = logbookKml(full().log, full().list, full().region.codePage);
    for (auto _ : state) {
        writeFile(full().directory.filePath(u"same.kml"_s), bytes);
    }
    state.counters["bytes"] = static_cast<double>(bytes.size());
}

void kmlQuadraticScan(benchmark::State &state)
{
    for (auto _ : state) {
        QByteArray bytes;
        for (const Transmitter &site : full().list) {
            for (const LogEntry &entry : full().log) {
                if (entry.transmitter == site.name && entry.country == site.country) {
                    full().region.codePage.appendEncoded(bytes, generalText(entry.dateTime));
                }
            }
        }
        benchmark::DoNotOptimize(bytes);
    }
}

void prepareTemplates(const QString &directory)
{
    writeFile(filePath(directory, u"quillon_index.template"_s),
        "$GENERATED\r\n<table>\r\n$RAWDATA\r\n</table>\r\n");
    writeFile(filePath(directory, u"quillon_log.template"_s), "<table>\r\n$RAWDATA\r\n</table>\r\n");
    writeFile(filePath(directory, u"quillon_mapview.htm"_s), QByteArray(800'000, 'x'));
}

// The first export writes every file.
void webPagesOfTwentyYears(benchmark::State &state)
{
    const QTemporaryDir directory;
    prepareTemplates(directory.path());
    const WebSite site {full().rows, full().list, u"DL1ABC"_s, u"V1.0.0"_s, {}};
    for (auto _ : state) {
        state.PauseTiming();
        QDir(directory.filePath(u"html"_s)).removeRecursively();
        state.ResumeTiming();
        exportWebPages(directory.path(), site, full().region);
    }
    state.counters["files"] = static_cast<double>(QDir(directory.filePath(u"html"_s)).count()) - 2;
}

// Every further one writes what has changed: here the index.
void webPagesOfTwentyYearsAgain(benchmark::State &state)
{
    const QTemporaryDir directory;
    prepareTemplates(directory.path());
    WebSite site {full().rows, full().list, u"DL1ABC"_s, u"V1.0.0"_s, {}};
    exportWebPages(directory.path(), site, full().region);
    for (auto _ : state) {
        ++site.now.seconds;
        exportWebPages(directory.path(), site, full().region);
    }
}

void webPagesWritingTheSameBytes(benchmark::State &state)
{
    const QTemporaryDir directory;
    prepareTemplates(directory.path());
    const WebSite site {full().rows, full().list, u"DL1ABC"_s, u"V1.0.0"_s, {}};
    exportWebPages(directory.path(), site, full().region);
    const QString html = directory.filePath(u"html"_s);
    QList<QPair<QString, QByteArray>> files;
    for (const QString &name : QDir(html).entryList(QDir::Files)) {
        files.append({filePath(html, name), readFile(filePath(html, name))});
    }
    for (auto _ : state) {
        for (const auto &[path, bytes] : files) {
            writeFile(path, bytes);
        }
    }
}

void textOfTheWholeLog(benchmark::State &state)
{
    const TextLogRange range {{0}, *fromCivil({2100, 1, 1, 0, 0, 0}), true, {}};
    for (auto _ : state) {
        benchmark::DoNotOptimize(textLog(full().rows, range, full().region));
    }
}

} // namespace

BENCHMARK(kmlOfTheWholeLog)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(kmlWritingTheSameBytes)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(kmlInMemory)->Unit(benchmark::kMillisecond);
BENCHMARK(kmlQuadraticScan)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(webPagesOfTwentyYears)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(webPagesOfTwentyYearsAgain)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(webPagesWritingTheSameBytes)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(textOfTheWholeLog)->Unit(benchmark::kMillisecond);
