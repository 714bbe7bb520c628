#include "import/gzip.h"

#include "platform/runtimeerror.h"

#include <QString>

#include <algorithm>
#include <array>
#include <memory>
#include <zlib.h>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int gzipWindowBits = 15 + 16;
constexpr std::size_t pieceSize = std::size_t {64} * 1024;

struct Ended
{
    void operator()(z_stream *stream) const { ::inflateEnd(stream); }
};

RuntimeError broken(const QString &why)
{
    return {ErrorName::TypeMismatch, u"the gzip file is broken: "_s + why};
}

} // namespace

bool isGzip(QByteArrayView bytes)
{
    return bytes.startsWith("\x1F\x8B");
}

QByteArray gunzipped(QByteArrayView bytes, qint64 most)
{
    z_stream stream {};
    if (::inflateInit2(&stream, gzipWindowBits) != Z_OK) {
        throw RuntimeError(ErrorName::InternalError, u"the gzip file cannot be unpacked"_s);
    }
    const std::unique_ptr<z_stream, Ended> ended(&stream);
    // zlib does not write to what it reads.
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.data()));
    stream.avail_in = static_cast<uInt>(std::min(bytes.size(), qsizetype(most)));
    QByteArray content;
    std::array<char, pieceSize> piece {};
    while (true) {
        stream.next_out = reinterpret_cast<Bytef *>(piece.data());
        stream.avail_out = static_cast<uInt>(piece.size());
        const int result = ::inflate(&stream, Z_NO_FLUSH);
        const auto got = static_cast<qsizetype>(piece.size() - stream.avail_out);
        if (content.size() + got > most) {
            throw RuntimeError(
                ErrorName::Overflow, u"unpacked, the file is larger than %1 MiB"_s.arg(most / 1024 / 1024));
        }
        content.append(piece.data(), got);
        if (result == Z_STREAM_END) {
            // Another member may follow; anything else behind the last one is padding.
            const QByteArrayView rest(
                reinterpret_cast<const char *>(stream.next_in), static_cast<qsizetype>(stream.avail_in));
            if (!isGzip(rest)) {
                return content;
            }
            if (::inflateReset(&stream) != Z_OK) {
                throw broken(u"what follows its first part cannot be read"_s);
            }
        } else if (result != Z_OK) {
            throw broken(stream.avail_in == 0 ? u"it ends too early"_s
                                              : QString::fromLatin1(stream.msg ? stream.msg : "bad data"));
        }
    }
}

} // namespace quillon
