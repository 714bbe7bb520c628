#include "live/redseasource.h"

#include "live/jsonevents.h"

#include <csignal>
#include <unistd.h>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

/// Milliseconds that a command has to end.
constexpr int patience = 2'000;

QString endOf(const QProcess &process)
{
    if (process.error() == QProcess::FailedToStart) {
        return process.errorString();
    }
    if (process.exitStatus() == QProcess::CrashExit) {
        return u"the command was ended by signal %1"_s.arg(process.exitCode());
    }
    return u"the command has ended with exit code %1"_s.arg(process.exitCode());
}

} // namespace

RedseaSource::RedseaSource(QString command, QObject *parent)
    : ReceiverSource(parent)
    , m_command(std::move(command))
{
}

RedseaSource::~RedseaSource()
{
    RedseaSource::hangUp();
    // What did not go at once is killed, which takes no time worth speaking of.
    for (auto *const process : findChildren<QProcess *>()) {
        if (const auto group = static_cast<pid_t>(process->processId()); group > 0) {
            ::kill(-group, SIGKILL);
            process->waitForFinished();
        }
    }
}

void RedseaSource::attempt()
{
    m_lines.clear();
    auto *const process = new QProcess(this);
    m_process = process;
    process->setStandardErrorFile(QProcess::nullDevice());
    process->setStandardInputFile(QProcess::nullDevice());
    // A group of its own, so that a whole pipeline can be ended.
    process->setChildProcessModifier([] { ::setpgid(0, 0); });
    connect(process, &QProcess::readyReadStandardOutput, this, &RedseaSource::read);
    connect(process, &QProcess::finished, this, [this, process] {
        killGroup();
        lost(endOf(*process));
    });
    connect(process, &QProcess::errorOccurred, this, [this, process](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            lost(endOf(*process));
        }
    });
    process->start(u"/bin/sh"_s, {u"-c"_s, m_command});
    m_group = process->processId();
}

void RedseaSource::hangUp()
{
    if (m_process == nullptr) {
        return;
    }
    QProcess *const process = std::exchange(m_process, nullptr);
    m_group = 0;
    process->disconnect(this);
    const auto group = static_cast<pid_t>(process->processId());
    if (group <= 0) {
        process->deleteLater();
        return;
    }
    ::kill(-group, SIGTERM);
    // Without the shell no one is left who would end the others.
    connect(process, &QProcess::finished, process, [process, group] {
        ::kill(-group, SIGKILL);
        process->deleteLater();
    });
    QTimer::singleShot(patience, process, [group] { ::kill(-group, SIGKILL); });
}

// The shell has gone: what it left running in the background goes, too.
void RedseaSource::killGroup()
{
    if (m_group > 0) {
        ::kill(static_cast<pid_t>(-std::exchange(m_group, 0)), SIGKILL);
    }
}

void RedseaSource::read()
{
    listening();
    const QByteArray bytes = m_process->readAllStandardOutput();
    m_lines.feed(bytes, [this](QByteArrayView line) { tell(redseaEvents(line)); });
}

} // namespace quillon
