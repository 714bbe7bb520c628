#pragma once

#include <csignal>
#include <functional>
#include <sys/prctl.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillon::test {

/// A process of its own that runs `work`, until it is killed or the test ends. For programs without windows.
class Child
{
public:
    explicit Child(const std::function<void()> &work)
        : m_id(::fork())
    {
        if (m_id == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            try {
                work();
            } catch (...) {
                ::_exit(1);
            }
            ::_exit(0);
        }
    }
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;
    ~Child() { kill(); }

    /// Kills it; true when it was still running.
    bool kill()
    {
        if (m_id <= 0) {
            return false;
        }
        ::kill(m_id, SIGKILL);
        int status = 0;
        ::waitpid(m_id, &status, 0);
        m_id = -1;
        return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    }

private:
    pid_t m_id;
};

} // namespace quillon::test
