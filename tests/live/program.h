#pragma once

#include <QProcess>
#include <QTcpServer>

namespace quillon::test {

/// A program of the system that runs as long as this lives, its output thrown away.
class Program
{
public:
    Program(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment)
    {
        m_process.setProcessEnvironment(environment);
        m_process.setStandardOutputFile(QProcess::nullDevice());
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(program, arguments);
    }
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;
    ~Program()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    /// False when it could not be started: it is not installed.
    [[nodiscard]] bool started() { return m_process.waitForStarted(); }
    [[nodiscard]] bool isRunning() const { return m_process.state() == QProcess::Running; }

private:
    QProcess m_process;
};

/// A port of loopback that is free now.
[[nodiscard]] inline quint16 freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

} // namespace quillon::test
