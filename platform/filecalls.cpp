#include "platform/filecalls.h"

#include <QString>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillon {

using namespace Qt::StringLiterals;

int FileCalls::mayWrite(const QByteArray &path)
{
    return ::access(path.constData(), W_OK);
}

int FileCalls::openNameless(const QByteArray &directory, mode_t mode)
{
    return ::open(directory.constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, mode);
}

int FileCalls::openNew(const QByteArray &path, mode_t mode)
{
    return ::open(path.constData(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, mode);
}

int FileCalls::openToAppend(const QByteArray &path, mode_t mode)
{
    return ::open(path.constData(), O_CREAT | O_APPEND | O_WRONLY | O_CLOEXEC, mode);
}

ssize_t FileCalls::write(int file, QByteArrayView bytes)
{
    return ::write(file, bytes.data(), static_cast<std::size_t>(bytes.size()));
}

int FileCalls::setMode(int file, mode_t mode)
{
    return ::fchmod(file, mode);
}

int FileCalls::sync(int file)
{
    return ::fsync(file);
}

int FileCalls::giveName(int file, const QByteArray &path)
{
    const QByteArray self = "/proc/self/fd/"_ba + QByteArray::number(file);
    return ::linkat(AT_FDCWD, self.constData(), AT_FDCWD, path.constData(), AT_SYMLINK_FOLLOW);
}

int FileCalls::rename(const QByteArray &from, const QByteArray &to)
{
    return ::rename(from.constData(), to.constData());
}

int FileCalls::remove(const QByteArray &path)
{
    return ::unlink(path.constData());
}

int FileCalls::makeDirectory(const QByteArray &path, mode_t mode)
{
    return ::mkdir(path.constData(), mode);
}

int FileCalls::makeDirectoryOfNewName(QByteArray &path)
{
    return ::mkdtemp(path.data()) == nullptr ? -1 : 0;
}

int FileCalls::removeDirectory(const QByteArray &path)
{
    return ::rmdir(path.constData());
}

int FileCalls::syncDirectory(const QByteArray &directory)
{
    const int file = ::open(directory.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0) {
        return file;
    }
    const int result = ::fsync(file);
    const int error = errno;
    ::close(file);
    errno = error;
    return result;
}

int FileCalls::close(int file)
{
    return ::close(file);
}

FileCalls &FileCalls::real()
{
    static FileCalls calls;
    return calls;
}

} // namespace quillon
