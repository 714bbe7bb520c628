#pragma once

#include "platform/datetime.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace quillon {

/// A file in an archive.
struct ZipMember
{
    QString name;
    QByteArray bytes;
};

/// The bytes of a .zip archive of these files, dated `made` (UTC). Throws "Internal error" with the words of
/// the library.
[[nodiscard]] QByteArray zipBytes(
    const std::vector<ZipMember> &members, const QString &comment, DateTime made);

/// What an archive holds, or why it cannot be read.
struct ZipContent
{
    QString comment;
    std::vector<ZipMember> members;
    QString problem; ///< empty when all is read
};

enum class ZipReading {
    CommentAlone,
    Whole,
};

/// How much an archive may hold, packed or unpacked; more is told as its problem. What an archive says of its
/// sizes is not trusted: the bytes that come are counted.
inline constexpr qint64 largestArchive = qint64(128) << 20;
inline constexpr int mostZipMembers = 100;

/// Reads an archive.
[[nodiscard]] ZipContent readZip(const QString &path, ZipReading reading);

} // namespace quillon
