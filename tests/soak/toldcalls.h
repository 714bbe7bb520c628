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
        m_failed = false;
    }
    /// True when that call was reached.
    [[nodiscard]] bool hasFailed() const { return m_failed; }
    /// Lets each write take at most this many bytes.
    void writeAtMost(qsizetype bytes) { m_most = bytes; }

    int openNameless(const QByteArray &directory, mode_t mode) override
    {
        return opened([&] { return FileCalls::openNameless(directory, mode); }, {});
    }
    int openNew(const QByteArray &path, mode_t mode) override
    {
        m_teller.naming(path);
        return opened([&] { return FileCalls::openNew(path, mode); }, path);
    }
    int openToAppend(const QByteArray &path, mode_t mode) override
    {
        m_teller.appending(path);
        return at([&] { return FileCalls::openToAppend(path, mode); });
    }
    ssize_t write(int file, QByteArrayView bytes) override
    {
        if (m_left == 1 && m_moment == Moment::HalfWay) {
            FileCalls::write(file, bytes.first(bytes.size() / 2));
        }
        const QByteArrayView some = m_most > 0 && bytes.size() > m_most ? bytes.first(m_most) : bytes;
        const ssize_t written = at([&] { return FileCalls::write(file, some); });
        if (m_open.contains(file) && written > 0) {
            m_open[file]->addData(some.first(written).toByteArray());
        }
        return written;
    }
    int setMode(int file, mode_t mode) override
    {
        return at([&] { return FileCalls::setMode(file, mode); });
    }
    int sync(int file) override
    {
        return at([&] { return FileCalls::sync(file); });
    }
    int giveName(int file, const QByteArray &path) override
    {
        m_teller.naming(path);
        m_named.insert(path, m_open.value(file));
        return at([&] { return FileCalls::giveName(file, path); });
    }
    int rename(const QByteArray &from, const QByteArray &to) override
    {
        const auto hash = m_named.take(from);
        if (hash) {
            m_teller.replacing(to, hash->result().toHex());
        }
        const int result = at([&] { return FileCalls::rename(from, to); });
        if (hash && result == 0) {
            m_teller.replaced(to);
        }
        return result;
    }
    int remove(const QByteArray &path) override
    {
        m_teller.replacing(path, {});
        const int result = at([&] { return FileCalls::remove(path); });
        if (result == 0 || errno == ENOENT) {
            m_teller.replaced(path);
        }
        return result;
    }
    int makeDirectory(const QByteArray &path, mode_t mode) override
    {
        return at([&] { return FileCalls::makeDirectory(path, mode); });
    }
    int syncDirectory(const QByteArray &directory) override
    {
        return at([&] { return FileCalls::syncDirectory(directory); });
    }
    int close(int file) override
    {
        m_open.remove(file);
        // A file is closed even when its close fails.
        const int result = FileCalls::close(file);
        return at([&] { return result; });
    }

private:
    template<typename Call>
    auto at(const Call &call) -> decltype(call())
    {
        if (m_failing > 0 && --m_failing == 0) {
            m_failed = true;
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
    template<typename Call>
    int opened(const Call &call, const QByteArray &path)
    {
        const int file = at(call);
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
    bool m_failed = false;
    qsizetype m_most = 0;
    QHash<int, std::shared_ptr<QCryptographicHash>> m_open;
    QHash<QByteArray, std::shared_ptr<QCryptographicHash>> m_named;
};

} // namespace quillon::soak
