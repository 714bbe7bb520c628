#include "platform/folderlock.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace quillon {

FolderLock::FolderLock(const QString &directory)
    // What the program starts must not keep the lock after it.
    : m_folder(::open(QFile::encodeName(directory).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (m_folder >= 0) {
        m_taken = ::flock(m_folder, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    }
}

FolderLock::~FolderLock()
{
    if (m_folder >= 0) {
        ::close(m_folder);
    }
}

} // namespace quillon
