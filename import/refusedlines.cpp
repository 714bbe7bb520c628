#include "import/refusedlines.h"

#include "import/csv.h"

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView firstLine =
    "#! Receptions that Quillon refused: mend the lines and import this file again.";
constexpr QByteArrayView fileMark = "#! file: ";

QByteArray remark(const QString &text)
{
    return (remarkMark + QString(text).replace(u'\r', u' ').replace(u'\n', u' ')).toUtf8() + "\r\n";
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
            ImportSource part;
            part.name = QString::fromUtf8(line.sliced(fileMark.size()).trimmed());
            part.hasRemarks = true;
            part.linesBefore = number;
            parts.push_back(std::move(part));
        } else if (!parts.empty()) {
            parts.back().bytes.append(line.data(), line.size());
        }
        bytes = bytes.sliced(length);
    }
    return parts;
}

} // namespace quillon
