#include "fmlist/search.h"
#include "net/inet1.h"
#include "supportservice.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QFile>

#include <unistd.h>

namespace quillon {

namespace {

using namespace Qt::StringLiterals;

// Resident size of this process in KiB.
double residentSize()
{
    QFile file(u"/proc/self/statm"_s);
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    const double pages = file.readAll().split(' ').at(1).toDouble();
    return pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1024;
}

// Processor time and resident size of a thousand searches, one after the other.
void searches(benchmark::State &state)
{
    int count = 0;
    const QCoreApplication application(count, nullptr);
    bench::Service service("87.6;D3C1;RADIO 1;D;Berlin, Berlin;10;52.5;13.4;4711\n");
    Inet1 inet(CodePage(1252));
    const QByteArray url =
        searchUrl(service.url(), {u"87.6"_s, u"D3C1"_s, u"RADIO 1"_s}, CodePage(1252)).value_or("");
    for (int i = 0; i < 100; ++i) {
        benchmark::DoNotOptimize(inet.openUrl(url));
    }
    service.forget();
    state.counters["KiB_before"] = residentSize();
    for (auto _ : state) {
        benchmark::DoNotOptimize(inet.openUrl(url));
    }
    service.forget();
    state.counters["KiB_after"] = residentSize();
}

BENCHMARK(searches)->Unit(benchmark::kMicrosecond)->Iterations(1000);

} // namespace

} // namespace quillon
