#include "document/change.h"

namespace quillon {

QString changeName(const QString &verb, const LogEntry &entry)
{
    return QString(verb + u' ' + entry.freq + u' ' + (entry.rdsName.isEmpty() ? entry.piCode : entry.rdsName))
        .simplified();
}

} // namespace quillon
