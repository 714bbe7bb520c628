#include "core/logbooklines.h"

#include "core/linebreaks.h"
#include "core/logfields.h"

#include <algorithm>
#include <span>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qint32 blockSize = 256;

// More bytes than a line of the file can have: a line break of two characters takes four.
qsizetype longestLine(const LogEntry &entry)
{
    constexpr qsizetype dateAndLineEnd = 19 + 2;
    qsizetype size = dateAndLineEnd + logFieldCount + entry.notes.size();
    for (const LogColumn &field : logFields()) {
        size += field.text ? (entry.*field.text).size() : 0;
    }
    return size;
}

// Writes one line; returns its end.
char *writeLine(char *out, const LogEntry &entry, const CodePage &page)
{
    for (const LogColumn &field : logFields()) {
        if (!field.text) {
            out = std::ranges::copy(generalCharacters(entry.dateTime), out).out;
        } else if (const QString &text = entry.*field.text;
                   field.field == LogField::Notes && text.contains("\r\n"_L1)) {
            out = page.encodeTo(out, foldedLineBreaks(text));
        } else {
            out = page.encodeTo(out, text);
        }
        *out++ = '|';
    }
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

LogbookLines::LogbookLines(const CodePage &codePage)
    : m_codePage(codePage)
{
}

void LogbookLines::changed(qint32 entry)
{
    const auto block = static_cast<std::size_t>(entry / blockSize);
    if (block < m_blocks.size()) {
        m_blocks[block].kept = false;
    }
}

void LogbookLines::changedFrom(qint32 entry)
{
    changed(entry);
    m_blocks.resize(std::min(m_blocks.size(), static_cast<std::size_t>(entry / blockSize) + 1));
}

QByteArray LogbookLines::bytes(const Logbook &log)
{
    prepare(log);
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

void LogbookLines::prepare(const Logbook &log)
{
    const std::span<const LogEntry> entries(log.begin(), log.end());
    constexpr auto size = static_cast<std::size_t>(blockSize);
    m_blocks.resize((entries.size() + size - 1) / size);
    for (std::size_t number = 0; number < m_blocks.size(); ++number) {
        Block &block = m_blocks[number];
        if (!block.kept) {
            const auto rest = entries.subspan(number * size);
            block = {true, linesOf(rest.first(std::min(size, rest.size())), m_codePage)};
            block.lines.squeeze();
        }
    }
}

} // namespace quillon
