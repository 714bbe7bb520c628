#include "core/logbookfile.h"

#include "core/linebreaks.h"
#include "core/logbookline.h"
#include "core/logfields.h"
#include "platform/runtimeerror.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

qsizetype logbookPieces(LogbookLayout layout)
{
    return layout == LogbookLayout::Older ? olderLogbookPieces : currentLogbookPieces;
}

[[noreturn]] void throwAtLine(const RuntimeError &error, const QString &fileName, qsizetype number)
{
    throw RuntimeError(
        error.name(), u"Reading %1, line %2: %3"_s.arg(fileName, QString::number(number), error.doing()));
}

QString field(const CodePage &codePage, QByteArrayView bytes)
{
    return bytes.isEmpty() ? QString() : codePage.decode(bytes);
}

LogEntry entryOf(QByteArrayView line, LogbookLayout layout, const Regional &regional)
{
    std::array<QByteArrayView, logFieldCount> fields;
    const auto wanted = static_cast<std::size_t>(logbookPieces(layout) - 1);
    qsizetype at = 0;
    for (std::size_t i = 0; i < wanted; ++i) {
        const qsizetype end = line.indexOf('|', at);
        if (end < 0 && i + 1 == wanted) {
            // The "|" after the last field is missing, but no field is.
            fields[i] = line.sliced(at);
            break;
        }
        if (end < 0) {
            throw RuntimeError(ErrorName::SubscriptOutOfRange,
                u"the line has %1 pieces instead of %2: \"%3\""_s.arg(i + 1)
                    .arg(wanted + 1)
                    .arg(regional.codePage.decode(line)));
        }
        fields[i] = line.sliced(at, end - at);
        at = end + 1;
    }
    LogEntry entry;
    for (std::size_t i = 0; i < wanted; ++i) {
        const LogColumn &row = logFields()[i];
        if (row.text) {
            entry.*row.text = field(regional.codePage, fields[i]);
        } else {
            entry.dateTime = toDateTime(regional.codePage.decode(fields[i]), regional.months, u"Date/Time"_s);
        }
    }
    entry.notes = unfoldedLineBreaks(entry.notes);
    return entry;
}

} // namespace

LogbookLayout logbookLayout(QByteArrayView file)
{
    const qsizetype pieces = logbookPieces(logbookPhysicalLine(file).text);
    if (pieces == currentLogbookPieces
        || logbookPieces(logbookLine(file, currentLogbookPieces).text) == currentLogbookPieces) {
        return LogbookLayout::Current;
    }
    if (pieces == olderLogbookPieces
        || logbookPieces(logbookLine(file, olderLogbookPieces).text) == olderLogbookPieces) {
        return LogbookLayout::Older;
    }
    return LogbookLayout::Unknown;
}

bool readLogbook(Logbook &log, QByteArrayView file, const Regional &regional, const QString &fileName)
{
    const LogbookLayout layout = logbookLayout(file);
    if (layout == LogbookLayout::Unknown) {
        return false;
    }
    bool whole = true;
    QByteArrayView rest = file;
    qsizetype number = 1;
    while (!rest.isEmpty()) {
        const auto line = logbookLine(rest, logbookPieces(layout));
        try {
            log.AddEntry(entryOf(line.text, layout, regional));
        } catch (const RuntimeError &error) {
            throwAtLine(error, fileName, number);
        }
        // What stands behind the last field is not kept in memory, a deleted entry is not written again.
        whole = whole && logbookPieces(line.text) == logbookPieces(layout) && line.text.endsWith('|')
            && !line.text.startsWith("delete|");
        number += std::ranges::count(rest.first(line.length), '\n');
        rest = rest.sliced(line.length);
    }
    return whole;
}

LogbookLoading loadLogbook(Logbook &log, const QString &path, const Regional &regional, KeptFile &kept)
{
    kept.removeLeftover(path);
    const std::optional<FileState> state = fileState(path);
    if (!state) {
        return LogbookLoading::NoFile;
    }
    const QByteArray file = readFile(path);
    if (file.isEmpty()) {
        // The log of somebody who deleted the last entry: there is nothing in it to lose.
        kept.readWhole(path, *state);
        return LogbookLoading::Loaded;
    }
    if (logbookLayout(file) == LogbookLayout::Unknown) {
        return LogbookLoading::NotLoaded;
    }
    if (readLogbook(log, file, regional, path)) {
        kept.readWhole(path, *state);
    }
    return LogbookLoading::Loaded;
}

QString unreadableText(QByteArrayView file, const QString &fileName, const CodePage &codePage)
{
    const QByteArrayView first = logbookPhysicalLine(file).text;
    constexpr qsizetype shown = 120;
    QString line = codePage.decode(first.first(std::min(first.size(), shown)));
    if (first.size() > shown) {
        line += u"..."_s;
    }
    return u"%1 was not loaded.\nIts first line has %2 fields instead of 12 or 10:\n%3\n"
           "It has %4 lines. Before the first save it is kept as a copy, so nothing of it is lost."_s.arg(
               fileName, QString::number(logbookPieces(first) - 1), line,
               QString::number(splitLines(file).size()));
}

} // namespace quillon
