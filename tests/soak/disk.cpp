#include "kind.h"
#include "mounteddisk.h"
#include "platform/files.h"
#include "platform/runtimeerror.h"
#include "smalldisk.h"
#include "windowsaves.h"
#include "works.h"

#include <QDir>
#include <QRandomGenerator>

#include <filesystem>
#include <functional>
#include <numeric>
#include <optional>

namespace quillon::soak {

using namespace Qt::StringLiterals;

namespace {

constexpr int receptions = 100;
constexpr int manyReceptions = 20'000;
constexpr qint64 bytesOfARound = 1'000;
constexpr int drawnOfALargeLog = 5;

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
            for (const QString &name : {u"RDSLog.log"_s, u"tx.lst"_s}) {
                if (!fileHolds(m_works.pathOf(name), m_after.value(name))) {
                    problem = name + u" is not what it was to be, with room again"_s;
                }
            }
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
        disk.empty();
        (works.*work.run)();
        sizes.push_back(SmallDisk::plenty - disk.left());
    }
    return sizes;
}

// Something with no page left, one, two ... until it succeeds; `step` more each time.
void addPages(const char *name, const std::function<bool(int pages)> &trial, Outcome &outcome, int step = 1)
{
    constexpr int most = 4'000;
    int pages = 0;
    while (pages < most && !trial(pages) && outcome.problem.isEmpty()) {
        pages += step;
    }
    if (pages >= most) {
        outcome.lose(QString::fromLatin1(name) + u": no room is enough"_s);
    }
}

// What all works write with a log of 100 receptions; then a large log with any number of pages.
void fillWithWorks(const QString &folder, quint32 seed, Outcome &outcome)
{
    const QByteArray disk = folder.toLocal8Bit();
    const auto trial = [&](const Trial &one, int pages, std::optional<bool> enough) {
        return one.run(
            [&](bool little) { little ? leavePages(disk, pages) : leaveManyPages(disk); }, enough, outcome);
    };
    {
        Works works(folder, receptions, FileCalls::real());
        for (const Works::Work &work : Works::all()) {
            const Trial one(works, work);
            addPages(
                work.name,
                [&](int pages) {
                    return trial(one, pages, pages == 0 ? std::optional(false) : std::nullopt);
                },
                outcome);
        }
    }
    Works large(folder, manyReceptions, FileCalls::real());
    QRandomGenerator random(seed);
    const Trial log(large, Works::all().front());
    for (int i = 0; i < drawnOfALargeLog; ++i) {
        trial(log, random.bounded(500), {});
    }
}

// What the windows save.
void fillWithSaves(const QString &folder, Outcome &outcome)
{
    const QByteArray disk = folder.toLocal8Bit();
    WindowSaves saves(folder, FileCalls::real());
    for (const WindowSaves::Save &save : WindowSaves::all()) {
        saves.prepare(save);
        // Of a large file ten sizes are tried.
        constexpr int page = 4096;
        const auto step = static_cast<int>(saves.size() > 25 * page ? saves.size() / page / 10 : 1);
        addPages(
            save.name,
            [&](int pages) {
                saves.restore();
                leavePages(disk, pages);
                const bool done = saves.run(save);
                leaveManyPages(disk);
                ++outcome.cases;
                const QString problem = saves.problem(pages == 0 ? std::optional(false) : std::nullopt);
                if (!problem.isEmpty()) {
                    outcome.lose(u"%1 with %2 pages left: %3"_s.arg(QString::fromLatin1(save.name))
                                     .arg(pages)
                                     .arg(problem));
                }
                return done;
            },
            outcome, step);
    }
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
        disk.empty();
        const Trial trial(works, Works::all().at(i));
        for (; place <= sizes[i] && outcome.cases < bytesOfARound; ++place) {
            trial.run([&](bool little) { disk.leave(little ? place : SmallDisk::plenty); }, place == sizes[i],
                outcome);
        }
        place = 0;
        if (outcome.cases >= bytesOfARound) {
            break;
        }
    }
    disk.empty();
    Works large(round.root, manyReceptions, disk);
    const Trial trial(large, Works::all().front());
    QRandomGenerator random(round.seed);
    const auto size = static_cast<int>(large.before().value(u"RDSLog.log"_s).size());
    for (int i = 0; i < drawnOfALargeLog; ++i) {
        const int bytes = random.bounded(size);
        trial.run([&](bool little) { disk.leave(little ? bytes : SmallDisk::plenty); }, false, outcome);
    }
    return outcome;
}

Outcome pagesRound(const Round &round)
{
    const QString folder = round.root + u"/disk"_s;
    QDir().mkpath(folder);
    return outcomeOf([&](Outcome &outcome) {
        if (mountDisk(folder.toLocal8Bit())) {
            fillWithWorks(folder, round.seed, outcome);
            fillWithSaves(folder, outcome);
        }
        if (!outcome.problem.isEmpty()) {
            // The disk goes with this process.
            std::filesystem::copy(folder.toStdString(), round.root.toStdString() + "/left",
                std::filesystem::copy_options::recursive);
        }
    });
}

} // namespace quillon::soak
