#include "core/logbook.h"

#include "platform/runtimeerror.h"

#include <algorithm>
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

qint32 Logbook::room() const
{
    constexpr qint32 most = std::numeric_limits<qint16>::max();
    // What the counter comes to when it has grown as often as it can.
    const qint32 last = m_capacity + (most - m_capacity) / growth * growth;
    return std::max(last - slotsKeptFree - m_count, 0);
}

const LogEntry &Logbook::entry(qint32 index) const
{
    return m_slots[checkedIndex(index, m_count, u"entry")];
}

void Logbook::apply(const LogChange &change)
{
    for (const FieldChange &field : change.fields) {
        setFieldValue(m_slots[checkedIndex(field.entry, m_count, u"entry")], field.field, field.after);
    }
    for (std::size_t i = 0; i < change.removed.size(); ++i) {
        // An empty slot: the next entry in it takes nothing over from this one.
        m_slots[checkedIndex(m_count - 1, m_count, u"entry")] = {};
        --m_count;
    }
    for (const LogEntry &entry : change.added) {
        AddEntry(entry);
    }
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
