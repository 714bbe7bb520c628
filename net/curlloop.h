#pragma once

#include "net/curlhandles.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <map>
#include <memory>

namespace quillon {

/// Runs transfers of libcurl in Qt's event loop, without a thread and without polling: libcurl says which
/// sockets and which time it waits for (https://curl.se/libcurl/c/libcurl-multi.html, "multi_socket").
class CurlLoop : public QObject
{
    Q_OBJECT

public:
    CurlLoop();
    ~CurlLoop() override;

    /// Starts a transfer, which must be removed before it is freed. Throws std::bad_alloc.
    void add(CURL *transfer);
    /// Ends a transfer; nothing is told.
    void remove(CURL *transfer);

Q_SIGNALS:
    /// A transfer is over and removed.
    void done(CURL *transfer, CURLcode result);

private:
    struct Disable
    {
        void operator()(QSocketNotifier *notifier) const;
    };
    using Notifier = std::unique_ptr<QSocketNotifier, Disable>;
    struct Watch
    {
        Notifier readable;
        Notifier writable;
    };

    static int watchSocket(CURL *transfer, curl_socket_t socket, int what, void *loop, void *);
    static int setTimer(CURLM *transfers, long milliseconds, void *loop);
    [[nodiscard]] Notifier notifier(curl_socket_t socket, QSocketNotifier::Type type, int event);
    void act(curl_socket_t socket, int event);

    QTimer m_timer;
    std::map<curl_socket_t, Watch> m_watches;
    CurlTransfers m_transfers;
};

} // namespace quillon
