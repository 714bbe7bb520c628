#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <sys/types.h>

namespace quillon {

/// Every system call by which the program changes what is on the disk, in one place so that a test can let
/// any of them fail.
/// Each answers as the call it is named after: a negative result is a failure and errno says which.
class FileCalls
{
public:
    FileCalls() = default;
    FileCalls(const FileCalls &) = delete;
    FileCalls &operator=(const FileCalls &) = delete;
    virtual ~FileCalls() = default;

    /// Whether the file of this name may be written: 0 when it may.
    virtual int mayWrite(const QByteArray &path);
    /// An open file in `directory` that has no name yet.
    virtual int openNameless(const QByteArray &directory, mode_t mode);
    /// A new file of this name; fails when there is one.
    virtual int openNew(const QByteArray &path, mode_t mode);
    /// The file of this name, open for adding to its end; made when there is none.
    virtual int openToAppend(const QByteArray &path, mode_t mode);
    virtual ssize_t write(int file, QByteArrayView bytes);
    virtual int setMode(int file, mode_t mode);
    virtual int sync(int file);
    /// Gives a nameless file its name.
    virtual int giveName(int file, const QByteArray &path);
    virtual int rename(const QByteArray &from, const QByteArray &to);
    virtual int remove(const QByteArray &path);
    virtual int makeDirectory(const QByteArray &path, mode_t mode);
    /// A directory for the user alone; the letters XXXXXX at the end of the path become those of a new name.
    virtual int makeDirectoryOfNewName(QByteArray &path);
    /// Removes an empty directory.
    virtual int removeDirectory(const QByteArray &path);
    virtual int syncDirectory(const QByteArray &directory);
    virtual int close(int file);

    /// The calls of the operating system themselves.
    [[nodiscard]] static FileCalls &real();
};

} // namespace quillon
