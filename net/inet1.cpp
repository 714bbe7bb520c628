#include "net/inet1.h"

#include "net/answertext.h"
#include "net/httpclient.h"
#include "platform/runtimeerror.h"

#include <QEventLoop>
#include <QPointer>

#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

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
    , m_client(std::make_shared<HttpClient>())
{
    setObjectName(u"Inet1"_s);
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
    m_isAsked = false;
    m_client->start({.method = method, .url = url, .body = body, .headerBlock = headerBlock});
    m_isAsked = true;
}

bool Inet1::stillExecuting() const
{
    return m_isWaitedFor || !m_client->isFinished();
}

void Inet1::requireIdle(const QString &doing) const
{
    if (stillExecuting()) {
        throw RuntimeError(ErrorName::StillExecuting, doing);
    }
}

void Inet1::wait()
{
    if (!std::exchange(m_isAsked, false)) {
        return;
    }
    // Both held here: this object may be gone when the loop returns.
    const auto client = m_client;
    const QPointer<Inet1> self(this);
    if (!client->isFinished()) {
        QEventLoop loop;
        connect(client.get(), &HttpClient::finished, &loop, &QEventLoop::quit);
        m_isWaitedFor = true;
        loop.exec();
    }
    // The loop also returns when the program is ending.
    client->abort();
    if (self) {
        m_isWaitedFor = false;
    }
    if (client->isAborted()) {
        throw RequestAborted();
    }
    const HttpAnswer answer = client->takeAnswer();
    checkStatus(answer, client->doing());
    m_text = answerText(answer.body, answer.contentType, m_codePage);
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
    m_client->abort();
}

} // namespace quillon
