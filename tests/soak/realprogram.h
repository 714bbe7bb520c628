#pragma once

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocalSocket>
#include <QProcess>
#include <QThread>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace quillon::soak {

/// What a program does first that is started beside the rounds: it ends with who started it, and hears no
/// Ctrl+C before.
inline void liveWithTheRound()
{
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
}

/// What the program is started with: without a screen, all its folders below the root, which are made.
inline QProcessEnvironment programEnvironment(const QString &root)
{
    for (const char *folder : {"/run", "/home", "/look"}) {
        QDir().mkpath(root + QLatin1StringView(folder));
    }
    const QString door = root + QStringLiteral("/run");
    QFile::setPermissions(door, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QUILLON_DIR"));
    environment.insert(QStringLiteral("HOME"), root + QStringLiteral("/home"));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), door);
    environment.insert(QStringLiteral("XDG_STATE_HOME"), root + QStringLiteral("/state"));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    return environment;
}
inline QStringList programArguments(const QString &root, const QString &directory)
{
    return {QStringLiteral("--directory"), directory, QStringLiteral("--settings"),
        root + QStringLiteral("/look")};
}

/// The program itself, started whole.
class RealProgram
{
public:
    RealProgram(const QString &root, const QString &directory)
        : m_door(root + QStringLiteral("/run"))
    {
        m_process.setProcessEnvironment(programEnvironment(root));
        m_process.setStandardOutputFile(QProcess::nullDevice());
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.setChildProcessModifier(liveWithTheRound);
        m_process.start(QStringLiteral(QUILLON_PROGRAM), programArguments(root, directory));
        m_process.waitForStarted(patience);
    }
    RealProgram(const RealProgram &) = delete;
    RealProgram &operator=(const RealProgram &) = delete;
    ~RealProgram() { kill(); }

    /// Kills it; false when it had ended by itself.
    bool kill()
    {
        const bool ran = isRunning();
        m_process.kill();
        m_process.waitForFinished(patience);
        return ran;
    }
    [[nodiscard]] bool isRunning()
    {
        return m_process.state() == QProcess::Running && !m_process.waitForFinished(0);
    }
    /// Waits until it answers at its door, as it does for a second start. It may be reading its files yet.
    [[nodiscard]] bool answers()
    {
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < patience && isRunning()) {
            const QStringList doors =
                QDir(m_door).entryList({QStringLiteral("quillon-*")}, QDir::System | QDir::Files);
            // Nobody is behind the doors that killed programs have left.
            for (const QString &door : doors) {
                QLocalSocket socket;
                socket.connectToServer(m_door + QLatin1Char('/') + door);
                if (socket.waitForConnected(patience) && socket.waitForReadyRead(patience)) {
                    return true;
                }
            }
            QThread::msleep(look);
        }
        return false;
    }

private:
    static constexpr int patience = 120'000; // milliseconds
    static constexpr int look = 5;

    QString m_door;
    QProcess m_process;
};

} // namespace quillon::soak
