#include "core/logbook.h"

#include "platform/runtimeerror.h"

#include <limits>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 firstCapacity = 500;
constexpr qint16 growth = 2000;
constexpr qint32 slotsKeptFree = 3;

} // namespace

Logbook::Logbook()
    : m_slots(static_cast<std::size_t>(firstCapacity) + 1)
    , m_capacity(firstCapacity)
{
}

const LogEntry &Logbook::entry(qint32 index) const
{
    return m_slots[checkedIndex(index, m_count, u"entry")];
}

LogEntry &Logbook::changing(qint32 index)
{
    LogEntry &entry = m_slots[checkedIndex(index, m_count, u"entry")];
    touch(index);
    return entry;
}

void Logbook::touch(qint32 index)
{
    const auto block = static_cast<std::size_t>(index / blockSize);
    if (block >= m_revisions.size()) {
        m_revisions.resize(block + 1);
    }
    m_revisions[block] = ++m_lastRevision;
}

void Logbook::AddEntry(LogEntry entry)
{
    const auto index = static_cast<std::size_t>(m_count);
    if (index >= m_slots.size()) {
        throw RuntimeError(ErrorName::SubscriptOutOfRange,
            u"The log is full: it holds %1 entries and has room for no more"_s.arg(m_count));
    }
    LogEntry &slot = m_slots[index];
    if (entry.dist.isEmpty()) {
        entry.dist = std::move(slot.dist);
    }
    slot = std::move(entry);
    touch(m_count);
    ++m_count;
    if (m_count > m_capacity - slotsKeptFree) {
        if (m_capacity > std::numeric_limits<qint16>::max() - growth) {
            throw RuntimeError(ErrorName::Overflow,
                u"The log is full: with entry %1 it has reached the size it can grow to. "
                "Start a new logbook file in the setup"_s.arg(m_count));
        }
        m_slots.resize(static_cast<std::size_t>(m_capacity) + growth + 1);
        m_capacity = static_cast<qint16>(m_capacity + growth);
    }
}

qint32 Logbook::FindEntry(QStringView piCode, DateTime dateTime, QStringView rdsName, QStringView freq) const
{
    for (qint32 i = 0; i < m_count; ++i) {
        const LogEntry &entry = m_slots[static_cast<std::size_t>(i)];
        if (entry.dateTime == dateTime && entry.freq == freq
            && (entry.piCode == piCode || entry.rdsName == rdsName)) {
            return i;
        }
    }
    return -1;
}

} // namespace quillon
