#include "core/suggestions.h"

#include <QSet>

namespace quillon {

namespace {

QStringList textsOf(const Logbook &log, QString LogEntry::*key, const QString &value, QString LogEntry::*text)
{
    QStringList texts;
    QSet<QString> seen;
    if (value.isEmpty()) {
        return texts;
    }
    for (qint32 number = log.count() - 1; number >= 0; --number) {
        const LogEntry &entry = log.entry(number);
        if (entry.*key == value && !(entry.*text).isEmpty() && entry.piCode != deletedPiCode
            && !seen.contains(entry.*text)) {
            seen.insert(entry.*text);
            texts += entry.*text;
            if (texts.size() == mostSuggestions) {
                break;
            }
        }
    }
    return texts;
}

} // namespace

QStringList rdsNamesOf(const Logbook &log, const QString &piCode)
{
    return textsOf(log, &LogEntry::piCode, piCode, &LogEntry::rdsName);
}

QStringList sitesOf(const Logbook &log, const QString &country)
{
    return textsOf(log, &LogEntry::country, country, &LogEntry::transmitter);
}

} // namespace quillon
