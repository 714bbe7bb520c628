#include "core/logbooklines.h"

#include "core/linebreaks.h"
#include "core/logfields.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <span>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qint32 blockSize = 64;
// Up to so many blocks are written in their place, each moving what follows; more, and the file is put
// together again.
constexpr int fewBlocks = 4;

// What a line takes when nothing in it folds: a guess that saves growing, not a bound.
qsizetype usualLine(const LogEntry &entry)
{
    constexpr qsizetype dateAndLineEnd = 19 + 2;
    qsizetype size = dateAndLineEnd + logFieldCount;
    for (const LogColumn &field : logFields()) {
        size += field.text ? (entry.*field.text).size() : 0;
    }
    return size;
}

// The room for a line is that of the very texts which are then written: no character takes more than one
// byte.
void appendLine(QByteArray &bytes, const LogEntry &entry, const CodePage &page)
{
    constexpr QByteArrayView lineEnd = "\r\n";
    const auto moment = generalCharacters(entry.dateTime);
    const QString notes = entry.notes.contains("\r\n"_L1) ? foldedLineBreaks(entry.notes) : entry.notes;
    std::array<QStringView, logFieldCount> texts; // that of the moment stays empty
    qsizetype room = std::ssize(moment) + std::ssize(texts) + lineEnd.size();
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const LogColumn &field = logFields()[i];
        if (field.text) {
            texts[i] = field.field == LogField::Notes ? notes : entry.*field.text;
            room += texts[i].size();
        }
    }
    const qsizetype start = bytes.size();
    bytes.resize(start + room);
    char *out = bytes.data() + start;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        out = logFields()[i].text ? page.encodeTo(out, texts[i]) : std::ranges::copy(moment, out).out;
        *out++ = '|';
    }
    out = std::ranges::copy(lineEnd, out).out;
    bytes.truncate(out - bytes.constData());
}

QByteArray linesOf(std::span<const LogEntry> entries, const CodePage &codePage)
{
    qsizetype usual = 0;
    for (const LogEntry &entry : entries) {
        usual += usualLine(entry);
    }
    QByteArray bytes;
    bytes.reserve(usual);
    for (const LogEntry &entry : entries) {
        if (!isDeleted(entry)) {
            appendLine(bytes, entry, codePage);
        }
    }
    return bytes;
}

// Puts these bytes where others of that size are. What follows, megabytes of it, is moved once where there is
// room.
void put(QByteArray &file, qsizetype at, qsizetype size, const QByteArray &bytes)
{
    const qsizetype end = at + size;
    const auto rest = static_cast<std::size_t>(file.size() - end);
    const qsizetype more = bytes.size() - size;
    if (more > 0) {
        file.resize(file.size() + more);
    }
    char *const all = file.data();
    if (more != 0) {
        std::memmove(all + end + more, all + end, rest);
    }
    std::ranges::copy(bytes, all + at);
    file.chop(-more);
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
    keepBlocks(std::min(m_blocks.size(), static_cast<std::size_t>(entry / blockSize) + 1));
}

// No more blocks than these; the lines of the others leave the file.
void LogbookLines::keepBlocks(std::size_t count)
{
    for (; m_blocks.size() > count; m_blocks.pop_back()) {
        m_file.chop(m_blocks.back().size);
    }
}

QByteArray LogbookLines::bytes(const Logbook &log)
{
    prepare(log);
    return m_file;
}

void LogbookLines::prepare(const Logbook &log)
{
    const std::span<const LogEntry> entries(log.begin(), log.end());
    constexpr auto size = static_cast<std::size_t>(blockSize);
    const std::size_t count = (entries.size() + size - 1) / size;
    keepBlocks(count);
    m_blocks.resize(count);
    const auto linesOfBlock = [&](std::size_t number) {
        const auto rest = entries.subspan(number * size);
        return linesOf(rest.first(std::min(size, rest.size())), m_codePage);
    };
    if (std::ranges::count(m_blocks, false, &Block::kept) > fewBlocks) {
        putTogether(linesOfBlock);
        return;
    }
    qsizetype at = 0;
    for (std::size_t number = 0; number < m_blocks.size(); ++number) {
        Block &block = m_blocks[number];
        if (!block.kept) {
            const QByteArray lines = linesOfBlock(number);
            put(m_file, at, block.size, lines);
            block = {true, lines.size()};
        }
        at += block.size;
    }
}

void LogbookLines::putTogether(const std::function<QByteArray(std::size_t)> &linesOfBlock)
{
    const QByteArray before = std::move(m_file);
    m_file = {};
    m_file.reserve(before.size());
    qsizetype at = 0;
    for (std::size_t number = 0; number < m_blocks.size(); ++number) {
        Block &block = m_blocks[number];
        const qsizetype size = block.size;
        const QByteArray lines = block.kept ? before.sliced(at, size) : linesOfBlock(number);
        m_file += lines;
        block = {true, lines.size()};
        at += size;
    }
    m_file.squeeze();
}

} // namespace quillon
