#pragma once

#include "support/recordedcalls.h"
#include "support/testfiles.h"

#include <QByteArray>

#include <functional>
#include <map>

namespace quillon::test {

/// What a folder holds: the bytes of each file below it by its path there; folders have a "/" at the end.
using DiskState = std::map<QByteArray, QByteArray>;

/// The bytes of a file; none when it is not there.
[[nodiscard]] QByteArray bytesOf(const DiskState &state, const QByteArray &path);
[[nodiscard]] DiskState stateBelow(const QString &root);
/// Makes the files and folders of a state in an empty directory.
void putState(const DiskState &state, const TestDirectory &directory);

/// How a file system treats what was not synced when the power goes.
enum class Metadata {
    Ordered, ///< names appear and vanish in the order in which the calls were made
    Unordered, ///< any of them may be on the disk, whatever was done before
};

/// The states in which the root of a record may be after a power cut at any moment.
///
/// Only a sync holds: that of a file its bytes, that of a folder the names in it. What was written since may
/// be there, be cut anywhere, be missing, or stand as so many zeros, each write for itself. A file's size and
/// mode are on the disk with its bytes.
class PowerCuts
{
public:
    explicit PowerCuts(const RecordedCalls &record)
        : m_record(record)
    {
    }

    /// Calls `visit` with each state, and with how many confirmations had been given when it was last
    /// possible.
    void forEach(Metadata metadata, const std::function<void(const DiskState &, int confirmed)> &visit) const;

    /// States of one cut beyond which they are drawn by chance.
    static constexpr int mostOfOneCut = 4096;

private:
    const RecordedCalls &m_record;
};

} // namespace quillon::test
