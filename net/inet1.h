#pragma once

#include "net/requestaborted.h"
#include "platform/codepage.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <memory>

namespace quillon {

class HttpClient;

/// Transfer control: one HTTP request at a time, waited for in a nested event loop. Every call that begins or
/// reads a request throws "Still executing last request" while one is under way, which goes on undisturbed.
/// The states of a transfer are traced in the logging category "quillon.inet1".
class Inet1 : public QObject
{
    Q_OBJECT

public:
    /// Answers that name no charset are read in `codePage`.
    explicit Inet1(CodePage codePage, QObject *parent = nullptr);
    ~Inet1() override;

    /// The body of what stands at the address, as text. Throws what `wait` throws.
    [[nodiscard]] QString openUrl(const QByteArray &url);

    /// Posts the body and returns at most `maximum` characters of the answer. Throws what `wait` throws.
    [[nodiscard]] QString post(
        const QByteArray &url, const QByteArray &body, const QByteArray &headerBlock, qsizetype maximum);

    /// Begins a GET or POST, which runs in the background. Throws "Invalid procedure call" for an address
    /// that is none; the address goes out byte for byte. `headerBlock` has CR LF between its lines, none at
    /// its end.
    void execute(const QByteArray &url, const QByteArray &method = "GET", const QByteArray &body = {},
        const QByteArray &headerBlock = {});
    /// True until the request is answered and whoever waits for it has got the answer.
    [[nodiscard]] bool stillExecuting() const;
    /// Throws "Still executing last request" while a request is under way; `doing` is what was to be done.
    void requireIdle(const QString &doing) const;

    /// Returns when the request is answered. Throws "Cannot reach the service" with the reason and the
    /// address; "The service answered with an error" for what is no HTTP, for more than 16 MiB, and for a
    /// status of 400 or more unless the body begins "Error "; RequestAborted.
    void wait();
    /// The next characters of the answer, at most `maximum`; empty after the last. Throws what `wait` throws.
    [[nodiscard]] QString getChunk(qsizetype maximum);

    /// Ends the request under way; whoever waits for it gets RequestAborted.
    void abort();

private:
    CodePage m_codePage;
    std::shared_ptr<HttpClient> m_client;
    bool m_isAsked = false; ///< a request was begun whose answer nobody has got yet
    bool m_isWaitedFor = false;
    QString m_text; ///< what getChunk has not given away yet
};

} // namespace quillon
