#include "support/powercuts.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRandomGenerator>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace quillon::test {

namespace {

constexpr int root = 1;
constexpr quint32 seed = 20100612;
constexpr qsizetype wholePrefixes = 1024; // up to this size, each length of a write is tried

// What one name becomes.
struct Naming
{
    Place place;
    int what = 0;
};

// A disk on which some is synced and some is not.
struct Disk
{
    QMap<Place, int> synced;
    std::vector<std::vector<Naming>> waiting; // one list a call, in their order
    QHash<int, QByteArray> syncedBytes;
    QHash<int, QByteArrayList> waitingWrites;
    QMap<Place, int> live;

    void name(std::vector<Naming> namings)
    {
        for (const Naming &one : namings) {
            live[one.place] = one.what;
        }
        waiting.push_back(std::move(namings));
    }

    void syncFolder(int folder)
    {
        for (const auto &[place, what] : live.asKeyValueRange()) {
            if (place.first == folder) {
                synced[place] = what;
            }
        }
        for (std::vector<Naming> &call : waiting) {
            std::erase_if(call, [folder](const Naming &one) { return one.place.first == folder; });
        }
        std::erase_if(waiting, [](const std::vector<Naming> &call) { return call.empty(); });
    }

    void take(const DiskAct &act)
    {
        switch (act.kind) {
        case DiskAct::Kind::Write:
            waitingWrites[act.what] += act.bytes;
            break;
        case DiskAct::Kind::Sync:
            syncedBytes[act.what] += waitingWrites.take(act.what).join();
            break;
        case DiskAct::Kind::Name:
            name({{act.place, act.what}});
            break;
        case DiskAct::Kind::Move:
            name({{act.place, live.value(act.from)}, {act.from, 0}});
            break;
        case DiskAct::Kind::SyncFolder:
            syncFolder(act.what);
            break;
        case DiskAct::Kind::Confirm:
            break;
        }
    }
};

// Calls `visit` with every way to choose below each of the counts; with so many drawn by chance when they are
// too many.
void forEachChoice(const std::vector<int> &counts, const std::function<void(const std::vector<int> &)> &visit)
{
    double all = 1;
    for (const int count : counts) {
        all *= count;
    }
    std::vector<int> choice(counts.size(), 0);
    if (all > PowerCuts::mostOfOneCut) {
        QRandomGenerator random(seed);
        for (int i = 0; i < PowerCuts::mostOfOneCut; ++i) {
            std::ranges::transform(counts, choice.begin(), [&](int count) { return random.bounded(count); });
            visit(choice);
        }
        return;
    }
    for (;;) {
        visit(choice);
        std::size_t place = 0;
        while (place < counts.size() && ++choice[place] == counts[place]) {
            choice[place++] = 0;
        }
        if (place == counts.size()) {
            return;
        }
    }
}

// All that may have become of a write.
QByteArrayList remainsOf(const QByteArray &bytes)
{
    QByteArrayList remains {bytes, QByteArray(bytes.size(), '\0')};
    const qsizetype step = std::max<qsizetype>(1, bytes.size() / wholePrefixes);
    for (qsizetype length = 0; length < bytes.size(); length += step) {
        remains += bytes.first(length);
    }
    return remains;
}

using Visit = std::function<void(const DiskState &)>;

// The states of one disk whose names are as given.
class States
{
public:
    States(const Disk &disk, const RecordedCalls &record)
        : m_disk(disk)
        , m_record(record)
    {
    }

