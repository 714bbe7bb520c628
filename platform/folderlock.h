#pragma once

#include <QString>

namespace quillon {

/// Says that this program works in a folder: an advisory lock of the folder itself (flock(2)). Nothing is
/// written, and the system lifts it when the program ends, however it ends.
class FolderLock
{
public:
    explicit FolderLock(const QString &directory);
    ~FolderLock();
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

    /// True when another program holds the lock. A folder that cannot be locked at all is nobody's.
    [[nodiscard]] bool isTaken() const { return m_taken; }

private:
    int m_folder;
    bool m_taken = false;
};

} // namespace quillon
