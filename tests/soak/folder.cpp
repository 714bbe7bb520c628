#include "core/logbooklines.h"
#include "kind.h"
#include "live/receiversettings.h"
#include "platform/files.h"
#include "put.h"
#include "realprogram.h"
#include "session.h"
#include "support/testfiles.h"

#include <QFileInfo>
#include <QHostAddress>
#include <QRandomGenerator>
#include <QSet>
#include <QTcpServer>

#include <algorithm>
#include <fcntl.h>
#include <iterator>
#include <sys/stat.h>

namespace quillon::soak {

using namespace Qt::StringLiterals;

namespace {

constexpr int receptions = 50;
constexpr int swapsOfARound = 40;

// Files that another program may put in the place of ours, and what is in them then.
struct Swap
{
    QString path;
    QByteArray bytes;
};

// What it makes of a file: a strange one, a part of it, one with more, another one of the same size.
QByteArray changed(QByteArray bytes, const QByteArray &more, QRandomGenerator &random)
{
    switch (random.bounded(4)) {
    case 0:
        return more;
    case 1:
        return bytes.first(bytes.lastIndexOf('\n', bytes.size() / 2) + 1);
    case 2:
        return bytes + more;
    default:
        // Where a letter is as good as another one.
        return bytes.replace("87.6", "87.9").replace("43.26", "43.29").replace("DL", "DK");
    }
}

// Puts it there as programs do that keep folders alike.
void swapIn(const Swap &swap, QRandomGenerator &random)
{
    if (random.bounded(2) == 0) {
        put(swap.path + u".sync"_s, swap.bytes);
        QFile::remove(swap.path);
        QFile::rename(swap.path + u".sync"_s, swap.path);
    } else {
        // In place, with the time of the file as it was.
        struct stat old
        {
        };
        ::stat(swap.path.toLocal8Bit().constData(), &old);
        put(swap.path, swap.bytes);
        const timespec times[2] {old.st_atim, old.st_mtim};
        ::utimensat(AT_FDCWD, swap.path.toLocal8Bit().constData(), times, 0);
    }
}

// Somebody works with the program while another one swaps the files under it.
class SwappedFolder
{
public:
    SwappedFolder(const Round &round, Outcome &outcome)
        : m_folder(round.root + u"/log"_s)
        , m_outcome(outcome)
        , m_random(round.seed)
        , m_teller([this](const QByteArray &line) { take(line); })
        , m_session(round.root, FileCalls::real(), m_teller, receptions, round.seed)
    {
        m_session.start();
    }

    void run()
    {
        for (int i = 0; i < swapsOfARound && m_outcome.problem.isEmpty(); ++i) {
            const Swap swap = drawn(i);
            swapIn(swap, m_random);
            const auto &commands = changingCommands();
            const User::Command &command =
                commands.at(static_cast<std::size_t>(m_random.bounded(static_cast<int>(commands.size()))));
            m_session.run(command);
            ++m_outcome.cases;
            look(swap);
            if (!m_outcome.problem.isEmpty()) {
                m_outcome.problem += u" (swap %1 of %2, %3)"_s.arg(i + 1).arg(
                    QFileInfo(swap.path).fileName(), QString::fromLatin1(command.name));
            }
            removeCopies();
        }
        if (m_outcome.problem.isEmpty() && m_kept == 0) {
            m_outcome.lose(u"no swapped file was ever written over"_s);
        }
        if (m_outcome.problem.isEmpty()) {
            // Whatever was swapped last, an Add writes over it.
            m_session.add();
            m_strangeLog.clear();
            lookAtLog();
        }
    }

private:
    // Of the commands those that write what is swapped.
    static const std::vector<User::Command> &changingCommands()
    {
        static const std::vector<User::Command> some = [] {
            const QByteArrayList names {"Add", "Update", "Delete", "Undo and Redo", "RDS Spy import",
                "file import", "distances", "setup"};
            std::vector<User::Command> found;
            std::ranges::copy_if(User::commands(), std::back_inserter(found),
                [&](const User::Command &command) { return names.contains(command.name); });
            if (std::ssize(found) != names.size()) {
                qFatal("a command has another name");
            }
            return found;
        }();
        return some;
    }
    void take(const QByteArray &line)
    {
        const QByteArrayList words = line.trimmed().split('\t');
        if (line.startsWith('+') || line.startsWith('-')) {
            m_doing += {line.front(), words.at(1)};
        } else if (line.startsWith('D')) {
            for (const auto &[kind, name] : std::exchange(m_doing, {})) {
                kind == '+' ? (void)m_added.insert(name) : (void)m_added.remove(name);
            }
        } else if (line.startsWith('E')) {
            m_outcome.lose(u"an error: "_s + QString::fromUtf8(words.value(1)));
        }
    }
    [[nodiscard]] Swap drawn(int number)
    {
        const QString log = m_folder + u"/RDSLog.log"_s;
        const QByteArray strange = "S" + nameOf(number).toLatin1().sliced(1);
        switch (m_random.bounded(5)) {
        case 0: {
            const QString path = m_folder + u"/tx.lst"_s;
            return {path, changed(readFile(path), strange + "|D|50.1|8.6||\r\n", m_random)};
        }
        case 1: {
            // A setting that the program does not know; the others stay, or it would go to another log.
            const QString path = m_folder + u"/LOGBOOK.INI"_s;
            m_strangeSetting = "SYNC=" + strange + "\r\n";
            return {path, readFile(path) + m_strangeSetting};
        }
        default:
            return {log,
                changed(readFile(log), test::logLine("D382", dateOf(number).toLatin1(), "89.0", strange),
                    m_random)};
        }
    }
    void look(const Swap &swap)
    {
        const QByteArray now = readFile(m_folder + u"/RDSLog.log"_s);
        const bool isWrittenOver = readFile(swap.path) != swap.bytes;
        const bool isSettings = swap.path.endsWith(u".INI");
        if (isWrittenOver && !isSettings) {
            ++m_kept;
            if (!isKept(swap.bytes)) {
                m_outcome.lose(u"what another program has put there is not kept"_s);
            }
        }
        if (!readFile(m_folder + u"/LOGBOOK.INI"_s).contains(m_strangeSetting)) {
            m_outcome.lose(u"a setting of another program is lost"_s);
        }
        if (swap.path.endsWith(u"RDSLog.log")) {
            m_strangeLog = swap.bytes;
        }
        if (now == m_strangeLog) {
            // No command has written over it yet.
            return;
        }
        lookAtLog();
    }
    // It is what the program has in memory, and has all that was confirmed.
    void lookAtLog()
    {
        const QByteArray now = readFile(m_folder + u"/RDSLog.log"_s);
        if (now != logbookBytes(m_session.form().log(), Regional::fromEnvironment().codePage)) {
            m_outcome.lose(u"the file is not the log"_s);
        }
        for (const QByteArray &name : std::as_const(m_added)) {
            if (!now.contains(QByteArray('|' + name + '|'))) {
                m_outcome.lose(u"the reception %1 is lost"_s.arg(QString::fromLatin1(name)));
            }
        }
    }
    [[nodiscard]] QStringList copies() const { return QDir(m_folder).entryList({u"*.bak"_s}, QDir::Files); }
    [[nodiscard]] bool isKept(const QByteArray &bytes) const
    {
        return std::ranges::any_of(
            copies(), [&](const QString &name) { return readFile(m_folder + u'/' + name) == bytes; });
    }
    void removeCopies() const
    {
        const QStringList names = copies();
        for (const QString &name : names) {
            QFile::remove(m_folder + u'/' + name);
        }
    }

