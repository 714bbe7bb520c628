#include "kind.h"
#include "live/receiversettings.h"
#include "platform/files.h"
#include "realprogram.h"
#include "session.h"

#include <QRandomGenerator>

#include <unistd.h>

namespace quillon::soak {

using namespace Qt::StringLiterals;

namespace {

constexpr int receptions = 100;
constexpr int killsOfARound = 6;
constexpr quint32 longestStartUs = 600'000;
constexpr quint32 longestWorkUs = 300'000;
constexpr int piecesOfALine = 13;

// A tuner that walks through stations, which the program logs by itself.
class Receiver
{
public:
    explicit Receiver(const QString &root)
    {
        QByteArray stations;
        constexpr int count = 200;
        for (int i = 0; i < count; ++i) {
            stations += QByteArray::number(87.6 + (i % 100) * 0.2, 'f', 1) + ';'
                + QByteArray::number(0xE200 + i, 16).toUpper() + ';' + nameOf(i).toLatin1() + ";;;3;E2\n";
        }
        writeFile(root + u"/stations.txt"_s, stations);
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.setChildProcessModifier(liveWithTheRound);
        m_process.start(QStringLiteral(QUILLON_RECEIVER),
            {u"--stations"_s, root + u"/stations.txt"_s, u"--speed"_s, u"20"_s});
        if (!m_process.waitForReadyRead(patience)) {
            qFatal("the receiver's stand-in does not start");
        }
        ReceiverSettings settings;
        settings.last = {SourceKind::Xdrd, QString::fromLatin1(m_process.readLine().trimmed()), {}, false};
        settings.connectAtStart = true;
        settings.autoLog = {true, 0, 0, 0, {}};
        writeReceiverSettings(root + u"/look"_s, settings);
    }
    Receiver(const Receiver &) = delete;
    Receiver &operator=(const Receiver &) = delete;
    ~Receiver()
    {
        m_process.kill();
        m_process.waitForFinished(patience);
    }

private:
    QProcess m_process;
};

QByteArray logIn(const QString &root)
{
    try {
        return readFile(root + u"/log/RDSLog.log"_s);
    } catch (const RuntimeError &) {
        return {};
    }
}

// What is wrong with the log: what was seen in it before is there, and every line is one.
QString logProblem(const QByteArray &seen, const QByteArray &now)
{
    if (!now.startsWith(seen)) {
        return u"what was in the log is not there any more"_s;
    }
    const QByteArrayList lines = now.split('\n');
    for (const QByteArray &line : lines) {
        if (!line.isEmpty() && (!line.endsWith('\r') || line.split('|').size() != piecesOfALine)) {
            return u"a line of the log is none: "_s + QString::fromLatin1(line);
        }
    }
    return now.isEmpty() || now.endsWith('\n') ? QString() : u"the log ends within a line"_s;
}

// What is in the folder that is neither one of these files nor on the way to be one.
QString surplus(const QString &folder, const QStringList &known)
{
    const QStringList names = QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        const bool onItsWay =
            name.startsWith(u'.') && name.endsWith(u".new") && known.contains(name.sliced(1).chopped(4));
        if (!onItsWay && !known.contains(name)) {
            return name;
        }
    }
    return {};
}

// A start on a folder that is not there is killed; the next one makes it whole.
void killAFirstStart(
    const QString &root, QRandomGenerator &random, const QStringList &known, Outcome &outcome)
{
    const QString folder = root + u"/first/quillon"_s;
    {
        RealProgram program(root, folder);
        ::usleep(random.bounded(longestStartUs / 2));
        if (!program.kill()) {
            outcome.crash(u"the program ended by itself at its first start"_s);
        }
    }
    const auto look = [&] {
        const QStringList names = QDir(folder).entryList(QDir::Files);
        const auto supplied = QDir(QStringLiteral(QUILLON_SUPPLIED)).entryList(QDir::Files);
        for (const QString &name : supplied) {
            if (!names.contains(name)) {
                outcome.lose(u"the new folder lacks "_s + name);
            }
        }
    };
    if (QDir(folder).exists()) {
        look();
    }
    RealProgram next(root, folder);
    if (!next.answers()) {
        outcome.crash(u"after a first start that was killed, the next one does not work"_s);
    } else {
        look();
    }
    if (const QString name = surplus(folder, known); !name.isEmpty()) {
        outcome.lose(u"the new folder also holds "_s + name);
    }
    if (const QString name = surplus(root + u"/first"_s, {u"quillon"_s}); !name.isEmpty()) {
        outcome.lose(u"beside the new folder is left "_s + name);
    }
    next.kill();
    QDir(root + u"/first"_s).removeRecursively();
}

void killAtWork(const QString &root, QRandomGenerator &random, const QStringList &known, Outcome &outcome)
{
    QByteArray seen = logIn(root);
    const auto before = seen.size();
    RealProgram program(root, root + u"/log"_s);
    if (!program.answers()) {
        outcome.crash(u"the program does not start on what a kill has left"_s);
        return;
    }
    QElapsedTimer timer;
    timer.start();
    // It has been at work, and is now.
    while (logIn(root).size() == before && timer.elapsed() < patience && program.isRunning()) {
        QThread::msleep(2);
    }
    ::usleep(random.bounded(longestWorkUs));
    seen = logIn(root);
    if (!program.kill()) {
        outcome.crash(u"the program ended by itself"_s);
    }
    const QByteArray now = logIn(root);
    if (now.size() == before) {
        outcome.lose(u"nothing was logged"_s);
    }
    if (const QString problem = logProblem(seen, now); !problem.isEmpty()) {
        outcome.lose(problem);
    }
    if (const QString name = surplus(root + u"/log"_s, known); !name.isEmpty()) {
        outcome.lose(u"the folder also holds "_s + name);
    }
}

void killAtStart(const QString &root, QRandomGenerator &random, Outcome &outcome)
{
    const QByteArray seen = logIn(root);
    RealProgram program(root, root + u"/log"_s);
    ::usleep(random.bounded(longestStartUs));
    if (!program.kill()) {
        outcome.crash(u"the program ended by itself at its start"_s);
    }
    if (const QString problem = logProblem(seen, logIn(root)); !problem.isEmpty()) {
        outcome.lose(problem);
    }
}

} // namespace

Outcome programRound(const Round &round)
{
    Outcome outcome;
    QRandomGenerator random(round.seed);
    layOut(round.root, receptions, 1);
    const QStringList known =
        QDir(round.root + u"/log"_s).entryList(QDir::Files) + QStringList {u"RDSLog.log"_s, u"LOGBOOK.INI"_s};
    const Receiver receiver(round.root);
    for (int i = 0; i < killsOfARound && outcome.problem.isEmpty(); ++i) {
        if (i % 3 == 0) {
            killAFirstStart(round.root, random, known, outcome);
        } else if (i % 3 == 1) {
            killAtStart(round.root, random, outcome);
        } else {
            killAtWork(round.root, random, known, outcome);
        }
        ++outcome.cases;
    }
    return outcome;
}

} // namespace quillon::soak
