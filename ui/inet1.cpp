#include "ui/inet1.h"

#include "fmlist/answertext.h"
#include "platform/runtimeerror.h"

#include <QEventLoop>
#include <QLoggingCategory>
#include <QPointer>

#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(trace, "quillon.inet1", QtWarningMsg)

void checkStatus(const HttpAnswer &answer, const QString &doing)
{
    constexpr int firstError = 400;
    if (answer.status >= firstError && !answer.body.startsWith("Error ")) {
        const QString status = QString::number(answer.status) + u' ' + QString::fromLatin1(answer.reason);
        throw RuntimeError(ErrorName::ServiceError, doing + u": the service answered "_s + status.trimmed());
    }
}

} // namespace

Inet1::Inet1(CodePage codePage, QObject *parent)
    : QObject(parent)
    , m_codePage(codePage)
{
    setObjectName(u"Inet1"_s);
    connect(
        this, &Inet1::stateChanged, this, [](TransferState state) { qCDebug(trace) << stateText(state); });
}

Inet1::~Inet1()
{
    abort();
}

QString Inet1::openUrl(const QByteArray &url)
{
    execute(url, "GET", {}, "User-Agent: Quillon\r\nAccept: */*");
    wait();
    return std::exchange(m_text, {});
}

QString Inet1::post(
    const QByteArray &url, const QByteArray &body, const QByteArray &headerBlock, qsizetype maximum)
{
    execute(url, "POST", body, headerBlock);
    wait();
    return getChunk(maximum);
}

void Inet1::execute(
    const QByteArray &url, const QByteArray &method, const QByteArray &body, const QByteArray &headerBlock)
{
    requireIdle(u"Opening "_s + QString::fromLatin1(url));
    m_text.clear();
    m_transfer.reset();
    const auto transfer = std::make_shared<HttpTransfer>(HttpRequest {method, url, body, headerBlock});
    connect(transfer.get(), &HttpTransfer::stateChanged, this, &Inet1::stateChanged);
    transfer->start();
    m_transfer = transfer;
}

bool Inet1::stillExecuting() const
{
    return m_isWaitedFor || (m_transfer && !m_transfer->isFinished());
}

void Inet1::requireIdle(const QString &doing) const
{
    if (stillExecuting()) {
        throw RuntimeError(ErrorName::StillExecuting, doing);
    }
}

void Inet1::wait()
{
    // Both held here: this object may be gone when the loop returns.
    const auto transfer = m_transfer;
    const QPointer<Inet1> self(this);
    if (!transfer) {
        return;
    }
    if (!transfer->isFinished()) {
        QEventLoop loop;
        connect(transfer.get(), &HttpTransfer::finished, &loop, &QEventLoop::quit);
        m_isWaitedFor = true;
        loop.exec();
    }
    // The loop also returns when the program is ending.
    transfer->abort();
    if (self) {
        m_isWaitedFor = false;
        m_transfer.reset();
    }
    if (transfer->isAborted()) {
        throw RequestAborted();
    }
    const HttpAnswer &answer = transfer->answer();
    qCDebug(trace) << "ResponseCode" << answer.status << "ResponseInfo" << answer.reason;
    checkStatus(answer, transfer->doing());
    m_text = answerText(answer.body, answer.header("content-type"), m_codePage);
}

QString Inet1::getChunk(qsizetype maximum)
{
    requireIdle(u"Reading the answer"_s);
    wait();
    QString chunk = m_text.left(maximum);
    m_text.remove(0, maximum);
    return chunk;
}

void Inet1::abort()
{
    if (m_transfer) {
        m_transfer->abort();
    }
}

} // namespace quillon
