#include "live/spyfilesource.h"

#include <QFileInfo>

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int linesInOneGo = 500;
constexpr qint64 longestLine = 1'024;
/// A group has 104 bits, of which 1187.5 are sent in a second.
constexpr qint64 groupLasts = 88;
constexpr qint64 longestGap = 60'000;

} // namespace

SpyFileSource::SpyFileSource(QString path, bool atOnce, QObject *parent)
    : ReceiverSource(parent)
    , m_path(std::move(path))
    , m_atOnce(atOnce)
{
    m_next.setSingleShot(true);
    connect(&m_next, &QTimer::timeout, this, &SpyFileSource::play);
}

void SpyFileSource::attempt()
{
    // Reading a pipe or a device could wait for ever.
    if (const QFileInfo info(m_path); info.exists() && !info.isFile()) {
        ended(u"%1 is no regular file"_s.arg(m_path));
        return;
    }
    m_file.setFileName(m_path);
    if (!m_file.open(QIODevice::ReadOnly)) {
        ended(u"%1: %2"_s.arg(m_path, m_file.errorString()));
        return;
    }
    m_waiting.reset();
    m_time.reset();
    listening();
    m_next.start(0);
}

void SpyFileSource::hangUp()
{
    m_next.stop();
    m_file.close();
}

std::optional<SpyLine> SpyFileSource::nextGroup()
{
    for (int i = 0; i < linesInOneGo && !m_file.atEnd(); ++i) {
        if (auto line = spyLine(m_file.readLine(longestLine))) {
            return line;
        }
    }
    return {};
}

void SpyFileSource::tellGroup(const SpyLine &line)
{
    Q_EMIT told(GroupHeard {line.group}, *m_time);
}

void SpyFileSource::play()
{
    for (int i = 0; i < (m_atOnce ? linesInOneGo : 1); ++i) {
        if (m_waiting) {
            tellGroup(*m_waiting);
        }
        // Whoever hears it may have stopped the file.
        if (!m_file.isOpen()) {
            return;
        }
        m_waiting = nextGroup();
        if (!m_waiting) {
            break;
        }
        const qint64 before = m_time.value_or(m_waiting->time.value_or(nowMilliseconds()));
        m_time = std::max(before, m_waiting->time.value_or(before + groupLasts));
        if (!m_atOnce) {
            m_next.start(static_cast<int>(std::min(*m_time - before, longestGap)));
            return;
        }
    }
    if (!m_waiting && m_file.atEnd()) {
        ended(u"the file has ended"_s);
        return;
    }
    m_next.start(0);
}

} // namespace quillon
