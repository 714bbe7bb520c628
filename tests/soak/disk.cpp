#include "kind.h"
#include "platform/runtimeerror.h"
#include "works.h"

#include <QDir>
#include <QRandomGenerator>

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <numeric>
#include <optional>
#include <sched.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace quillon::soak {

using namespace Qt::StringLiterals;

namespace {

constexpr int receptions = 100;
constexpr int manyReceptions = 20'000;
constexpr qint64 bytesOfARound = 1'000;
constexpr int drawnOfALargeLog = 5;
constexpr qint64 plenty = 1LL << 40;

// A disk on which so many bytes are left. What does not fit is written as far as it goes.
class SmallDisk : public FileCalls
{
public:
    void leave(qint64 bytes) { m_left = bytes; }
    [[nodiscard]] qint64 left() const { return m_left; }

    ssize_t write(int file, QByteArrayView bytes) override
    {
        if (m_left <= 0) {
            errno = ENOSPC;
            return -1;
        }
        const ssize_t written = FileCalls::write(file, bytes.first(qMin<qint64>(m_left, bytes.size())));
        m_left -= qMax<ssize_t>(0, written);
        return written;
    }

private:
    qint64 m_left = plenty;
};

// Runs the work; its error, or nothing.
std::optional<RuntimeError> errorOf(Works &works, const Works::Work &work)
{
    try {
        (works.*work.run)();
    } catch (const RuntimeError &error) {
        return error;
    }
    return std::nullopt;
}

// A work, what it writes, and what the folder holds when it is done.
class Trial
{
public:
    Trial(Works &works, const Works::Work &work)
        : m_works(works)
        , m_work(work)
    {
        works.reset();
        const auto error = errorOf(works, work);
        if (error) {
            qFatal("%s: %s", work.name, qPrintable(error->text()));
        }
        m_after = works.files();
    }

    // Tries it with little room, which `disk` takes away and gives back; true when it was done. Whether the
    // room is enough is for the work to say, unless it is known.
    bool run(const std::function<void(bool little)> &disk, std::optional<bool> enough, Outcome &outcome) const
    {
        ++outcome.cases;
        m_works.reset();
        disk(true);
        const auto error = errorOf(m_works, m_work);
        const auto now = m_works.files();
        disk(false);
        QString problem = problemOf(now, !error);
        if (error && error->name() != ErrorName::DiskFull) {
            problem = error->text();
        } else if (enough && *enough == error.has_value()) {
            problem = error ? u"there was room enough"_s : u"the full disk was not told"_s;
        }
        if (problem.isEmpty()) {
            // With room again, what is in memory is stored.
            m_works.saveUnsaved();
            problem = m_works.isLogStored() ? QString() : u"the log is not stored"_s;
        }
        if (!problem.isEmpty()) {
            outcome.lose(u"%1: %2"_s.arg(QString::fromLatin1(m_work.name), problem));
        }
        return !error;
    }

private:
    // Each file is as before or as it is to be; the latter when the work is done.
    [[nodiscard]] QString problemOf(const QMap<QString, QByteArray> &now, bool done) const
    {
        const auto &before = m_works.before();
        for (const auto &[name, bytes] : now.asKeyValueRange()) {
            const bool old = before.contains(name) && before.value(name) == bytes;
            const bool fresh = m_after.contains(name) && m_after.value(name) == bytes;
            if (!fresh && (done || !old)) {
                return name + u" is neither old nor new"_s;
            }
        }
        const QStringList expected = done ? m_after.keys() : before.keys();
        for (const QString &name : expected) {
            if (!now.contains(name)) {
                return name + u" is not there"_s;
            }
        }
        return {};
    }

    Works &m_works;
    const Works::Work &m_work;
    QMap<QString, QByteArray> m_after;
};

// So many bytes of each work that writes.
std::vector<qint64> sizesOf(Works &works, SmallDisk &disk)
{
    std::vector<qint64> sizes;
    for (const Works::Work &work : Works::all()) {
        works.reset();
        disk.leave(plenty);
        (works.*work.run)();
        sizes.push_back(plenty - disk.left());
    }
    return sizes;
}

// A tmpfs on this folder, seen by this process alone; false where that is not allowed.
bool mountDisk(const QByteArray &folder)
{
    if (::unshare(CLONE_NEWNS) != 0) {
        const QByteArray user = "0 " + QByteArray::number(::getuid()) + " 1";
        if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
            return false;
        }
        const int map = ::open("/proc/self/uid_map", O_WRONLY | O_CLOEXEC);
        const bool mapped =
            map >= 0 && ::write(map, user.constData(), static_cast<std::size_t>(user.size())) > 0;
        ::close(map);
        if (!mapped) {
            return false;
        }
    }
    return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && ::mount("none", folder.constData(), "tmpfs", 0, "size=64m") == 0;
}

