#include "net/curlloop.h"

#include <chrono>
#include <new>

namespace quillon {

namespace {

// Prepares libcurl when it is first needed, and lets it clean up when the program ends.
void initialiseCurl()
{
    struct Library
    {
        Library() { curl_global_init(CURL_GLOBAL_DEFAULT); }
        ~Library() { curl_global_cleanup(); }
        Q_DISABLE_COPY_MOVE(Library)
    };
    static const Library library;
}

CURLM *newTransfers()
{
    initialiseCurl();
    return curl_multi_init();
}

} // namespace

// The notifier may be the one that is telling of the event that led here.
void CurlLoop::Disable::operator()(QSocketNotifier *notifier) const
{
    notifier->setEnabled(false);
    notifier->deleteLater();
}

CurlLoop::CurlLoop()
    : m_transfers(newTransfers())
{
    if (!m_transfers) {
        throw std::bad_alloc();
    }
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, [this] { act(CURL_SOCKET_TIMEOUT, 0); });
    curl_multi_setopt(m_transfers.get(), CURLMOPT_SOCKETFUNCTION, &CurlLoop::watchSocket);
    curl_multi_setopt(m_transfers.get(), CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(m_transfers.get(), CURLMOPT_TIMERFUNCTION, &CurlLoop::setTimer);
    curl_multi_setopt(m_transfers.get(), CURLMOPT_TIMERDATA, this);
}

CurlLoop::~CurlLoop() = default;

void CurlLoop::add(CURL *transfer)
{
    if (curl_multi_add_handle(m_transfers.get(), transfer) != CURLM_OK) {
        throw std::bad_alloc();
    }
}

void CurlLoop::remove(CURL *transfer)
{
    curl_multi_remove_handle(m_transfers.get(), transfer);
}

int CurlLoop::watchSocket(CURL *, curl_socket_t socket, int what, void *loop, void *)
{
    auto *const self = static_cast<CurlLoop *>(loop);
    if (what == CURL_POLL_REMOVE) {
        self->m_watches.erase(socket);
        return 0;
    }
    Watch &watch = self->m_watches[socket];
    if (!watch.readable) {
        watch.readable = self->notifier(socket, QSocketNotifier::Read, CURL_CSELECT_IN);
        watch.writable = self->notifier(socket, QSocketNotifier::Write, CURL_CSELECT_OUT);
    }
    watch.readable->setEnabled(what == CURL_POLL_IN || what == CURL_POLL_INOUT);
    watch.writable->setEnabled(what == CURL_POLL_OUT || what == CURL_POLL_INOUT);
    return 0;
}

int CurlLoop::setTimer(CURLM *, long milliseconds, void *loop)
{
    QTimer &timer = static_cast<CurlLoop *>(loop)->m_timer;
    if (milliseconds < 0) {
        timer.stop();
    } else {
        timer.start(std::chrono::milliseconds(milliseconds));
    }
    return 0;
}

CurlLoop::Notifier CurlLoop::notifier(curl_socket_t socket, QSocketNotifier::Type type, int event)
{
    Notifier result(new QSocketNotifier(socket, type, this));
    connect(result.get(), &QSocketNotifier::activated, this, [this, socket, event] { act(socket, event); });
    return result;
}

void CurlLoop::act(curl_socket_t socket, int event)
{
    int running = 0;
    curl_multi_socket_action(m_transfers.get(), socket, event, &running);
    int left = 0;
    while (const CURLMsg *const message = curl_multi_info_read(m_transfers.get(), &left)) {
        if (message->msg == CURLMSG_DONE) {
            CURL *const transfer = message->easy_handle;
            const CURLcode result = message->data.result;
            remove(transfer);
            Q_EMIT done(transfer, result);
        }
    }
}

} // namespace quillon
