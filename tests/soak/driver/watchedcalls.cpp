#include "watchedcalls.h"

#include <QScopedValueRollback>
#include <QSet>

#include <algorithm>
#include <atomic>
#include <cstdarg>
#include <ctime>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace quillon::soak {

namespace {

// What stands between the program and the C library.
struct Watch
{
    QByteArrayList folders;
    WatchedCalls *calls = nullptr;
    QSet<int> files; ///< those that are open and may be written
    bool inside = false; ///< the call is one of ours
};

Watch &watch()
{
    static Watch current;
    return current;
}

// The wall clock is ahead by so much (nanoseconds).
std::atomic<qint64> ahead = 0;

bool isWatchedNow()
{
    return watch().calls != nullptr && ::syscall(SYS_gettid) == ::getpid() && !watch().inside;
}

bool isWatched(const char *path)
{
    const QByteArrayView name(path);
    return isWatchedNow() && std::ranges::any_of(watch().folders, [&](const QByteArray &folder) {
        return name == folder || name.startsWith(QByteArray(folder + '/'));
    });
}

bool isWatched(int file)
{
    return isWatchedNow() && watch().files.contains(file);
}

// Makes a call in which the program's own calls are not watched.
template<typename Call>
auto unwatched(const Call &call)
{
    const QScopedValueRollback inside(watch().inside, true);
    return call(*watch().calls);
}

int realOpen(int folder, const char *path, int flags, mode_t mode)
{
    return static_cast<int>(::syscall(SYS_openat, folder, path, flags, mode));
}

int opened(int folder, const char *path, int flags, mode_t mode)
{
    constexpr int ways = O_ACCMODE | O_CREAT | O_EXCL | O_APPEND | O_TRUNC | O_TMPFILE;
    if (!isWatched(path) || (flags & O_ACCMODE) == O_RDONLY) {
        return realOpen(folder, path, flags, mode);
    }
    const int file = unwatched([&](WatchedCalls &calls) {
        switch (flags & ways) {
        case O_TMPFILE | O_WRONLY:
            return calls.openNameless(path, mode);
        case O_CREAT | O_EXCL | O_WRONLY:
            return calls.openNew(path, mode);
        case O_CREAT | O_APPEND | O_WRONLY:
            return calls.openToAppend(path, mode);
        default:
            return calls.other([&] { return realOpen(folder, path, flags, mode); });
        }
    });
    if (file >= 0) {
        watch().files.insert(file);
    }
    return file;
}

// The mode that follows the flags of an opening, if one does.
mode_t modeOf(int flags, std::va_list words)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(words, mode_t) : 0;
}

bool isFolder(int file)
{
    struct stat status
    {
    };
    return ::fstat(file, &status) == 0 && S_ISDIR(status.st_mode);
}

int slept(const timespec *time)
{
    constexpr qint64 second = 1'000'000'000;
    ahead += time->tv_sec * second + time->tv_nsec;
    return 0;
}

} // namespace

void watchCalls(const QByteArrayList &folders, WatchedCalls &calls)
{
    watch().folders = folders;
    watch().calls = &calls;
}

} // namespace quillon::soak

// What takes the place of the C library's functions for the program and for its libraries.
#pragma GCC visibility push(default)
extern "C" {

using namespace quillon::soak;

int open(const char *path, int flags, ...)
{
    std::va_list words;
    va_start(words, flags);
    const mode_t mode = modeOf(flags, words);
    va_end(words);
    return opened(AT_FDCWD, path, flags, mode);
}

int open64(const char *path, int flags, ...)
{
    std::va_list words;
    va_start(words, flags);
    const mode_t mode = modeOf(flags, words);
    va_end(words);
    return opened(AT_FDCWD, path, flags, mode);
}

ssize_t write(int file, const void *data, std::size_t size)
{
    if (!isWatched(file)) {
        return ::syscall(SYS_write, file, data, size);
    }
    return unwatched([&](WatchedCalls &calls) {
        return calls.write(
            file, QByteArrayView(static_cast<const char *>(data), static_cast<qsizetype>(size)));
    });
}

int fchmod(int file, mode_t mode) noexcept
{
    return isWatched(file) ? unwatched([&](WatchedCalls &calls) { return calls.setMode(file, mode); })
                           : static_cast<int>(::syscall(SYS_fchmod, file, mode));
}

int fsync(int file)
{
    const auto sync = [&] { return static_cast<int>(::syscall(SYS_fsync, file)); };
    if (isWatched(file)) {
        return unwatched([&](WatchedCalls &calls) { return calls.sync(file); });
    }
    return isWatchedNow() && isFolder(file)
        ? unwatched([&](WatchedCalls &calls) { return calls.other(sync); })
        : sync();
}

int linkat(int fromFolder, const char *from, int toFolder, const char *to, int flags) noexcept
{
    const QByteArray self = "/proc/self/fd/";
    if (isWatched(to) && QByteArray(from).startsWith(self)) {
        return unwatched([&](WatchedCalls &calls) {
            return calls.giveName(QByteArray(from).sliced(self.size()).toInt(), to);
        });
    }
    return static_cast<int>(::syscall(SYS_linkat, fromFolder, from, toFolder, to, flags));
}

int rename(const char *from, const char *to) noexcept
{
    return isWatched(to) ? unwatched([&](WatchedCalls &calls) { return calls.rename(from, to); })
                         : static_cast<int>(::syscall(SYS_rename, from, to));
}

int unlink(const char *path) noexcept
{
    return isWatched(path) ? unwatched([&](WatchedCalls &calls) { return calls.remove(path); })
                           : static_cast<int>(::syscall(SYS_unlink, path));
}

int mkdir(const char *path, mode_t mode) noexcept
{
    return isWatched(path) ? unwatched([&](WatchedCalls &calls) { return calls.makeDirectory(path, mode); })
                           : static_cast<int>(::syscall(SYS_mkdir, path, mode));
}

int close(int file)
{
    if (!isWatched(file)) {
        return static_cast<int>(::syscall(SYS_close, file));
    }
    watch().files.remove(file);
    return unwatched([&](WatchedCalls &calls) { return calls.close(file); });
}

int nanosleep(const timespec *time, timespec *left)
{
    return isWatchedNow() ? slept(time) : static_cast<int>(::syscall(SYS_nanosleep, time, left));
}

int clock_gettime(clockid_t clock, timespec *time) noexcept
{
    constexpr qint64 second = 1'000'000'000;
    const int result = static_cast<int>(::syscall(SYS_clock_gettime, clock, time));
    if (clock == CLOCK_REALTIME && result == 0) {
        const qint64 nanoseconds = time->tv_nsec + ahead;
        time->tv_sec += nanoseconds / second;
        time->tv_nsec = nanoseconds % second;
    }
    return result;
}
}
#pragma GCC visibility pop
