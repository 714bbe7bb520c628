#include "txdb/pisearch.h"

#include "core/fetchahead.h"

#include <QStringMatcher>

namespace quillon {

namespace {

using Field = QString LogEntry::*;

Field fieldOf(LogSearch search)
{
    switch (search) {
    case LogSearch::PiCodeContains:
        return &LogEntry::piCode;
    case LogSearch::RdsNameContains:
        return &LogEntry::rdsName;
    case LogSearch::TransmitterContains:
        return &LogEntry::transmitter;
    case LogSearch::FreqEquals:
        return &LogEntry::freq;
    case LogSearch::CountryEquals:
        return &LogEntry::country;
    }
    return &LogEntry::piCode;
}

bool isContained(LogSearch search)
{
    return search != LogSearch::FreqEquals && search != LogSearch::CountryEquals;
}

QString resultLine(const LogEntry &entry, GeneralCharacters &moments)
{
    constexpr QChar tab = u'\t';
    const std::array<char, 19> &characters = moments.of(entry.dateTime);
    const QLatin1StringView moment(characters.begin(), characters.end());
    QString line = entry.piCode + tab + moment + tab + entry.prop + tab + entry.freq + tab + entry.transmitter
        + tab + entry.country + tab + entry.rdsName + tab + entry.power + tab;
    return line;
}

// The lines of the entries for which `matches` is true of the field; `usual` are the fields to ask for ahead.
template<typename Matches, typename... Fields>
QStringList linesOf(const Logbook &log, Field field, const Matches &matches, Fields... usual)
{
    QStringList lines;
    GeneralCharacters moments;
    qint32 number = 0;
    for (const LogEntry &entry : log) {
        fetchAhead(log, number++, usual...);
        if (matches(entry.*field)) {
            lines += resultLine(entry, moments);
        }
    }
    return lines;
}

} // namespace

QStringList searchLog(const Logbook &log, LogSearch search, QStringView text)
{
    const Field field = fieldOf(search);
    if (!isContained(search)) {
        return linesOf(
            log, field, [text](const QString &value) { return value == text; }, field);
    }
    if (text.isEmpty()) {
        return linesOf(
            log, field, [](const QString &) { return true; }, &LogEntry::piCode, &LogEntry::prop,
            &LogEntry::freq, &LogEntry::transmitter, &LogEntry::country, &LogEntry::rdsName,
            &LogEntry::power);
    }
    const QStringMatcher matcher(text);
    return linesOf(
        log, field, [&matcher](const QString &value) { return matcher.indexIn(QStringView(value)) >= 0; },
        field);
}

} // namespace quillon
