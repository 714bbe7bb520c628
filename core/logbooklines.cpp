#include "core/logbooklines.h"

#include "core/linebreaks.h"

#include <algorithm>
#include <span>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// More bytes than a line of the file can have.
qsizetype longestLine(const LogEntry &entry)
{
    constexpr qsizetype dateAndMarks = 40;
    return entry.piCode.size() + entry.prop.size() + entry.freq.size() + entry.transmitter.size()
        + entry.country.size() + 2 * entry.notes.size() + entry.rdsName.size() + entry.power.size()
        + entry.dist.size() + entry.fmlist.size() + entry.uid.size() + dateAndMarks;
}

// Writes one line; returns its end.
char *writeLine(char *out, const LogEntry &entry, const CodePage &page)
{
    const auto put = [&](QStringView text) {
        out = page.encodeTo(out, text);
        *out++ = '|';
    };
    put(entry.piCode);
    out = std::ranges::copy(generalCharacters(entry.dateTime), out).out;
    *out++ = '|';
    put(entry.prop);
    put(entry.freq);
    put(entry.transmitter);
    put(entry.country);
    if (entry.notes.contains("\r\n"_L1)) {
        put(foldedLineBreaks(entry.notes));
    } else {
        put(entry.notes);
    }
    put(entry.rdsName);
    put(entry.power);
    put(entry.dist);
    put(entry.fmlist);
    put(entry.uid);
    *out++ = '\r';
    *out++ = '\n';
    return out;
}

QByteArray linesOf(std::span<const LogEntry> entries, const CodePage &codePage)
{
    qsizetype most = 0;
    for (const LogEntry &entry : entries) {
        most += longestLine(entry);
    }
    QByteArray bytes(most, Qt::Uninitialized);
    char *out = bytes.data();
    for (const LogEntry &entry : entries) {
        if (!isDeleted(entry)) {
            out = writeLine(out, entry, codePage);
        }
    }
    bytes.resize(out - bytes.constData());
    return bytes;
}

} // namespace

QByteArray logbookBytes(const Logbook &log, const CodePage &codePage)
{
    return linesOf({log.begin(), log.end()}, codePage);
}

LogbookLines::LogbookLines(const Logbook &log, const CodePage &codePage)
    : m_log(log)
    , m_codePage(codePage)
{
}

QByteArray LogbookLines::bytes()
{
    prepare();
    qsizetype size = 0;
    for (const Block &block : m_blocks) {
        size += block.lines.size();
    }
    QByteArray file(size, Qt::Uninitialized);
    char *out = file.data();
    for (const Block &block : m_blocks) {
        out = std::ranges::copy(block.lines, out).out;
    }
    return file;
}

void LogbookLines::prepare()
{
    const std::span<const LogEntry> entries(m_log.begin(), m_log.end());
    constexpr auto blockSize = static_cast<std::size_t>(Logbook::blockSize);
    m_blocks.resize((entries.size() + blockSize - 1) / blockSize);
    for (std::size_t number = 0; number < m_blocks.size(); ++number) {
        const quint64 revision = m_log.revision(static_cast<qint32>(number));
        Block &block = m_blocks[number];
        if (block.revision != revision) {
            const auto rest = entries.subspan(number * blockSize);
            block = {revision, linesOf(rest.first(std::min(blockSize, rest.size())), m_codePage)};
            block.lines.squeeze();
        }
    }
}

} // namespace quillon
