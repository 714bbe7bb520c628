#include "process.h"

#include <QString>

#include <cerrno>
#include <csignal>
#include <exception>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillon::soak {

namespace {

void writeLine(int pipe, const QByteArray &line)
{
    // At most PIPE_BUF bytes: a kill does not cut it.
    while (::write(pipe, line.constData(), static_cast<std::size_t>(line.size())) < 0 && errno == EINTR) { }
}

} // namespace

Process::Process(const std::function<void(const Tell &tell)> &work)
{
    int ends[2];
    if (::pipe(ends) != 0) {
        qFatal("no pipe");
    }
    m_id = ::fork();
    if (m_id == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        // Ctrl+C ends the run with its round, not the round.
        std::signal(SIGINT, SIG_IGN);
        std::signal(SIGTERM, SIG_DFL);
        ::close(ends[0]);
        const rlimit noCore {0, 0};
        ::setrlimit(RLIMIT_CORE, &noCore);
        try {
            work([pipe = ends[1]](const QByteArray &line) { writeLine(pipe, line); });
        } catch (const std::exception &error) {
            writeLine(ends[1], QByteArray("E\t") + error.what() + '\n');
            ::_exit(3);
        }
        ::_exit(0);
    }
    ::close(ends[1]);
    m_pipe = ends[0];
}

Process::~Process()
{
    if (m_id > 0) {
        end();
    }
    ::close(m_pipe);
}

QByteArray Process::told(int milliseconds)
{
    pollfd waited {m_pipe, POLLIN, 0};
    if (::poll(&waited, 1, milliseconds) <= 0) {
        return {};
    }
    char buffer[65536];
    const ssize_t size = ::read(m_pipe, buffer, sizeof buffer);
    if (size <= 0) {
        return {};
    }
    m_rest.append(buffer, size);
    const auto whole = m_rest.lastIndexOf('\n') + 1;
    QByteArray lines = m_rest.first(whole);
    m_rest.remove(0, whole);
    return lines;
}

void Process::wait()
{
    ::waitpid(m_id, &m_status, 0);
    m_id = -1;
    m_killed = WIFSIGNALED(m_status) && WTERMSIG(m_status) == SIGKILL;
    m_done = WIFEXITED(m_status) && WEXITSTATUS(m_status) == 0;
}

QByteArray Process::end()
{
    ::kill(m_id, SIGKILL);
    wait();
    QByteArray all;
    for (QByteArray some = told(0); !some.isEmpty(); some = told(0)) {
        all += some;
    }
    return all;
}

QByteArray Process::ending() const
{
    if (WIFSIGNALED(m_status)) {
        return "signal " + QByteArray::number(WTERMSIG(m_status));
    }
    return "exit code " + QByteArray::number(WEXITSTATUS(m_status));
}

} // namespace quillon::soak
