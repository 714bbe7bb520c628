#include "core/logbooklines.h"
#include "kind.h"
#include "session.h"

#include <QAction>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QPixmapCache>

#include <algorithm>
#include <climits>
#include <ctime>
#include <span>
#include <unistd.h>
#include <vector>

namespace quillon::soak {

using namespace Qt::StringLiterals;

namespace {

constexpr int receptions = 2'000;
constexpr int commandsOfATest = 90;
// A short run still warms up.
constexpr qint64 memoryOfAShortRun = 16 << 20;
constexpr qint64 memoryOfALongRun = 1 << 20;
constexpr qint64 longRun = 60'000; // milliseconds
constexpr double mostOfTime = 1.5;
constexpr qint64 mostOfACommand = 3'000; // milliseconds

// What the process has, after one round of all commands.
struct Reading
{
    double seconds = 0; ///< of processor time for the commands
    qint64 memory = 0; ///< bytes that are resident
    qsizetype handles = 0;
    qint64 files = 0; ///< bytes of the files of the log and of the settings
};

double processorSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

qint64 residentMemory()
{
    QFile file(u"/proc/self/statm"_s);
    return file.open(QIODevice::ReadOnly)
        ? file.readAll().split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE)
        : 0;
}

// Without the exports, whose sizes are those of the log as it was in the middle of a round.
qint64 bytesIn(const QString &folder)
{
    const QStringList exports {u"quillon.kml"_s, u"quillon.txt"_s, u"tx.kml"_s};
    qint64 bytes = 0;
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files | QDir::Hidden);
    for (const QFileInfo &file : files) {
        bytes += exports.contains(file.fileName()) ? 0 : file.size();
    }
    return bytes;
}

double middle(std::vector<double> numbers)
{
    std::ranges::nth_element(numbers, numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2));
    return numbers.at(numbers.size() / 2);
}

// Somebody who does everything in turn, and takes it all back.
class Evening
{
public:
    explicit Evening(const Round &round)
        : m_root(round.root)
        , m_teller([this](const QByteArray &line) {
            if (line.startsWith('E')) {
                m_error = QString::fromUtf8(line);
            }
            m_confirmed += line.startsWith('D') ? 1 : 0;
        })
        , m_session(round.root, FileCalls::real(), m_teller, receptions, round.seed)
    {
        m_session.start();
    }

    [[nodiscard]] Reading once()
    {
        const double before = processorSeconds();
        for (const Session::Command &command : commands()) {
            const int confirmed = m_confirmed;
            m_session.run(command);
            ++m_done;
            if (m_confirmed == confirmed && m_error.isEmpty()) {
                m_error = QString::fromLatin1(command.name) + u" did nothing"_s;
            }
        }
        Reading reading;
        reading.seconds = processorSeconds() - before;
        auto *undo = m_session.form().findChild<QAction *>(u"menuEditUndo"_s);
        while (!m_session.form().document().undoName().isEmpty()) {
            undo->trigger();
        }
        removeGrown();
        // The toolkit keeps up to 10 MB of pictures, and would take hours until it has them.
        QPixmapCache::clear();
        reading.memory = residentMemory();
        reading.handles =
            QDir(u"/proc/self/fd"_s).entryList(QDir::Files | QDir::System | QDir::NoDotAndDotDot).size();
        reading.files = bytesIn(m_root + u"/log"_s) + bytesIn(m_root + u"/look"_s);
        return reading;
    }
    [[nodiscard]] int done() const { return m_done; }
    [[nodiscard]] const QString &error() const { return m_error; }

private:
    // What grows by what is done: the dated copies that the RDSDX import makes, the record of the automatic
    // search, and the backups before each Restore.
    void removeGrown()
    {
        QDirIterator walk(
            m_root, {u"*.bak"_s, u"autoupdate.log"_s, u"*.zip"_s}, QDir::Files, QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            QFile::remove(walk.next());
        }
    }
    static const std::vector<Session::Command> &commands()
    {
        static const std::vector<Session::Command> all = [] {
            std::vector<Session::Command> list = Session::commands();
            list.push_back({"searches", &User::search});
            list.push_back({"windows", &User::look});
            return list;
        }();
        return all;
    }

