#include "core/logbooklines.h"
#include "kind.h"
#include "platform/files.h"
#include "put.h"
#include "realprogram.h"
#include "session.h"
#include "support/testfiles.h"

#include <QRandomGenerator>
#include <QSet>

#include <fcntl.h>
#include <sys/stat.h>

namespace quillon::soak {

using namespace Qt::StringLiterals;

namespace {

constexpr int receptions = 50;
constexpr int swapsOfARound = 40;

// Swaps the log under the program as programs do that keep folders alike.
QByteArray swapLog(const QString &path, int number, QRandomGenerator &random)
{
    QByteArray bytes = readFile(path);
    switch (random.bounded(4)) {
    case 0: // another device's log
        bytes = test::logLine(
            "D382", dateOf(number).toLatin1(), "89.0", "S" + nameOf(number).toLatin1().sliced(1));
        break;
    case 1: // an older one
        bytes = bytes.first(bytes.lastIndexOf('\n', bytes.size() / 2) + 1);
        break;
    case 2: // one with a reception more
        bytes += test::logLine(
            "D382", dateOf(number).toLatin1(), "89.0", "S" + nameOf(number).toLatin1().sliced(1));
        break;
    default: // the same size
        bytes.replace("87.6", "87.9");
        break;
    }
    if (random.bounded(2) == 0) {
        put(path + u".sync"_s, bytes);
        QFile::remove(path);
        QFile::rename(path + u".sync"_s, path);
    } else {
        // In place, with the time of the file as it was.
        struct stat old
        {
        };
        ::stat(path.toLocal8Bit().constData(), &old);
        put(path, bytes);
        const timespec times[2] {old.st_atim, old.st_mtim};
        ::utimensat(AT_FDCWD, path.toLocal8Bit().constData(), times, 0);
    }
    return bytes;
}

bool isKept(const QString &folder, const QByteArray &bytes)
{
    const QStringList copies = QDir(folder).entryList({u"*.bak"_s}, QDir::Files);
    return std::ranges::any_of(
        copies, [&](const QString &name) { return readFile(folder + u'/' + name) == bytes; });
}

// Somebody works with the program while another one swaps the file under it.
void workWhileSwapped(const Round &round, Outcome &outcome)
{
    QSet<QByteArray> added;
    QByteArrayList adding;
    Teller teller([&](const QByteArray &line) {
        if (line.startsWith('+')) {
            adding += line.split('\t').at(1);
        } else if (line.startsWith('D')) {
            for (const QByteArray &name : std::exchange(adding, {})) {
                added += name;
            }
        }
    });
    Session session(round.root, FileCalls::real(), teller, receptions, round.seed);
    session.start();
    QRandomGenerator random(round.seed);
    const QString folder = round.root + u"/log"_s;
    const QString path = folder + u"/RDSLog.log"_s;
    for (int i = 0; i < swapsOfARound && outcome.problem.isEmpty(); ++i) {
        const QByteArray swapped = swapLog(path, i, random);
        ++outcome.cases;
        session.add();
        const QByteArray now = readFile(path);
        if (!isKept(folder, swapped)) {
            outcome.lose(u"what another program has put there is not kept"_s);
        }
        if (now != logbookBytes(session.form().log(), Regional::fromEnvironment().codePage)) {
            outcome.lose(u"the file is not the log"_s);
        }
        for (const QByteArray &name : std::as_const(added)) {
            if (!now.contains(QByteArray('|' + name + '|'))) {
                outcome.lose(u"the reception %1 is lost"_s.arg(QString::fromLatin1(name)));
            }
        }
        const QStringList copies = QDir(folder).entryList({u"*.bak"_s}, QDir::Files);
        for (const QString &copy : copies) {
            QFile::remove(folder + u'/' + copy);
        }
    }
}

// A second start on a folder writes nothing, whatever becomes of the first; a third one works.
void startTwice(const Round &round, Outcome &outcome)
{
    QRandomGenerator random(round.seed);
    const QString folder = round.root + u"/log"_s;
    RealProgram first(round.root, folder);
    if (!first.answers()) {
        outcome.crash(u"the program does not start"_s);
        return;
    }
    const QByteArray log = readFile(folder + u"/RDSLog.log"_s);
    const QStringList names = QDir(folder).entryList(QDir::Files | QDir::Hidden);
    RealProgram second(round.root, folder);
    constexpr quint32 mostMs = 1'500;
    QThread::msleep(random.bounded(mostMs));
    if (!first.isRunning() || !second.isRunning()) {
        outcome.crash(u"one of two programs has ended"_s);
    }
    const bool firstDiesFirst = random.bounded(2) == 0;
    (firstDiesFirst ? first : second).kill();
    (firstDiesFirst ? second : first).kill();
    if (readFile(folder + u"/RDSLog.log"_s) != log
        || QDir(folder).entryList(QDir::Files | QDir::Hidden) != names) {
        outcome.lose(u"two programs have changed the folder"_s);
    }
    RealProgram third(round.root, folder);
    if (!third.answers()) {
        outcome.crash(u"after two programs were killed, a third one does not work"_s);
    }
    ++outcome.cases;
}

} // namespace

Outcome folderRound(const Round &round)
{
    layOut(round.root, receptions, 1);
    Outcome outcome = outcomeOf([&](Outcome &swaps) { workWhileSwapped(round, swaps); });
    if (outcome.problem.isEmpty()) {
        startTwice(round, outcome);
    }
    return outcome;
}

} // namespace quillon::soak