    QString m_folder;
    Outcome &m_outcome;
    QRandomGenerator m_random;
    QSet<QByteArray> m_added;
    QList<std::pair<char, QByteArray>> m_doing;
    QByteArray m_strangeSetting;
    QByteArray m_strangeLog;
    int m_kept = 0;
    Teller m_teller;
    Session m_session;
};

// A receiver that says nothing: whoever works on the folder comes to it.
class Visitors
{
public:
    explicit Visitors(const QString &root)
    {
        if (!m_server.listen(QHostAddress::LocalHost)) {
            qFatal("no port of loopback is free");
        }
        ReceiverSettings settings;
        settings.last = {SourceKind::Xdrd, u"127.0.0.1:%1"_s.arg(m_server.serverPort()), {}, false};
        settings.connectAtStart = true;
        writeReceiverSettings(root + u"/look"_s, settings);
    }
    // Waits for the next one; false when none has come in that time.
    [[nodiscard]] bool comes(int milliseconds)
    {
        if (!m_server.hasPendingConnections() && !m_server.waitForNewConnection(milliseconds)) {
            return false;
        }
        m_server.nextPendingConnection();
        return true;
    }

private:
    QTcpServer m_server;
};

// A second start on a folder does nothing, whatever becomes of the first; a third one works.
void startTwice(const Round &round, Outcome &outcome)
{
    constexpr int patience = 120'000;
    constexpr int longEnoughMs = 1'000;
    constexpr quint32 mostMs = 1'000;
    QRandomGenerator random(round.seed);
    const QString folder = round.root + u"/log"_s;
    Visitors visitors(round.root);
    RealProgram first(round.root, folder);
    if (!first.answers() || !visitors.comes(patience)) {
        outcome.crash(u"the program does not start"_s);
        return;
    }
    const QByteArray log = readFile(folder + u"/RDSLog.log"_s);
    const QStringList names = QDir(folder).entryList(QDir::Files | QDir::Hidden);
    RealProgram second(round.root, folder);
    QThread::msleep(random.bounded(mostMs));
    if (!first.isRunning() || !second.isRunning()) {
        outcome.crash(u"one of two programs has ended"_s);
    }
    if (visitors.comes(longEnoughMs)) {
        outcome.lose(u"a second program works on the folder of the first"_s);
    }
    const bool firstDiesFirst = random.bounded(2) == 0;
    (firstDiesFirst ? first : second).kill();
    if (visitors.comes(random.bounded(longEnoughMs))) {
        outcome.lose(u"a program works on a folder that was in use"_s);
    }
    (firstDiesFirst ? second : first).kill();
    if (readFile(folder + u"/RDSLog.log"_s) != log
        || QDir(folder).entryList(QDir::Files | QDir::Hidden) != names) {
        outcome.lose(u"two programs have changed the folder"_s);
    }
    RealProgram third(round.root, folder);
    if (!third.answers() || !visitors.comes(patience)) {
        outcome.crash(u"after two programs were killed, a third one does not work"_s);
    }
    ++outcome.cases;
}

} // namespace

Outcome folderRound(const Round &round)
{
    layOut(round.root, receptions, 1);
    Outcome outcome = outcomeOf([&](Outcome &swaps) { SwappedFolder(round, swaps).run(); });
    if (outcome.problem.isEmpty()) {
        startTwice(round, outcome);
    }
    return outcome;
}

} // namespace quillon::soak
