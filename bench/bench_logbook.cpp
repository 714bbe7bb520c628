// Load, save, show and search a log of full size, each beside the plain loop that it is held to.

#include "bench/logfile.h"
#include "core/logbooklines.h"
#include "core/logrows.h"
#include "platform/files.h"
#include "platform/keptfile.h"
#include "supportreference.h"
#include "txdb/pisearch.h"

#include <QFile>

#include <array>
#include <benchmark/benchmark.h>
#include <vector>

using namespace quillon;
using namespace quillon::bench;
using namespace Qt::StringLiterals;

namespace {

QString logPath()
{
    static const QString path = [] {
        QString name = filePath(directory(), u"RDSLog.log"_s);
        writeFile(name, fullLogbookFile());
        return name;
    }();
    return path;
}

// The plain loop: the file read and every line split at "|" into strings.
void loadPlain(benchmark::State &state)
{
    const QByteArray path = logPath().toLocal8Bit();
    while (state.KeepRunning()) {
        QFile file(QString::fromLocal8Bit(path));
        if (!file.open(QIODevice::ReadOnly)) {
            state.SkipWithError("cannot read");
            break;
        }
        std::vector<QStringList> lines;
        const QString text = QString::fromLatin1(file.readAll());
        for (const QStringView line : QStringView(text).split(u'\n')) {
            QStringList pieces;
            for (const QStringView piece : line.split(u'|')) {
                pieces += piece.toString();
            }
            lines.push_back(std::move(pieces));
        }
        benchmark::DoNotOptimize(lines);
    }
}
BENCHMARK(loadPlain)->Unit(benchmark::kMillisecond);

// Two digits as a number.
int two(const char *digits)
{
    return (digits[0] - '0') * 10 + digits[1] - '0';
}

// A tighter loop: the file read, every "|" found, every date read as integers, and no string made.
void loadTight(benchmark::State &state)
{
    const QByteArray path = logPath().toLocal8Bit();
    while (state.KeepRunning()) {
        QFile file(QString::fromLocal8Bit(path));
        if (!file.open(QIODevice::ReadOnly)) {
            state.SkipWithError("cannot read");
            break;
        }
        const QByteArray bytes = file.readAll();
        std::vector<const char *> ends;
        std::vector<std::array<int, 6>> dates;
        qsizetype first = 0;
        for (const char *at = bytes.begin(); at != bytes.end(); ++at) {
            if (*at == '|') {
                if (std::ssize(ends) == first + 1) {
                    const char *const text = ends.back() + 1;
                    dates.push_back({two(text), two(text + 3), two(text + 6) * 100 + two(text + 8),
                        two(text + 11), two(text + 14), two(text + 17)});
                }
                ends.push_back(at);
            } else if (*at == '\n') {
                first = std::ssize(ends);
            }
        }
        benchmark::DoNotOptimize(ends);
        benchmark::DoNotOptimize(dates);
    }
}
BENCHMARK(loadTight)->Unit(benchmark::kMillisecond);

void load(benchmark::State &state)
{
    const QString path = logPath();
    double megabytes = 0;
    while (state.KeepRunning()) {
        const double before = usedMegabytes();
        Logbook log;
        readFullLogbook(log, readFile(path));
        benchmark::DoNotOptimize(log);
        megabytes = usedMegabytes() - before;
    }
    state.counters["MB"] = megabytes;
}
BENCHMARK(load)->Unit(benchmark::kMillisecond);

void savePlain(benchmark::State &state)
{
    const QByteArray path = filePath(directory(), u"plain.log"_s).toLocal8Bit();
    const QByteArray &bytes = fullLogbookFile();
    while (state.KeepRunning()) {
        if (!bench::savePlain(path, bytes)) {
            state.SkipWithError("cannot write");
            break;
        }
    }
}
BENCHMARK(savePlain)->Unit(benchmark::kMillisecond)->UseRealTime();

// One entry has changed, as after every Add, Update and Delete.
void save(benchmark::State &state)
{
    Logbook log = fullLogbook();
    const QString path = filePath(directory(), u"save.log"_s);
    LogbookLines lines(regional().codePage);
    // The file is there and known, as it is on every save but the first.
    writeFile(path, fullLogbookFile());
    KeptFile kept;
    kept.readWhole(path, *fileState(path));
    kept.save(path, directory(), lines.bytes(log));
    qint32 changed = 0;
    while (state.KeepRunning()) {
        LogChange change;
        change.setField(changed, log.entry(changed), LogField::Prop, u"Es"_s);
        log.apply(change);
        lines.changed(changed);
        changed = (changed + 1) % log.count();
        kept.save(path, directory(), lines.bytes(log));
    }
}
BENCHMARK(save)->Unit(benchmark::kMillisecond)->UseRealTime();

// The first save of a run encodes every entry.
void saveFirst(benchmark::State &state)
{
    const Logbook log = fullLogbook();
    const QString path = filePath(directory(), u"first.log"_s);
    writeFile(path, fullLogbookFile());
    KeptFile kept;
    kept.readWhole(path, *fileState(path));
    while (state.KeepRunning()) {
        LogbookLines lines(regional().codePage);
        kept.save(path, directory(), lines.bytes(log));
    }
}
BENCHMARK(saveFirst)->Unit(benchmark::kMillisecond)->UseRealTime();

void serialise(benchmark::State &state)
{
    const Logbook log = fullLogbook();
    const CodePage page = regional().codePage;
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(logbookBytes(log, page));
    }
}
BENCHMARK(serialise)->Unit(benchmark::kMillisecond);

void rowsOfTheGrid(benchmark::State &state)
{
    const Logbook log = fullLogbook();
    double megabytes = 0;
    while (state.KeepRunning()) {
        const double before = usedMegabytes();
        LogRows rows(log, regional().months);
        rows.refill();
        benchmark::DoNotOptimize(rows.shown().data());
        megabytes = usedMegabytes() - before;
    }
    state.counters["MB"] = megabytes;
}
BENCHMARK(rowsOfTheGrid)->Unit(benchmark::kMillisecond);

void search(benchmark::State &state, LogSearch field, const QString &text)
{
    const Logbook log = fullLogbook();
    qsizetype found = 0;
    while (state.KeepRunning()) {
        const QStringList lines = searchLog(log, field, text);
        found = lines.size();
    }
    state.counters["found"] = static_cast<double>(found);
}
BENCHMARK_CAPTURE(search, emptyText, LogSearch::PiCodeContains, QString())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(search, piCode, LogSearch::PiCodeContains, u"D3"_s)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(search, rdsName, LogSearch::RdsNameContains, u"IO_4"_s)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(search, freq, LogSearch::FreqEquals, u"87.6"_s)->Unit(benchmark::kMillisecond);

// The entry that stands last, and one that is not there.
void find(benchmark::State &state)
{
    const Logbook log = fullLogbook();
    const LogEntry &last = log.entry(log.count() - 1);
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(log.FindEntry(last.piCode, last.dateTime, last.rdsName, last.freq));
        benchmark::DoNotOptimize(log.FindEntry(u"FFFF", last.dateTime, u"none", last.freq));
    }
}
BENCHMARK(find)->Unit(benchmark::kMillisecond);

} // namespace
