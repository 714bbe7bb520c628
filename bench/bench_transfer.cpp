#include "fmlist-standin/standin.h"
#include "fmlist/search.h"
#include "ui/inet1.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QFile>
#include <QThread>

#include <unistd.h>

#include <memory>

namespace quillon {

namespace {

using namespace Qt::StringLiterals;

// The service, in a thread of its own: its work is not the program's.
class Service
{
public:
    Service()
    {
        m_inThread.moveToThread(&m_thread);
        m_thread.start();
        onThread([this] {
            m_service =
                std::make_unique<standin::StandIn>("87.6;D3C1;RADIO 1;D;Berlin, Berlin;10;52.5;13.4;4711\n");
            if (m_service->listen()) {
                m_url = m_service->url();
            }
        });
    }

    ~Service()
    {
        onThread([this] { m_service.reset(); });
        m_thread.quit();
        m_thread.wait();
    }

    Q_DISABLE_COPY_MOVE(Service)

    [[nodiscard]] QString url() const { return m_url; }

    // What it remembers of the requests is not the program's either.
    void forget()
    {
        onThread([this] { m_service->forget(); });
    }

private:
    template<typename Work>
    void onThread(Work work)
    {
        QMetaObject::invokeMethod(&m_inThread, work, Qt::BlockingQueuedConnection);
    }

    QThread m_thread;
    QObject m_inThread;
    std::unique_ptr<standin::StandIn> m_service;
    QString m_url;
};

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
    Service service;
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
