#include "core/logbooklines.h"
#include "import/importsession.h"
#include "supportimport.h"

#include <QLocale>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <string>
#include <vector>

// A file of 32,000 receptions: shown, beside a plain loop that cuts its lines; brought in, beside writing the
// log.

using namespace quillon;
using namespace quillon::bench;
using namespace Qt::StringLiterals;

namespace {

const ImportSurroundings &surroundings()
{
    static const ImportSurroundings western {
        {CodePage(1252), NumberFormat(), MonthNames::of(QLocale::c())}, QTimeZone("Europe/Berlin"), false};
    return western;
}

const QByteArray &file()
{
    static const QByteArray bytes = webServerFile();
    return bytes;
}

ImportSession shown(const Logbook &log)
{
    ImportSession session(log, surroundings(), {}, usualImportMinutes);
    session.setSources(sourcesOf(u"log.csv"_s, file()));
    return session;
}

void showAFile(benchmark::State &state)
{
    const Logbook log;
    for (auto _ : state) {
        const ImportSession session = shown(log);
        if (session.rows().size() != webServerLines || session.hasRefused()) {
            state.SkipWithError("not all lines are receptions");
        }
    }
}
BENCHMARK(showAFile)->Unit(benchmark::kMillisecond);

void cutTheLinesAlone(benchmark::State &state)
{
    for (auto _ : state) {
        const std::string text = file().toStdString();
        std::vector<std::vector<std::string>> lines;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = text.find("\r\n", at);
            std::vector<std::string> &cells = lines.emplace_back();
            while (at <= end) {
                const std::size_t next = std::min(text.find(';', at), end);
                cells.push_back(text.substr(at, next - at));
                at = next + 1;
            }
            at = end + 2;
        }
        benchmark::DoNotOptimize(lines);
    }
}
BENCHMARK(cutTheLinesAlone)->Unit(benchmark::kMillisecond);

void bringItIn(benchmark::State &state)
{
    const Logbook empty;
    const ImportSession session = shown(empty);
    for (auto _ : state) {
        Logbook log;
        ImportTally tally;
        log.apply(session.change(tally));
        benchmark::DoNotOptimize(logbookBytes(log, surroundings().regional.codePage));
    }
}
BENCHMARK(bringItIn)->Unit(benchmark::kMillisecond);

} // namespace
