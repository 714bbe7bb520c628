#pragma once

#include "fmlist-standin/standin.h"

#include <QMetaObject>
#include <QObject>
#include <QThread>

#include <ctime>
#include <memory>
#include <pthread.h>

namespace quillon::bench {

/// The stand-in for the service, in a thread of its own: its work is not the program's.
class Service
{
public:
    /// The stations it knows, one line each.
    explicit Service(const QByteArray &stations)
    {
        m_inThread.moveToThread(&m_thread);
        m_thread.start();
        onThread([this, stations] {
            pthread_getcpuclockid(pthread_self(), &m_clock);
            m_service = std::make_unique<standin::StandIn>(stations);
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

    /// Milliseconds of processor time that it has taken, which are to be left out.
    [[nodiscard]] double spent() const
    {
        timespec now {};
        clock_gettime(m_clock, &now);
        return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
    }

    /// The number of requests since the last `forget`.
    [[nodiscard]] qsizetype requests()
    {
        qsizetype count = 0;
        onThread([this, &count] { count = m_service->requests().size(); });
        return count;
    }

    /// What it remembers of the requests is not the program's either.
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
    clockid_t m_clock {};
    std::unique_ptr<standin::StandIn> m_service;
    QString m_url;
};

} // namespace quillon::bench
