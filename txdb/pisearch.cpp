#include "txdb/pisearch.h"

namespace quillon {

bool matches(const LogEntry &entry, LogSearch search, QStringView text)
{
    switch (search) {
    case LogSearch::PiCodeContains:
        return entry.piCode.contains(text);
    case LogSearch::RdsNameContains:
        return entry.rdsName.contains(text);
    case LogSearch::TransmitterContains:
        return entry.transmitter.contains(text);
    case LogSearch::FreqEquals:
        return entry.freq == text;
    case LogSearch::CountryEquals:
        return entry.country == text;
    }
    return false;
}

QString resultLine(const LogEntry &entry)
{
    constexpr QChar tab = u'\t';
    QString line = entry.piCode + tab + generalText(entry.dateTime) + tab + entry.prop + tab + entry.freq
        + tab + entry.transmitter + tab + entry.country + tab + entry.rdsName + tab + entry.power + tab;
    return line;
}

QStringList searchLog(const Logbook &log, LogSearch search, QStringView text)
{
    QStringList lines;
    for (const LogEntry &entry : log) {
        if (matches(entry, search, text)) {
            lines += resultLine(entry);
        }
    }
    return lines;
}

} // namespace quillon
