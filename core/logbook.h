#pragma once

#include "core/logchange.h"
#include "core/logentry.h"

#include <QString>

#include <vector>

namespace quillon {

/// The in-memory log: every reception in the order in which it was added, deleted ones included.
class Logbook
{
public:
    Logbook();

    /// Number of entries; they are numbered 0 to count() - 1.
    [[nodiscard]] qint32 count() const { return m_count; }
    /// The size counter: there is room for entries 0 to capacity().
    [[nodiscard]] qint16 capacity() const { return m_capacity; }

    /// How many entries can be added before AddEntry throws.
    [[nodiscard]] qint32 room() const;

    /// The entry of that number. Throws "Subscript out of range".
    [[nodiscard]] const LogEntry &entry(qint32 index) const;

    /// Appends an entry. An empty Dist leaves the text that the slot holds. Throws "Overflow" when the log
    /// cannot grow any more (the entry itself is in the log then), "Subscript out of range" when there is no
    /// slot left.
    void AddEntry(LogEntry entry);

    /// Makes the change. Throws "Subscript out of range" for an entry that there is not, and what AddEntry
    /// throws; what was made until then stays made, fields before additions.
    void apply(const LogChange &change);

    /// Number of the first entry with exactly this Date/Time and Freq whose PI Code or RDS Name is equal to
    /// the given one; -1 when there is none.
    [[nodiscard]] qint32 FindEntry(
        QStringView piCode, DateTime dateTime, QStringView rdsName, QStringView freq) const;

    /// The entries 0 to count() - 1, for walking over all of them.
    [[nodiscard]] auto begin() const { return m_slots.begin(); }
    [[nodiscard]] auto end() const { return m_slots.begin() + m_count; }

private:
    std::vector<LogEntry> m_slots;
    qint32 m_count = 0;
    qint16 m_capacity;
};

} // namespace quillon
