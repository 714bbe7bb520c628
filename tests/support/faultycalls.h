#pragma once

#include "platform/filecalls.h"

#include <QByteArray>

#include <cerrno>

namespace quillon::test {

/// File calls of which one fails.
class FaultyCalls : public FileCalls
{
public:
    /// The `failing`th call (from 1) fails with `code`; none does when it is 0.
    explicit FaultyCalls(int failing, int code = EIO)
        : m_failing(failing)
        , m_code(code)
    {
    }

    /// Lets each write take at most this many bytes.
    void writeAtMost(qsizetype bytes) { m_most = bytes; }
    /// Stands for a file system that knows no nameless files, and says so with `code`.
    void refuseNameless(int code) { m_namelessCode = code; }

    /// The call of this number, counted from the first of all, fails from now on.
    void failAt(int failing) { m_failing = failing; }
    /// From now on no call fails.
    void heal() { m_failing = 0; }

    [[nodiscard]] int count() const { return m_count; }
    /// True when the call that was to fail was reached.
    [[nodiscard]] bool failed() const { return m_failed; }
    /// True when a file was renamed to where it belongs.
    [[nodiscard]] bool renamed() const { return m_renamed; }
    /// Files that are open and were not closed.
    [[nodiscard]] int open() const { return m_open; }

    int mayWrite(const QByteArray &path) override { return fails() ? -1 : FileCalls::mayWrite(path); }
    int openNameless(const QByteArray &directory, mode_t mode) override
    {
        if (fails()) {
            return -1;
        }
        if (m_namelessCode != 0) {
            errno = m_namelessCode;
            return -1;
        }
        return opened(FileCalls::openNameless(directory, mode));
    }
    int openNew(const QByteArray &path, mode_t mode) override
    {
        return fails() ? -1 : opened(FileCalls::openNew(path, mode));
    }
    int openToAppend(const QByteArray &path, mode_t mode) override
    {
        return fails() ? -1 : opened(FileCalls::openToAppend(path, mode));
    }
    ssize_t write(int file, QByteArrayView bytes) override
    {
        const QByteArrayView some = m_most > 0 && bytes.size() > m_most ? bytes.first(m_most) : bytes;
        return fails() ? -1 : FileCalls::write(file, some);
    }
    int setMode(int file, mode_t mode) override { return fails() ? -1 : FileCalls::setMode(file, mode); }
    int sync(int file) override { return fails() ? -1 : FileCalls::sync(file); }
    int giveName(int file, const QByteArray &path) override
    {
        return fails() ? -1 : FileCalls::giveName(file, path);
    }
    int rename(const QByteArray &from, const QByteArray &to) override
    {
        const int result = fails() ? -1 : FileCalls::rename(from, to);
        m_renamed = m_renamed || result == 0;
        return result;
    }
    int makeDirectory(const QByteArray &path, mode_t mode) override
    {
        return fails() ? -1 : FileCalls::makeDirectory(path, mode);
    }
    int makeDirectoryOfNewName(QByteArray &path) override
    {
        return fails() ? -1 : FileCalls::makeDirectoryOfNewName(path);
    }
    int removeDirectory(const QByteArray &path) override
    {
        return fails() ? -1 : FileCalls::removeDirectory(path);
    }
    int syncDirectory(const QByteArray &directory) override
    {
        return fails() ? -1 : FileCalls::syncDirectory(directory);
    }
    // A file is closed even when its close fails.
    int close(int file) override
    {
        --m_open;
        const int result = FileCalls::close(file);
        return fails() ? -1 : result;
    }

protected:
    /// Counts as a call, fails as one, and does nothing.
    bool fails()
    {
        if (++m_count != m_failing) {
            return false;
        }
        m_failed = true;
        errno = m_code;
        return true;
    }

private:
    int opened(int file)
    {
        m_open += file >= 0 ? 1 : 0;
        return file;
    }

    int m_failing;
    int m_code;
    int m_namelessCode = 0;
    qsizetype m_most = 0;
    int m_count = 0;
    int m_open = 0;
    bool m_failed = false;
    bool m_renamed = false;
};

} // namespace quillon::test
