#pragma once

#include "platform/filecalls.h"
#include "told.h"

#include <QCryptographicHash>
#include <QHash>

#include <cerrno>
#include <csignal>
#include <memory>
#include <unistd.h>

namespace quillon::soak {

/// The hash by which the content of a file is told.
inline QByteArray hashOf(QByteArrayView bytes)
{
    return QCryptographicHash::hash(bytes.toByteArray(), QCryptographicHash::Sha1).toHex();
}

/// The real file calls, telling what becomes of which file. One of them can fail, or kill the program.
class ToldCalls : public FileCalls
{
public:
    explicit ToldCalls(Teller &teller)
        : m_teller(teller)
    {
    }

    enum class Moment { Before, HalfWay, After };
    /// Kills the program at the `number`th call from now on, from 1.
    void killAt(int number, Moment moment)
    {
        m_left = number;
        m_moment = moment;
    }

    /// Lets the `number`th call from now on fail with that code; none when it is 0.
    void failAt(int number, int code)
    {
        m_failing = number;
        m_code = code;
        m_failed.clear();
        m_failedPath.clear();
        m_truncated = false;
    }
    /// The name of that call when it was reached, or nothing.
    [[nodiscard]] const QByteArray &failed() const { return m_failed; }
    /// What it was to remove, if it was to.
    [[nodiscard]] const QByteArray &failedPath() const { return m_failedPath; }
    /// True when since then a file was closed before all was in it that was to be written: what a write has
    /// not taken has to be given to the next one.
    [[nodiscard]] bool hasTruncated() const { return m_truncated; }
    /// Stands for a file system that knows no nameless files.
    void refuseNameless() { m_namesFiles = true; }

    /// Lets each write take at most this many bytes.
    void writeAtMost(qsizetype bytes) { m_most = bytes; }

    int mayWrite(const QByteArray &path) override
    {
        return at("mayWrite", [&] { return FileCalls::mayWrite(path); });
    }
    int openNameless(const QByteArray &directory, mode_t mode) override
    {
        if (m_namesFiles) {
            errno = EOPNOTSUPP;
            return -1;
        }
        return opened("openNameless", [&] { return FileCalls::openNameless(directory, mode); }, {});
    }
    int openNew(const QByteArray &path, mode_t mode) override
    {
        m_teller.naming(path);
        return opened(
            "openNew", [&] { return FileCalls::openNew(path, mode); }, path);
    }
    int openToAppend(const QByteArray &path, mode_t mode) override
    {
        m_teller.appending(path);
        return at("openToAppend", [&] { return FileCalls::openToAppend(path, mode); });
    }
    ssize_t write(int file, QByteArrayView bytes) override
    {
        if (m_left == 1 && m_moment == Moment::HalfWay) {
            FileCalls::write(file, bytes.first(bytes.size() / 2));
        }
        const QByteArrayView some = m_most > 0 && bytes.size() > m_most ? bytes.first(m_most) : bytes;
        m_truncated = m_truncated || (m_owed.contains(file) && m_owed.value(file) != bytes);
        const ssize_t written = at("write", [&] { return FileCalls::write(file, some); });
        if (written < bytes.size()) {
            m_owed.insert(file, bytes.sliced(qMax<ssize_t>(0, written)).toByteArray());
        } else {
            m_owed.remove(file);
        }
        if (m_open.contains(file) && written > 0) {
            m_open[file]->addData(some.first(written).toByteArray());
        }
        return written;
    }
    int setMode(int file, mode_t mode) override
    {
        return at("setMode", [&] { return FileCalls::setMode(file, mode); });
    }
    int sync(int file) override
    {
        return at("sync", [&] { return FileCalls::sync(file); });
    }
    int giveName(int file, const QByteArray &path) override
    {
        m_teller.naming(path);
        m_named.insert(path, m_open.value(file));
        return at("giveName", [&] { return FileCalls::giveName(file, path); });
    }
    int rename(const QByteArray &from, const QByteArray &to) override
    {
        const auto hash = m_named.take(from);
        if (hash) {
            m_teller.replacing(to, hash->result().toHex());
        }
        const int result = at("rename", [&] { return FileCalls::rename(from, to); });
        if (hash && result == 0) {
            m_teller.replaced(to);
        }
        return result;
    }
    int remove(const QByteArray &path) override
    {
        m_failedPath = m_failing == 1 ? path : m_failedPath;
        m_teller.replacing(path, {});
        const int result = at("remove", [&] { return FileCalls::remove(path); });
        if (result == 0 || errno == ENOENT) {
            m_teller.replaced(path);
        }
        return result;
    }
    int makeDirectory(const QByteArray &path, mode_t mode) override
    {
        return at("makeDirectory", [&] { return FileCalls::makeDirectory(path, mode); });
    }
    int makeDirectoryOfNewName(QByteArray &path) override
    {
        return at("makeDirectoryOfNewName", [&] { return FileCalls::makeDirectoryOfNewName(path); });
    }
    int removeDirectory(const QByteArray &path) override
    {
        m_failedPath = m_failing == 1 ? path : m_failedPath;
        return at("removeDirectory", [&] { return FileCalls::removeDirectory(path); });
    }
    int syncDirectory(const QByteArray &directory) override
    {
        return at("syncDirectory", [&] { return FileCalls::syncDirectory(directory); });
    }
    int close(int file) override
    {
        m_open.remove(file);
        m_truncated = m_owed.remove(file) || m_truncated;
        // A file is closed even when its close fails.
        const int result = FileCalls::close(file);
        return at("close", [&] { return result; });
    }

protected:
    /// Makes a call, unless it is the one that fails, or dies with it.
    template<typename Call>
    auto at(const char *name, const Call &call) -> decltype(call())
    {
        if (m_failing > 0 && --m_failing == 0) {
            m_failed = name;
            errno = m_code;
            return -1;
        }
        const bool last = m_left > 0 && --m_left == 0;
        if (last && m_moment != Moment::After) {
            ::kill(::getpid(), SIGKILL);
        }
        const auto result = call();
        if (last) {
            ::kill(::getpid(), SIGKILL);
        }
        return result;
    }

private:
    template<typename Call>
    int opened(const char *name, const Call &call, const QByteArray &path)
    {
        const int file = at(name, call);
        if (file >= 0) {
            m_open.insert(file, std::make_shared<QCryptographicHash>(QCryptographicHash::Sha1));
            if (!path.isEmpty()) {
                m_named.insert(path, m_open.value(file));
            }
        }
        return file;
    }

    Teller &m_teller;
    int m_left = 0;
    Moment m_moment = Moment::Before;
    int m_failing = 0;
    int m_code = 0;
    QByteArray m_failed;
    QByteArray m_failedPath;
    bool m_truncated = false;
    qsizetype m_most = 0;
    bool m_namesFiles = false;
    QHash<int, std::shared_ptr<QCryptographicHash>> m_open;
    QHash<int, QByteArray> m_owed; ///< what the writes of a file have not taken yet
    QHash<QByteArray, std::shared_ptr<QCryptographicHash>> m_named;
};

} // namespace quillon::soak