// Leaves so many pages on it.
void leavePages(const QByteArray &folder, qint64 pages)
{
    struct statvfs disk
    {
    };
    ::statvfs(folder.constData(), &disk);
    const auto page = static_cast<qint64>(disk.f_frsize);
    const qint64 size = (static_cast<qint64>(disk.f_blocks - disk.f_bfree) + pages) * page;
    // No size at all would be no bound at all.
    const QByteArray option = "size=" + QByteArray::number(qMax(size, page));
    if (::mount("none", folder.constData(), "tmpfs", MS_REMOUNT, option.constData()) != 0) {
        qFatal("the disk cannot be made smaller");
    }
}

// Each work with no page left, one, two ... until it succeeds; then a large log with any number of them.
Outcome fillPages(const QString &folder, quint32 seed)
{
    Outcome outcome;
    const QByteArray disk = folder.toLocal8Bit();
    constexpr qint64 manyPages = 16'000;
    const auto trial = [&](const Trial &one, qint64 pages, std::optional<bool> enough) {
        return one.run([&](bool little) { leavePages(disk, little ? pages : manyPages); }, enough, outcome);
    };
    {
        Works works(folder, receptions, FileCalls::real());
        for (const Works::Work &work : Works::all()) {
            const Trial one(works, work);
            constexpr int mostPages = 400;
            int pages = 0;
            while (pages < mostPages && !trial(one, pages, pages == 0 ? std::optional(false) : std::nullopt)
                && outcome.problem.isEmpty()) {
                ++pages;
            }
            if (pages == mostPages) {
                outcome.lose(QString::fromLatin1(work.name) + u": no room is enough"_s);
            }
        }
    }
    Works large(folder, manyReceptions, FileCalls::real());
    QRandomGenerator random(seed);
    const Trial log(large, Works::all().front());
    for (int i = 0; i < drawnOfALargeLog; ++i) {
        trial(log, random.bounded(500), {});
    }
    return outcome;
}

} // namespace

Outcome diskRound(const Round &round)
{
    Outcome outcome;
    SmallDisk disk;
    Works works(round.root, receptions, disk);
    const std::vector<qint64> sizes = sizesOf(works, disk);
    const qint64 all = std::accumulate(sizes.begin(), sizes.end(), static_cast<qint64>(sizes.size()));
    // The bytes of all works in a row: each round takes the next of them.
    qint64 place = qint64 {round.seed} * bytesOfARound % all;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        if (place > sizes[i]) {
            place -= sizes[i] + 1;
            continue;
        }
        disk.leave(plenty);
        const Trial trial(works, Works::all().at(i));
        for (; place <= sizes[i] && outcome.cases < bytesOfARound; ++place) {
            trial.run([&](bool little) { disk.leave(little ? place : plenty); }, place == sizes[i], outcome);
        }
        place = 0;
        if (outcome.cases >= bytesOfARound) {
            break;
        }
    }
    disk.leave(plenty);
    Works large(round.root, manyReceptions, disk);
    const Trial trial(large, Works::all().front());
    QRandomGenerator random(round.seed);
    const auto size = static_cast<int>(large.before().value(u"RDSLog.log"_s).size());
    for (int i = 0; i < drawnOfALargeLog; ++i) {
        const int bytes = random.bounded(size);
        trial.run([&](bool little) { disk.leave(little ? bytes : plenty); }, false, outcome);
    }
    return outcome;
}

Outcome pagesRound(const Round &round)
{
    const QString folder = round.root + u"/disk"_s;
    QDir().mkpath(folder);
    return outcomeOf([&](Outcome &outcome) {
        if (mountDisk(folder.toLocal8Bit())) {
            outcome = fillPages(folder, round.seed);
        }
    });
}

} // namespace quillon::soak
