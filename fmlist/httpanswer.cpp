#include "fmlist/httpanswer.h"

#include "platform/runtimeerror.h"

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype largestHead = qsizetype(64) * 1024;

bool isNumber(const QByteArray &text, bool isDigit(char))
{
    return !text.isEmpty() && text.size() <= 15 && std::ranges::all_of(text, isDigit);
}

bool isDecimal(char c)
{
    return c >= '0' && c <= '9';
}

bool isHexadecimal(char c)
{
    return isDecimal(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

} // namespace

QByteArray HttpAnswer::header(QByteArrayView name) const
{
    for (const auto &[key, value] : headers) {
        if (key == name) {
            return value;
        }
    }
    return {};
}

HttpAnswerReader::HttpAnswerReader(QString doing, qsizetype limit)
    : m_doing(std::move(doing))
    , m_limit(limit)
{
}

void HttpAnswerReader::feed(QByteArrayView bytes)
{
    m_pending.append(bytes);
    while (readPart()) { }
    m_pending.remove(0, m_at);
    m_at = 0;
    m_searched = m_pending.size();
    if (m_part != Part::Nothing && m_pending.size() > largestHead) {
        refuse(u"the answer is not HTTP"_s);
    }
}

void HttpAnswerReader::end()
{
    if (m_part == Part::BodyToEnd) {
        m_part = Part::Nothing;
    }
    if (m_part != Part::Nothing) {
        throw RuntimeError(ErrorName::CannotReachService,
            m_doing + u": the connection ended before the answer was complete"_s);
    }
}

// True when there may be more to read.
bool HttpAnswerReader::readPart()
{
    switch (m_part) {
    case Part::Head:
        return readHead();
    case Part::Body:
    case Part::BodyToEnd:
    case Part::Chunk:
        return readBody();
    case Part::ChunkSize:
        return readChunkSize();
    case Part::ChunkEnd: {
        const auto line = takeLine();
        if (line && !line->isEmpty()) {
            refuse(u"a chunk of the answer is longer than told"_s);
        }
        m_part = line ? Part::ChunkSize : Part::ChunkEnd;
        return line.has_value();
    }
    case Part::Trailer:
        return readTrailer();
    case Part::Nothing:
        break;
    }
    m_at = m_pending.size();
    return false;
}

bool HttpAnswerReader::readHead()
{
    constexpr QByteArrayView protocol = "HTTP/1.";
    const QByteArrayView begin =
        QByteArrayView(m_pending).sliced(m_at).first(std::min(protocol.size(), m_pending.size() - m_at));
    if (begin != protocol.first(begin.size())) {
        refuse(u"the answer is not HTTP"_s);
    }
    const qsizetype end = nextEnd("\r\n\r\n");
    if (end < 0) {
        return false;
    }
    readHeaders(m_pending.sliced(m_at, end - m_at));
    m_at = end + 4;
    const bool isInterim = m_answer.status < 200;
    if (!isInterim) {
        beginBody();
    }
    return true;
}

void HttpAnswerReader::readHeaders(const QByteArray &head)
{
    m_answer = {};
    QList<QByteArray> lines = head.split('\n');
    const QByteArray statusLine = lines.takeFirst().trimmed();
    const QByteArray status = statusLine.mid(9, 3);
    if (!isNumber(status, isDecimal) || status.size() != 3) {
        refuse(u"the answer is not HTTP"_s);
    }
    m_answer.status = status.toInt();
    m_answer.reason = statusLine.mid(13);
    for (const QByteArray &line : lines) {
        const qsizetype colon = line.indexOf(':');
        if (colon > 0) {
            m_answer.headers.emplace_back(line.first(colon).toLower(), line.sliced(colon + 1).trimmed());
        }
    }
}

void HttpAnswerReader::beginBody()
{
    const QByteArray packed = m_answer.header("content-encoding").toLower();
    if (!packed.isEmpty() && packed != "identity") {
        refuse(u"the answer is packed with "_s + QString::fromLatin1(packed));
    }
    const QByteArray length = m_answer.header("content-length");
    if (m_answer.status == 204 || m_answer.status == 304) {
        m_part = Part::Nothing;
    } else if (m_answer.header("transfer-encoding").toLower().endsWith("chunked")) {
        m_part = Part::ChunkSize;
    } else if (length.isEmpty()) {
        m_part = Part::BodyToEnd;
    } else {
        if (!isNumber(length, isDecimal)) {
            refuse(u"the answer tells \""_s + QString::fromLatin1(length) + u"\" as its length"_s);
        }
        m_missing = static_cast<qsizetype>(length.toLongLong());
        checkSize(m_missing);
        m_part = m_missing > 0 ? Part::Body : Part::Nothing;
    }
}

bool HttpAnswerReader::readBody()
{
    const qsizetype there = m_pending.size() - m_at;
    if (m_part == Part::BodyToEnd) {
        takeBody(there);
        return false;
    }
    const qsizetype length = std::min(there, m_missing);
    takeBody(length);
    m_missing -= length;
    if (m_missing > 0) {
        return false;
    }
    m_part = m_part == Part::Chunk ? Part::ChunkEnd : Part::Nothing;
    return true;
}

bool HttpAnswerReader::readChunkSize()
{
    const auto line = takeLine();
    if (!line) {
        return false;
    }
    const QByteArray size = line->split(';').first().trimmed();
    if (!isNumber(size, isHexadecimal)) {
        refuse(
            u"the answer tells \""_s + QString::fromLatin1(size.left(20)) + u"\" as the length of a chunk"_s);
    }
    m_missing = static_cast<qsizetype>(size.toLongLong(nullptr, 16));
    checkSize(m_answer.body.size() + m_missing);
    m_part = m_missing > 0 ? Part::Chunk : Part::Trailer;
    return true;
}

bool HttpAnswerReader::readTrailer()
{
    const auto line = takeLine();
    if (line && line->isEmpty()) {
        m_part = Part::Nothing;
    }
    return line.has_value();
}

// Where the end of a head or line begins, or -1. What was searched before is not searched again.
qsizetype HttpAnswerReader::nextEnd(QByteArrayView end) const
{
    return m_pending.indexOf(end, std::max(m_at, m_searched - end.size() + 1));
}

std::optional<QByteArray> HttpAnswerReader::takeLine()
{
    const qsizetype end = nextEnd("\r\n");
    if (end < 0) {
        return std::nullopt;
    }
    const QByteArray line = m_pending.sliced(m_at, end - m_at);
    m_at = end + 2;
    return line;
}

void HttpAnswerReader::takeBody(qsizetype length)
{
    checkSize(m_answer.body.size() + length);
    m_answer.body.append(QByteArrayView(m_pending).sliced(m_at, length));
    m_at += length;
}

void HttpAnswerReader::checkSize(qsizetype length) const
{
    if (length > m_limit) {
        refuse(u"the answer is larger than "_s + QString::number(m_limit / 1024 / 1024) + u" MiB"_s);
    }
}

void HttpAnswerReader::refuse(const QString &reason) const
{
    throw RuntimeError(ErrorName::ServiceError, m_doing + u": "_s + reason);
}

} // namespace quillon
