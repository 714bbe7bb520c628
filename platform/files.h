#pragma once

#include "platform/datetime.h"
#include "platform/filecalls.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace quillon {

/// `directory` + "/" + `name`.
[[nodiscard]] QString filePath(const QString &directory, const QString &name);

/// The path of the file of this name in `directory`, whatever the case of its name on the disk. Of several
/// that differ only in case, the one spelled like `name` is taken. Nothing when there is none.
[[nodiscard]] std::optional<QString> findFile(const QString &directory, const QString &name);

/// findFile, or the path that a new file of this name gets.
[[nodiscard]] QString resolveFile(const QString &directory, const QString &name);

/// The whole content of a file of at most 1 GiB. Throws the run-time error of what failed, with the path.
[[nodiscard]] QByteArray readFile(const QString &path);

/// readFile of a path in the bytes of the disk, which need not be UTF-8. `shown` names it in messages.
[[nodiscard]] QByteArray readFile(const QByteArray &path, const QString &shown);

/// What findFile and resolveFile find in a directory that is read once, for many names.
class FileIndex
{
public:
    explicit FileIndex(const QString &directory);

    /// As resolveFile, by the files that were there when the index was made.
    [[nodiscard]] QString resolve(const QString &name) const;

private:
    QString m_directory;
    QStringList m_names; ///< by their text without case, those of one text by case
};

/// True when the file can be read and holds exactly these bytes.
[[nodiscard]] bool fileHolds(const QString &path, QByteArrayView bytes);

/// Writes the file whole: beside it, synced, renamed over it, directory synced. Follows a symbolic link and
/// keeps the mode bits. When it throws, the old file stands as it was and nothing else is left behind; when
/// only the sync of the directory failed, the new file stands already.
void writeFile(const QString &path, QByteArrayView bytes, FileCalls &calls = FileCalls::real());

/// Adds the bytes to the end of the file, creating it when there is none, and syncs it. When it throws, the
/// file may hold some of them.
void appendToFile(const QString &path, QByteArrayView bytes, FileCalls &calls = FileCalls::real());

/// Copies a file whole over another, as writeFile writes.
void copyFile(const QString &from, const QString &to, FileCalls &calls = FileCalls::real());

/// Copies the file to `yyyymmdd hhnnss.bak` in `directory` and returns the copy's path. A name that is taken
/// is never overwritten: the next free second is.
QString backupFile(
    const QString &path, const QString &directory, DateTime now, FileCalls &calls = FileCalls::real());

/// Removes what a writeFile that was killed between naming and renaming may have left beside `path`.
void removeLeftover(const QString &path, FileCalls &calls = FileCalls::real());

/// removeLeftover for every file in `directory` whose name begins with `prefix`, whether it is still there or
/// not.
void removeLeftovers(const QString &directory, const QString &prefix, FileCalls &calls = FileCalls::real());

/// The same for whatever backupFile was about to make in `directory`.
void removeCopyLeftovers(const QString &directory, FileCalls &calls = FileCalls::real());

/// What tells whether a file is still the one it was: identity, size and times.
struct FileState
{
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;
    qint64 modifiedNs = 0;
    qint64 changedNs = 0;

    bool operator==(const FileState &) const = default;
};

/// The state of the file, or nothing when there is none.
[[nodiscard]] std::optional<FileState> fileState(const QString &path);

/// The lines of a text, without their CR LF or LF. A last line that nothing ends counts; what follows the
/// last line end does not, when it is empty.
[[nodiscard]] QList<QByteArrayView> splitLines(QByteArrayView text);
[[nodiscard]] QList<QStringView> splitLines(QStringView text);

} // namespace quillon
