#include "mounteddisk.h"

#include <QByteArray>
#include <QString>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace quillon::soak {

bool mountDisk(const QByteArray &folder)
{
    if (::unshare(CLONE_NEWNS) != 0) {
        const QByteArray user = "0 " + QByteArray::number(::getuid()) + " 1";
        if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
            return false;
        }
        const int map = ::open("/proc/self/uid_map", O_WRONLY | O_CLOEXEC);
        const bool mapped =
            map >= 0 && ::write(map, user.constData(), static_cast<std::size_t>(user.size())) > 0;
        ::close(map);
        if (!mapped) {
            return false;
        }
    }
    return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && ::mount("none", folder.constData(), "tmpfs", 0, "size=64m") == 0;
}

void leavePages(const QByteArray &folder, qint64 pages)
{
    struct statvfs disk
    {
    };
    ::statvfs(folder.constData(), &disk);
    const auto page = static_cast<qint64>(disk.f_frsize);
    const qint64 size = (static_cast<qint64>(disk.f_blocks - disk.f_bfree) + pages) * page;
    // No size at all would be no bound at all.
    const QByteArray option = "size=" + QByteArray::number(qMax(size, page));
    if (::mount("none", folder.constData(), "tmpfs", MS_REMOUNT, option.constData()) != 0) {
        qFatal("the disk cannot be made smaller");
    }
}

void leaveManyPages(const QByteArray &folder)
{
    constexpr qint64 many = 16'000;
    leavePages(folder, many);
}

} // namespace quillon::soak
