#pragma once

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

    /// The entry of that number. Throws "Subscript out of range".
    [[nodiscard]] const LogEntry &entry(qint32 index) const;
    /// Calls `change(LogEntry &)` with the entry of that number. Throws "Subscript out of range".
    template<typename Change>
    void changeEntry(qint32 index, Change change)
    {
        change(changing(index));
    }

    /// Appends an entry. An empty Dist leaves the text that the slot holds. Throws "Overflow" when the log
    /// cannot grow any more (the entry itself is in the log then), "Subscript out of range" when there is no
    /// slot left.
    void AddEntry(LogEntry entry);

    /// Number of the first entry with exactly this Date/Time and Freq whose PI Code or RDS Name is equal to
    /// the given one; -1 when there is none.
    [[nodiscard]] qint32 FindEntry(
        QStringView piCode, DateTime dateTime, QStringView rdsName, QStringView freq) const;

    /// The entries 0 to count() - 1, for walking over all of them.
    [[nodiscard]] auto begin() const { return m_slots.begin(); }
    [[nodiscard]] auto end() const { return m_slots.begin() + m_count; }

    /// Entries in a block: of each block the log knows when it last changed.
    static constexpr qint32 blockSize = 256;
    /// A number that grows with every change of an entry of block 0, 1, 2 ...: entries 0 to 255, 256 to 511
    /// ...
    [[nodiscard]] quint64 revision(qint32 block) const
    {
        return m_revisions[static_cast<std::size_t>(block)];
    }

private:
    LogEntry &changing(qint32 index);
    void touch(qint32 index);

    std::vector<LogEntry> m_slots;
    std::vector<quint64> m_revisions;
    quint64 m_lastRevision = 0;
    qint32 m_count = 0;
    qint16 m_capacity;
};

} // namespace quillon
