#include "import/refusedlines.h"

#include "import/csv.h"
#include "import/importlimits.h"
#include "platform/runtimeerror.h"

#include <algorithm>
#include <array>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView firstLine =
    "#! Receptions that Quillon refused: mend the lines and import this file again.";
constexpr QByteArrayView fileMark = "#! file: ";
constexpr QByteArrayView readMark = "#! read with: ";
constexpr QStringView datesKey = u"dates=";
constexpr QStringView decimalKey = u"decimal=";
constexpr QStringView timesKey = u"times=";
constexpr QStringView separatorKey = u"separator=";
constexpr QStringView columnsKey = u"columns=";
constexpr std::array<QStringView, importSeparators.size()> separatorWords {
    u"semicolon", u"comma", u"tab", u"bar"};

QByteArray remark(const QString &text)
{
    return (remarkMark + QString(text).replace(u'\r', u' ').replace(u'\n', u' ')).toUtf8() + "\r\n";
}

// The separator and what each column is, where the file has columns that the listener need not be asked
// about.
QString columnsRemark(const ImportFormat &format)
{
    if (!format.hasColumns() || format.guessed) {
        return {};
    }
    const auto separator = std::ranges::find(importSeparators, format.separator) - importSeparators.begin();
    QStringList uses;
    for (const ImportColumn &column : format.columns) {
        uses += columnUseKey(column.use);
    }
    return u"; "_s + separatorKey + separatorWords.at(static_cast<std::size_t>(separator)) + u"; "_s
        + columnsKey + uses.join(u',');
}

// The line that says what the columns are. A file without one is given one: the first of the few lines that
// are left would be taken for it.
QString headingOf(const ImportReading &reading)
{
    if (reading.format.kind != ImportKind::Columns || reading.format.headingLine > 0) {
        return reading.headingText;
    }
    QStringList names;
    for (const ImportColumn &column : reading.format.columns) {
        names += column.name;
    }
    return names.join(reading.format.separator);
}

std::optional<QChar> separatorOf(QStringView word)
{
    const auto found = std::ranges::find(separatorWords, word);
    return found == separatorWords.end()
        ? std::nullopt
        : std::optional(importSeparators.at(static_cast<std::size_t>(found - separatorWords.begin())));
}

std::optional<std::vector<ColumnUse>> columnsOf(QStringView words)
{
    std::vector<ColumnUse> uses;
    for (const QStringView word : words.tokenize(u',')) {
        const auto use = columnUseOfKey(word);
        if (!use) {
            return std::nullopt;
        }
        uses.push_back(*use);
    }
    return uses;
}

// How the file was read. The few lines that are left of it may not tell. Its encoding is UTF-8 now.
QByteArray choiceRemark(const ImportReading &reading)
{
    const ImportFormat &format = reading.format;
    const QString times = format.localTime ? QString::fromLatin1(reading.zone.id()) : u"UTC"_s;
    return readMark
        + (datesKey + (format.dates == DateOrder::MonthFirst ? "month first; "_L1 : "day first; "_L1)
            + decimalKey + (format.decimalComma ? "comma; "_L1 : "point; "_L1) + timesKey + times
            + columnsRemark(format))
              .toUtf8()
        + "\r\n";
}

// What choiceRemark says; what is none of it stays open.
FormatChoice choiceOf(QByteArrayView remark)
{
    FormatChoice choice;
    const QString text = QString::fromUtf8(remark);
    for (const QStringView part : QStringView(text).split(u';')) {
        const QStringView word = part.trimmed();
        if (word.startsWith(datesKey)) {
            choice.dates = word.endsWith(u"month first") ? DateOrder::MonthFirst : DateOrder::DayFirst;
        } else if (word.startsWith(decimalKey)) {
            choice.decimalComma = word.endsWith(u"comma");
        } else if (word.startsWith(separatorKey)) {
            choice.separator = separatorOf(word.sliced(separatorKey.size()));
        } else if (word.startsWith(columnsKey)) {
            choice.columns = columnsOf(word.sliced(columnsKey.size()));
        } else if (word.startsWith(timesKey)) {
            const QStringView times = word.sliced(timesKey.size());
            const QTimeZone zone(times.toLatin1());
            choice.localTime = times != u"UTC";
            if (*choice.localTime && zone.isValid()) {
                choice.zone = zone;
            }
        }
    }
    return choice;
}

} // namespace

QByteArray refusedLines(std::span<const ImportSource> sources, std::span<const ImportReading> readings)
{
    QByteArray bytes = firstLine.toByteArray() + "\r\n";
    for (std::size_t i = 0; i < readings.size(); ++i) {
        const ImportReading &reading = readings[i];
        const bool refused = std::ranges::any_of(reading.rows, &ImportRow::isRefused);
        if (!refused && reading.refusal.isEmpty()) {
            continue;
        }
        bytes += remark(u"file: "_s + sources[i].name);
        if (!reading.format.isOwn()) {
            bytes += choiceRemark(reading);
        }
        if (!reading.refusal.isEmpty()) {
            bytes += remark(u"not read to its end: "_s + reading.refusal);
        }
        if (const QString heading = headingOf(reading); !heading.isEmpty()) {
            bytes += heading.toUtf8() + "\r\n";
        }
        for (const ImportRow &row : reading.rows) {
            if (row.isRefused()) {
                bytes += remark(u"line %1: "_s.arg(row.line) + row.refusal);
                bytes += row.text.toUtf8() + "\r\n";
            }
        }
    }
    return bytes;
}

bool isRefusedLines(QByteArrayView bytes)
{
    constexpr QByteArrayView byteOrderMark = "\xEF\xBB\xBF";
    return (bytes.startsWith(byteOrderMark) ? bytes.sliced(byteOrderMark.size()) : bytes)
        .startsWith(firstLine);
}

std::vector<ImportSource> partsOfRefusedLines(QByteArrayView bytes)
{
    std::vector<ImportSource> parts;
    qsizetype number = 0;
    while (!bytes.isEmpty()) {
        const qsizetype end = bytes.indexOf('\n');
        const qsizetype length = end < 0 ? bytes.size() : end + 1;
        const QByteArrayView line = bytes.first(length);
        ++number;
        if (line.startsWith(fileMark)) {
            if (parts.size() >= static_cast<std::size_t>(mostImportFiles)) {
                throw RuntimeError(ErrorName::Overflow,
                    u"line %1: it holds the lines of more than %2 files"_s.arg(number).arg(mostImportFiles));
            }
            ImportSource part;
            part.name = QString::fromUtf8(line.sliced(fileMark.size()).trimmed());
            part.hasRemarks = true;
            part.linesBefore = number;
            parts.push_back(std::move(part));
        } else if (!parts.empty() && parts.back().bytes.isEmpty() && line.startsWith(readMark)) {
            parts.back().choice = choiceOf(line.sliced(readMark.size()).trimmed());
            parts.back().linesBefore = number;
        } else if (!parts.empty()) {
            parts.back().bytes.append(line.data(), line.size());
        }
        bytes = bytes.sliced(length);
    }
    return parts;
}

} // namespace quillon
