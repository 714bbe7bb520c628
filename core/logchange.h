#pragma once

#include "core/logfields.h"

#include <vector>

namespace quillon {

/// What one field of one entry was and becomes.
struct FieldChange
{
    qint32 entry = -1;
    LogField field {};
    FieldValue before;
    FieldValue after;

    bool operator==(const FieldChange &) const = default;
};

/// A change of the log as a value: it can be applied, and taken back by applying its inverse. Entries are
/// added to the end and taken away from it alone, so every number stays what it was.
struct LogChange
{
    std::vector<LogEntry> added; ///< to the end, in this order
    std::vector<LogEntry> removed; ///< from the end; the last one goes first
    std::vector<FieldChange> fields; ///< each entry and field at most once

    /// The adding of one entry.
    [[nodiscard]] static LogChange addition(LogEntry entry);
    /// The fields in which two states of an entry differ.
    [[nodiscard]] static LogChange between(qint32 entry, const LogEntry &before, const LogEntry &after);
    /// The change of one field; none when it is that already.
    void setField(qint32 number, const LogEntry &entry, LogField field, const FieldValue &value);

    [[nodiscard]] bool isEmpty() const { return added.empty() && removed.empty() && fields.empty(); }
    /// What takes this change back.
    [[nodiscard]] LogChange inverse() const;

    bool operator==(const LogChange &) const = default;
};

} // namespace quillon