    QString m_root;
    QString m_error;
    Teller m_teller;
    Session m_session;
    int m_done = 0;
    int m_confirmed = 0;
};

// What is not flat; empty when all is. A short run is too short for its times to tell anything.
QString growthIn(const std::vector<Reading> &readings, bool isLong)
{
    const std::size_t third = readings.size() / 3;
    const auto timeFrom = [&](std::size_t first) {
        std::vector<double> seconds;
        for (std::size_t i = first; i < first + third; ++i) {
            seconds.push_back(readings.at(i).seconds);
        }
        return middle(seconds);
    };
    // The first third warms up.
    const Reading &early = readings.at(third);
    const Reading &late = readings.back();
    QStringList growth;
    if (late.memory > early.memory + (isLong ? memoryOfALongRun : memoryOfAShortRun)) {
        growth += u"memory from %1 to %2 KiB"_s.arg(early.memory / 1024).arg(late.memory / 1024);
    }
    // Whatever opens them, and however seldom: in the end there are never as few again.
    const auto all = std::span(readings);
    const auto most = std::ranges::max(all.subspan(third, third), {}, &Reading::handles).handles;
    const auto least = std::ranges::min(all.last(third), {}, &Reading::handles).handles;
    if (least > most) {
        growth += u"handles from %1 to %2"_s.arg(most).arg(least);
    }
    // A name or two of those that are set may be a letter longer.
    constexpr qint64 someLetters = 64;
    if (late.files > early.files + someLetters) {
        growth += u"files from %1 to %2 bytes"_s.arg(early.files).arg(late.files);
    }
    const double earlier = timeFrom(third);
    const double after = timeFrom(readings.size() - third);
    if (isLong && after > earlier * mostOfTime) {
        growth += u"time from %1 to %2 ms"_s.arg(earlier * 1000).arg(after * 1000);
    }
    return growth.join(u", "_s);
}

} // namespace

Outcome longRound(const Round &round)
{
    layOut(round.root, receptions, freePort());
    const qint64 wanted = round.wanted > 0 ? round.wanted : commandsOfATest;
    const bool isLong = round.wanted > 0 || round.milliseconds >= longRun;
    const auto within =
        static_cast<int>(std::clamp<qint64>(wanted * mostOfACommand + round.milliseconds, patience, INT_MAX));
    const auto work = [&](Outcome &outcome) {
        QElapsedTimer timer;
        timer.start();
        Evening evening(round);
        std::vector<Reading> readings;
        const auto isOver = [&] {
            return evening.done() >= wanted
                && (!isLong || round.wanted > 0 || timer.elapsed() >= round.milliseconds);
        };
        while (!isOver() && evening.error().isEmpty()) {
            readings.push_back(evening.once());
        }
        outcome.cases = evening.done();
        constexpr std::size_t fewest = 3;
        if (readings.size() < fewest) {
            outcome.lose(evening.error().isEmpty() ? u"too few rounds to compare"_s : evening.error());
            return;
        }
        const QString problem = evening.error() + growthIn(readings, isLong);
        if (!problem.isEmpty()) {
            outcome.lose(problem);
        }
        const Reading &last = readings.back();
        const Reading &early = readings.at(readings.size() / 3);
        qInfo("long      memory %lld to %lld KiB, %lld handles, %.0f to %.0f ms a round of all commands",
            static_cast<long long>(early.memory / 1024), static_cast<long long>(last.memory / 1024),
            static_cast<long long>(last.handles), early.seconds * 1000, last.seconds * 1000);
    };
    return outcomeOf(work, within);
}

} // namespace quillon::soak
