#include "core/logbookfile.h"

#include "core/linebreaks.h"
#include "core/logbookline.h"
#include "core/logfields.h"
#include "platform/runtimeerror.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>
#include <vector>

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

// ASCII: no code page has another character there.
bool isInEveryCodePage(char byte)
{
    return static_cast<unsigned char>(byte) < 0x80;
}

// Cuts lines into fields and makes entries of them. The same stations come again and again, so texts that
// were met a little before are not made once more: equal ones share their characters.
class LineReader
{
public:
    LineReader(LogbookLayout layout, const Regional &regional)
        : m_wanted(static_cast<std::size_t>(logbookPieces(layout) - 1))
        , m_regional(regional)
    {
    }

    /// The views must last as long as the reader.
    [[nodiscard]] LogEntry entryOf(QByteArrayView line)
    {
        cut(line);
        LogEntry entry;
        for (std::size_t i = 0; i < m_wanted; ++i) {
            const LogColumn &row = logFields()[i];
            if (!row.text) {
                entry.dateTime = moment(m_fields[i]);
            } else if (row.field != LogField::Notes) {
                entry.*row.text = text(i, m_fields[i]);
            } else if (!m_fields[i].isEmpty()) {
                entry.notes = unfoldedLineBreaks(m_regional.codePage.decode(m_fields[i]));
            }
        }
        return entry;
    }

    /// Whether the last line had its fields, each ended by "|", and nothing else.
    [[nodiscard]] bool isWhole() const { return m_isWhole; }

private:
    struct Known
    {
        QByteArrayView bytes;
        QString text;
    };

    void cut(QByteArrayView line)
    {
        const char *at = line.begin();
        for (std::size_t i = 0; i < m_wanted; ++i) {
            const char *const end = std::find(at, line.end(), '|');
            m_fields[i] = {at, end};
            if (end == line.end()) {
                // The "|" after the last field may be missing, but no field may.
                m_isWhole = false;
                return requireLast(i, line);
            }
            at = end + 1;
        }
        m_isWhole = at == line.end();
    }

    void requireLast(std::size_t field, QByteArrayView line) const
    {
        if (field + 1 < m_wanted) {
            throw RuntimeError(ErrorName::SubscriptOutOfRange,
                u"the line has %1 pieces instead of %2: \"%3\""_s.arg(field + 1)
                    .arg(m_wanted + 1)
                    .arg(m_regional.codePage.decode(line)));
        }
    }

    [[nodiscard]] QString text(std::size_t field, QByteArrayView bytes)
    {
        if (bytes.isEmpty()) {
            return {};
        }
        Known &known = m_known[field][placeOf(bytes)];
        if (known.bytes != bytes) {
            known = {bytes, m_regional.codePage.decode(bytes)};
        }
        return known.text;
    }

    // Without a string for the form in which the program writes.
    [[nodiscard]] DateTime moment(QByteArrayView bytes) const
    {
        std::array<char16_t, std::tuple_size_v<decltype(generalCharacters({}))>> plain {};
        if (bytes.size() == std::ssize(plain) && std::ranges::all_of(bytes, isInEveryCodePage)) {
            std::ranges::copy(bytes, plain.begin());
            if (const auto quick = parseDateTime(QStringView(plain), m_regional.months)) {
                return *quick;
            }
        }
        return toDateTime(m_regional.codePage.decode(bytes), m_regional.months, u"Date/Time"_s);
    }

    [[nodiscard]] static std::size_t placeOf(QByteArrayView bytes)
    {
        std::size_t sum = static_cast<std::size_t>(bytes.size());
        for (const char byte : bytes) {
            sum = sum * 31 + static_cast<unsigned char>(byte);
        }
        return sum % places;
    }

    static constexpr std::size_t places = 1024;

    std::size_t m_wanted;
    const Regional &m_regional;
    std::array<QByteArrayView, logFieldCount> m_fields;
    bool m_isWhole = true;
    std::vector<std::array<Known, places>> m_known {logFieldCount};
};

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
    LineReader reader(layout, regional);
    QByteArrayView rest = file;
    qsizetype number = 1;
    while (!rest.isEmpty()) {
        const auto line = logbookLine(rest, logbookPieces(layout));
        try {
            log.AddEntry(reader.entryOf(line.text));
        } catch (const RuntimeError &error) {
            throwAtLine(error, fileName, number);
        }
        // What stands behind the last field is not kept in memory, a deleted entry is not written again.
        whole = whole && reader.isWhole() && !line.text.startsWith("delete|");
        number += line.lineFeeds;
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
