#include "kind.h"
#include "smalldisk.h"
#include "windowsaves.h"

#include <QRandomGenerator>

#include <algorithm>
#include <numeric>

namespace quillon::soak {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 bytesOfARound = 100;
// Of larger files any sizes are drawn.
constexpr qint64 large = 50'000;
constexpr int drawnOfALargeFile = 5;

// One save with room for any number of bytes.
class Trial
{
public:
    Trial(WindowSaves &saves, SmallDisk &disk, const WindowSaves::Save &save, Outcome &outcome)
        : m_saves(saves)
        , m_disk(disk)
        , m_save(save)
        , m_outcome(outcome)
    {
        saves.prepare(save);
        disk.empty();
        saves.restore();
        (void)saves.run(save);
        m_size = SmallDisk::plenty - disk.left();
        if (m_size != saves.size()) {
            outcome.lose(QString::fromLatin1(save.name) + u": bytes go past the calls that can fail"_s);
        }
    }

    [[nodiscard]] qint64 size() const { return m_size; }
    void run(qint64 bytes)
    {
        m_saves.restore();
        m_disk.leave(bytes);
        (void)m_saves.run(m_save);
        m_disk.empty();
        ++m_outcome.cases;
        if (const QString problem = m_saves.problem(bytes == m_size); !problem.isEmpty()) {
            m_outcome.lose(u"%1 with room for %2 of %3 bytes: %4"_s.arg(QString::fromLatin1(m_save.name))
                               .arg(bytes)
                               .arg(m_size)
                               .arg(problem));
        }
    }

private:
    WindowSaves &m_saves;
    SmallDisk &m_disk;
    const WindowSaves::Save &m_save;
    Outcome &m_outcome;
    qint64 m_size = 0;
};

} // namespace

// The bytes of all small files in a row: each round takes another part of them.
Outcome savesRound(const Round &round)
{
    return outcomeOf([&](Outcome &outcome) {
        SmallDisk disk;
        WindowSaves saves(round.root, disk);
        std::vector<qint64> sizes;
        QRandomGenerator random(round.seed);
        for (const WindowSaves::Save &save : WindowSaves::all()) {
            Trial trial(saves, disk, save, outcome);
            sizes.push_back(trial.size() <= large ? trial.size() + 1 : 0);
            for (int i = 0; trial.size() > large && i < drawnOfALargeFile; ++i) {
                trial.run(random.bounded(trial.size()));
            }
        }
        const qint64 all = std::max<qint64>(1, std::accumulate(sizes.begin(), sizes.end(), qint64 {0}));
        // One round is far from the next, so that a few see something of each.
        constexpr qint64 stride = 101;
        const qint64 blocks = all / bytesOfARound + 1;
        qint64 place = qint64 {round.seed} * stride % blocks * bytesOfARound;
        qint64 left = bytesOfARound;
        for (std::size_t i = 0; i < sizes.size() && left > 0; ++i) {
            if (place >= sizes[i]) {
                place -= sizes[i];
                continue;
            }
            Trial trial(saves, disk, WindowSaves::all().at(i), outcome);
            for (; place < sizes[i] && left > 0; ++place, --left) {
                trial.run(place);
            }
            place = 0;
        }
    });
}

} // namespace quillon::soak
