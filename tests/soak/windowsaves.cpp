#include "windowsaves.h"

#include "put.h"

#include <QFile>

#include <algorithm>

namespace quillon::soak {

using namespace Qt::StringLiterals;

namespace {

constexpr int receptions = 100;
constexpr int number = 5'000;

} // namespace

const std::vector<WindowSaves::Save> &WindowSaves::all()
{
    static const std::vector<Save> saves {
        {"refused lines", &User::saveRefused, number},
        {"station list", &User::importStations, number},
        {"password of a receiver", &User::keepReceiver, number},
        {"collection as CSV", &User::saveCollection, number},
        {"picture of the collection", &User::pictureCollection, number},
        {"picture of the map", &User::pictureMap, number},
        {"drawing of the map", &User::pictureMap, number + 1},
        {"picture of statistics", &User::pictureStatistics, number},
    };
    return saves;
}

WindowSaves::WindowSaves(const QString &root, FileCalls &calls)
    : m_root((layOut(root, receptions, freePort()), root))
    , m_teller([this](const QByteArray &line) {
        if (line.startsWith('E')) {
            m_told = line;
        }
    })
    , m_session(root, calls, m_teller, receptions, 0)
{
    m_session.start();
    m_session.importToRefuse();
}

void WindowSaves::prepare(const Save &save)
{
    // The first time, there may be more to do: a folder to be made, the backup of the day.
    m_session.numberFrom(save.number + 2);
    m_session.run({save.name, save.run});
    auto old = filesOfCase(m_root);
    const QByteArray out = QFile::encodeName(m_root + u"/out/"_s);
    for (auto file = old.begin(); file != old.end(); ++file) {
        if (file.key().startsWith(out)) {
            *file = "what was there before";
        }
    }
    m_before = old;
    restore();
    run(save);
    m_whole = filesOfCase(m_root);
    if (m_session.failed() || m_whole == m_before) {
        qFatal("%s: nothing is saved. %s", save.name, m_told.constData());
    }
}

qint64 WindowSaves::size() const
{
    qint64 bytes = 0;
    for (const auto &[path, whole] : m_whole.asKeyValueRange()) {
        bytes += m_before.value(path) == whole ? 0 : whole.size();
    }
    return bytes;
}

void WindowSaves::restore() const
{
    const auto now = filesOfCase(m_root);
    for (const auto &[path, bytes] : now.asKeyValueRange()) {
        if (!m_before.contains(path)) {
            QFile::remove(QFile::decodeName(path));
        }
    }
    for (const auto &[path, bytes] : m_before.asKeyValueRange()) {
        if (!now.contains(path) || now.value(path) != bytes) {
            put(QFile::decodeName(path), bytes);
        }
    }
}

bool WindowSaves::run(const Save &save)
{
    m_told.clear();
    m_session.numberFrom(save.number);
    m_session.run({save.name, save.run});
    return !m_session.failed();
}

// Whether the error has the name of the file.
bool WindowSaves::tellsWhich() const
{
    return std::ranges::any_of(m_whole.keyBegin(), m_whole.keyEnd(), [&](const QByteArray &path) {
        return m_before.value(path) != m_whole.value(path)
            && m_told.contains(path.sliced(path.lastIndexOf('/') + 1));
    });
}

QString WindowSaves::problem(std::optional<bool> enough) const
{
    const bool done = !m_session.failed();
    if (!done && !(m_told.contains("Disk full") && tellsWhich())) {
        return u"it says: "_s + QString::fromUtf8(m_told);
    }
    if (enough && *enough != done) {
        return done ? u"the full disk was not told"_s : u"there was room enough"_s;
    }
    const auto now = filesOfCase(m_root);
    if (now == (done ? m_whole : m_before)) {
        return {};
    }
    QStringList wrong;
    for (const auto &[path, bytes] : now.asKeyValueRange()) {
        if (!(done ? m_whole : m_before).contains(path) || (done ? m_whole : m_before).value(path) != bytes) {
            wrong += QString::fromUtf8(path);
        }
    }
    return u"neither old nor new, or gone: "_s + wrong.join(u", "_s);
}

} // namespace quillon::soak