    void forEach(const QMap<Place, int> &names, const Visit &visit) const
    {
        QMap<QByteArray, int> files;
        DiskState state;
        add({}, root, names, files, state);
        QList<int> torn;
        std::vector<QByteArrayList> remains;
        std::vector<int> counts;
        for (const int file : std::as_const(files)) {
            if (torn.contains(file)) {
                continue;
            }
            const QByteArrayList writes = m_disk.waitingWrites.value(file);
            for (const QByteArray &write : writes) {
                torn += file;
                remains.push_back(remainsOf(write));
                counts.push_back(static_cast<int>(remains.back().size()));
            }
        }
        forEachChoice(counts, [&](const std::vector<int> &choice) {
            DiskState whole = state;
            for (const auto &[path, file] : files.asKeyValueRange()) {
                QByteArray bytes = m_disk.syncedBytes.value(file);
                for (std::size_t i = 0; i < choice.size(); ++i) {
                    if (torn.at(static_cast<qsizetype>(i)) == file) {
                        bytes += remains[i].at(choice[i]);
                    }
                }
                whole[path] = bytes;
            }
            visit(whole);
        });
    }

private:
    void add(const QByteArray &path, int folder, const QMap<Place, int> &names, QMap<QByteArray, int> &files,
        DiskState &state) const
    {
        for (auto it = names.lowerBound({folder, {}}); it != names.end() && it.key().first == folder; ++it) {
            if (it.value() == 0) {
                continue;
            }
            const QByteArray below = path + it.key().second;
            if (m_record.isFolder(it.value())) {
                state[below + '/'] = {};
                add(below + '/', it.value(), names, files, state);
            } else {
                files.insert(below, it.value());
            }
        }
    }

    const Disk &m_disk;
    const RecordedCalls &m_record;
};

void forEachOrdered(const Disk &disk, const States &states, const Visit &visit)
{
    QMap<Place, int> names = disk.synced;
    states.forEach(names, visit);
    for (const std::vector<Naming> &call : disk.waiting) {
        for (const Naming &one : call) {
            names[one.place] = one.what;
        }
        states.forEach(names, visit);
    }
}

// Each name is on its own: it is what it was when it was synced, or what any call has made it since.
void forEachUnordered(const Disk &disk, const States &states, const Visit &visit)
{
    QMap<Place, QList<int>> may;
    for (const std::vector<Naming> &call : disk.waiting) {
        for (const Naming &one : call) {
            QList<int> &was = may[one.place];
            if (was.isEmpty()) {
                was += disk.synced.value(one.place);
            }
            if (!was.contains(one.what)) {
                was += one.what;
            }
        }
    }
    std::vector<int> counts;
    for (const QList<int> &was : std::as_const(may)) {
        counts.push_back(static_cast<int>(was.size()));
    }
    forEachChoice(counts, [&](const std::vector<int> &choice) {
        QMap<Place, int> names = disk.synced;
        std::size_t i = 0;
        for (const auto &[place, was] : may.asKeyValueRange()) {
            names[place] = was.at(choice[i++]);
        }
        states.forEach(names, visit);
    });
}

} // namespace

QByteArray bytesOf(const DiskState &state, const QByteArray &path)
{
    const auto file = state.find(path);
    return file == state.end() ? QByteArray() : file->second;
}

DiskState stateBelow(const QString &root)
{
    DiskState state;
    QDirIterator walk(root, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
        QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        QFile file(walk.next());
        const QByteArray path = QFile::encodeName(QDir(root).relativeFilePath(walk.filePath()));
        const bool folder = walk.fileInfo().isDir();
        if (!folder && !file.open(QIODevice::ReadOnly)) {
            qFatal("a file cannot be read");
        }
        state[folder ? path + '/' : path] = folder ? QByteArray() : file.readAll();
    }
    return state;
}

void putState(const DiskState &state, const TestDirectory &directory)
{
    for (const auto &[path, bytes] : state) {
        if (path.endsWith('/')) {
            QDir().mkpath(directory.file(QFile::decodeName(path)));
        } else {
            directory.write(QFile::decodeName(path), bytes);
        }
    }
}

void PowerCuts::forEach(
    Metadata metadata, const std::function<void(const DiskState &, int confirmed)> &visit) const
{
    Disk disk {m_record.namesBefore(), {}, m_record.bytesBefore(), {}, m_record.namesBefore()};
    int confirmed = 0;
    std::map<DiskState, int> states;
    const auto note = [&](const DiskState &state) { states[state] = confirmed; };
    const States possible(disk, m_record);
    const auto cut = [&] {
        if (metadata == Metadata::Ordered) {
            forEachOrdered(disk, possible, note);
        } else {
            forEachUnordered(disk, possible, note);
        }
    };
    cut();
    for (const DiskAct &act : m_record.acts()) {
        disk.take(act);
        confirmed += act.kind == DiskAct::Kind::Confirm ? 1 : 0;
        cut();
    }
    for (const auto &[state, confirmations] : states) {
        visit(state, confirmations);
    }
}

} // namespace quillon::test
