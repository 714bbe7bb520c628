#include "import/refusedlines.h"

#include "import/csv.h"
#include "import/importlimits.h"
#include "platform/runtimeerror.h"

#include <algorithm>

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

QByteArray remark(const QString &text)
{
    return (remarkMark + QString(text).replace(u'\r', u' ').replace(u'\n', u' ')).toUtf8() + "\r\n";
}

// How the file was read. The few lines that are left of it may not tell.
QByteArray choiceRemark(const ImportReading &reading)
{
    const ImportFormat &format = reading.format;
    const QString times = format.localTime ? QString::fromLatin1(reading.zone.id()) : u"UTC"_s;
    return readMark
        + (datesKey + (format.dates == DateOrder::MonthFirst ? "month first; "_L1 : "day first; "_L1)
            + decimalKey + (format.decimalComma ? "comma; "_L1 : "point; "_L1) + timesKey + times)
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
        if (!reading.headingText.isEmpty()) {
            bytes += reading.headingText.toUtf8() + "\r\n";
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
