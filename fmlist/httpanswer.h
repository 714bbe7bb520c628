#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>

#include <optional>
#include <utility>

namespace quillon {

/// The largest body of an answer, 16 MiB.
inline constexpr qsizetype largestAnswer = qsizetype(16) * 1024 * 1024;

/// What a server answered to a request.
struct HttpAnswer
{
    int status = 0;
    QByteArray reason; ///< the words after the status
    QList<std::pair<QByteArray, QByteArray>> headers; ///< names in lower case
    QByteArray body;

    /// The value of the first header of that name, which is in lower case; empty when there is none.
    [[nodiscard]] QByteArray header(QByteArrayView name) const;
};

/// Puts an HTTP/1.1 answer together from the pieces in which it comes in (RFC 9112): a body of a length that
/// is told, in chunks, or up to the end of the connection. Every failure is thrown as "Cannot reach the
/// service" when something is missing and "The service answered with an error" when something is wrong, with
/// `doing`, ": " and the reason.
class HttpAnswerReader
{
public:
    explicit HttpAnswerReader(QString doing, qsizetype limit = largestAnswer);

    /// Takes what has come in. Throws when it is no HTTP, or the body gets larger than the limit.
    void feed(QByteArrayView bytes);
    /// The connection has ended. Throws when the answer is not complete then.
    void end();

    [[nodiscard]] bool isComplete() const { return m_part == Part::Nothing; }
    [[nodiscard]] const HttpAnswer &answer() const { return m_answer; }

private:
    enum class Part { Head, Body, BodyToEnd, ChunkSize, Chunk, ChunkEnd, Trailer, Nothing };

    [[nodiscard]] bool readPart();
    [[nodiscard]] bool readHead();
    void readHeaders(const QByteArray &head);
    void beginBody();
    [[nodiscard]] bool readBody();
    [[nodiscard]] bool readChunkSize();
    [[nodiscard]] bool readTrailer();
    [[nodiscard]] qsizetype nextEnd(QByteArrayView end) const;
    [[nodiscard]] std::optional<QByteArray> takeLine();
    void takeBody(qsizetype length);
    void checkSize(qsizetype length) const;
    [[noreturn]] void refuse(const QString &reason) const;

    QString m_doing;
    qsizetype m_limit;
    Part m_part = Part::Head;
    HttpAnswer m_answer;
    QByteArray m_pending; ///< what has come in and is not read yet from m_at on
    qsizetype m_at = 0;
    qsizetype m_searched = 0; ///< bytes of it that are known to hold no end
    qsizetype m_missing = 0; ///< bytes of the body or chunk still to come
};

} // namespace quillon
