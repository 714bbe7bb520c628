#include "process.h"

#include <QString>

#include <cerrno>
#include <csignal>
#include <exception>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace quillon::soak {

namespace {

void writeLine(int pipe, const QByteArray &line)
{
    // At most PIPE_BUF bytes: a kill does not cut it.
    while (::write(pipe, line.constData(), static_cast<std::size_t>(line.size())) < 0 && errno == EINTR) { }
}

[[noreturn]] void become(const Program &program, int pipe)
{
    const auto pointers = [](QByteArrayList &texts) {
        std::vector<char *> all;
        for (QByteArray &text : texts) {
            all.push_back(text.data());
        }
        all.push_back(nullptr);
        return all;
    };
    const int nowhere = ::open("/dev/null", O_RDWR);
    ::dup2(nowhere, STDOUT_FILENO);
    ::dup2(nowhere, STDERR_FILENO);
    QByteArrayList words = program.words;
    QByteArrayList environment = program.environment(pipe);
    ::execve(words.constFirst().constData(), pointers(words).data(), pointers(environment).data());
    writeLine(pipe, "E\tthe program cannot be started\n");
    ::_exit(3);
}

} // namespace

Process::Process(const std::function<void(const Tell &tell)> &work)
{
    start([&](int pipe) {
        try {
            work([pipe](const QByteArray &line) { writeLine(pipe, line); });
        } catch (const std::exception &error) {
            writeLine(pipe, QByteArray("E\t") + error.what() + '\n');
            ::_exit(3);
        }
    });
}

Process::Process(const Program &program)
{
    start([&](int pipe) { become(program, pipe); });
}

void Process::start(const std::function<void(int pipe)> &child)
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
        child(ends[1]);
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
