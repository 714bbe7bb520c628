#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <functional>
#include <sys/types.h>

namespace quillon::soak {

/// A program that is started whole.
struct Program
{
    QByteArrayList words; ///< its path and its arguments
    /// What stands in its environment, each as NAME=value. It is given the number of the pipe by which it
    /// tells of its work.
    std::function<QByteArrayList(int pipe)> environment;
};

/// A fork of this program that does some work, or another program, which tells of it through a pipe.
class Process
{
public:
    /// `tell` takes whole lines. The work must not return to its caller's frames: the process ends with it.
    using Tell = std::function<void(const QByteArray &line)>;
    explicit Process(const std::function<void(const Tell &tell)> &work);
    explicit Process(const Program &program);
    Process(const Process &) = delete;
    Process &operator=(const Process &) = delete;
    ~Process();

    /// The next lines that were told, waiting at most so long; none when there is nothing more.
    [[nodiscard]] QByteArray told(int milliseconds);
    /// Waits until it has ended by itself.
    void wait();
    /// Kills it, unless it has ended, and takes leave of it: the lines that were still told.
    QByteArray end();

    /// After its end: it was killed.
    [[nodiscard]] bool wasKilled() const { return m_killed; }
    /// After its end: it ended by itself, with its work done.
    [[nodiscard]] bool wasDone() const { return m_done; }
    /// After its end: how it came, in words.
    [[nodiscard]] QByteArray ending() const;

private:
    void start(const std::function<void(int pipe)> &child);

    pid_t m_id = -1;
    int m_pipe = -1;
    int m_status = 0;
    bool m_killed = false;
    bool m_done = false;
    QByteArray m_rest;
};

} // namespace quillon::soak
