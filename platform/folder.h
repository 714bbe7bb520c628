#pragma once

#include "platform/codepage.h"
#include "platform/filecalls.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace quillon {

/// The names of the files in `directory` whose name ends in `ending` in any case, in the order of their text.
/// Folders and hidden files are left out. Names are UTF-8, composed (NFC); one that is not UTF-8 is read in
/// the code page. A folder that does not exist holds none; throws the run-time error of one that cannot be
/// read.
[[nodiscard]] QStringList fileNames(
    const QString &directory, const QString &ending, const CodePage &codePage);

/// The path, in the bytes of the disk, of the file in `directory` that fileNames lists as `name`. Of several
/// that are listed the same, the one whose bytes are the UTF-8 of `name` is taken, else the one whose bytes
/// come first. Nothing when there is none; throws the run-time error of a folder that cannot be read.
[[nodiscard]] std::optional<QByteArray> listedFile(
    const QString &directory, const QString &name, const CodePage &codePage);

/// Syncs a folder, where its file system can: what is made, renamed and removed in it until now stays so
/// after a power cut. Throws the run-time error of what failed, with `doing`.
void syncFolder(const QByteArray &path, FileCalls &calls, const QString &doing);

/// Makes the folder of this path and those on the way to it that are not there, each synced into its own.
/// Throws the run-time error of what failed, with `doing`.
void makeFolders(const QString &path, FileCalls &calls, const QString &doing);

} // namespace quillon
