#include "core/logchange.h"

#include <algorithm>
#include <utility>

namespace quillon {

LogChange LogChange::addition(LogEntry entry)
{
    LogChange change;
    change.added.push_back(std::move(entry));
    return change;
}

LogChange LogChange::between(qint32 entry, const LogEntry &before, const LogEntry &after)
{
    LogChange change;
    for (const LogColumn &row : logFields()) {
        change.setField(entry, before, *row.field, fieldValue(after, *row.field));
    }
    return change;
}

void LogChange::setField(qint32 number, const LogEntry &entry, LogField field, const FieldValue &value)
{
    FieldValue before = fieldValue(entry, field);
    if (before != value) {
        fields.push_back({number, field, std::move(before), value});
    }
}

LogChange LogChange::inverse() const
{
    LogChange result {removed, added, {}};
    result.fields.reserve(fields.size());
    std::for_each(fields.rbegin(), fields.rend(), [&](const FieldChange &change) {
        result.fields.push_back({change.entry, change.field, change.after, change.before});
    });
    return result;
}

} // namespace quillon
