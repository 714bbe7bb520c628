#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace quillon {

/// True when the bytes begin as a gzip file does.
[[nodiscard]] bool isGzip(QByteArrayView bytes);

/// The content of a gzip file, of all its members. Throws "Overflow" when that is more than `most` bytes, of
/// which no more are ever unpacked, and "Type mismatch" for a file that is broken or cut short.
[[nodiscard]] QByteArray gunzipped(QByteArrayView bytes, qint64 most);

} // namespace quillon
