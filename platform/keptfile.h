#pragma once

#include "platform/files.h"

#include <QByteArrayView>
#include <QHash>
#include <QString>

#include <optional>

namespace quillon {

/// A file that is rewritten whole again and again, and never over content that this run has not seen.
class KeptFile
{
public:
    explicit KeptFile(FileCalls &calls = FileCalls::real());

    /// Remembers that the file at `path`, in this state, was read whole and nothing of it is lost.
    void readWhole(const QString &path, const FileState &state);

    /// Removes what a save that was killed left beside `path`.
    void removeLeftover(const QString &path);

    /// True when the file at `path` is still what this run read whole or wrote.
    [[nodiscard]] bool isKnown(const QString &path) const;

    /// Writes the file whole. A file at `path` that this run did not itself read whole or write is first
    /// copied to a dated ".bak" in `directory`; the copy's path is the result. Throws the run-time error of
    /// what failed; the old file then stands as it was, unless only the sync of its directory failed.
    std::optional<QString> save(const QString &path, const QString &directory, QByteArrayView bytes);

private:
    FileCalls &m_calls;
    /// The state, for each path, of which nothing is lost when the file is replaced.
    QHash<QString, FileState> m_known;
};

} // namespace quillon
