#include "import/importfile.h"

#include "core/logbookline.h"
#include "import/csv.h"
#include "import/importlimits.h"
#include "import/xdrlog.h"
#include "platform/runtimeerror.h"

#include <algorithm>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostExampleLength = 60;

// What a file gives, row by row.
class Collector
{
public:
    Collector(ImportReading &reading, qsizetype mostRows)
        : m_reading(reading)
        , m_most(static_cast<std::size_t>(mostRows))
    {
    }

    void add(ImportRow row)
    {
        if (m_reading.rows.size() >= m_most) {
            throw RuntimeError(ErrorName::Overflow,
                u"line %1: an import takes in no more than %2 lines"_s.arg(row.line).arg(mostImportRows));
        }
        m_reading.rows.push_back(std::move(row));
    }

    void example(const CsvRow &row)
    {
        for (std::size_t i = 0; i < m_reading.examples.size() && i < row.cells.size(); ++i) {
            if (m_reading.examples[i].isEmpty()) {
                m_reading.examples[i] = row.cells[i].simplified().first(
                    std::min(row.cells[i].simplified().size(), mostExampleLength));
            }
        }
    }

private:
    ImportReading &m_reading;
    std::size_t m_most;
};

// The rows of a file whose cells stand between separators.
void readColumns(QStringView text, bool notes, ImportReading &reading, const ImportSurroundings &surroundings,
    Collector &collector)
{
    const ImportFormat &format = reading.format;
    CsvReader reader(text, {format.separator, format.hasQuotes(), notes});
    ReceptionMaker maker(format, surroundings);
    reading.examples.resize(format.columns.size());
    CsvRow row;
    while (reader.next(row)) {
        if (row.isEmpty() || row.line < format.headingLine) {
            continue;
        }
        if (row.line == format.headingLine) {
            reading.headingText = row.text.toString();
            continue;
        }
        // The texts of a TEF6686 come without quotes; a separator in the last belongs to it.
        if (format.kind == ImportKind::Tef && row.cells.size() > format.columns.size()) {
            for (std::size_t i = format.columns.size(); i < row.cells.size(); ++i) {
                row.cells[format.columns.size() - 1] += format.separator + row.cells[i];
            }
            row.cells.resize(format.columns.size());
        }
        collector.example(row);
        if (auto made = maker.made(row)) {
            collector.add(std::move(*made));
        }
    }
}

// The lines of a logbook, of which the notes can hold a line feed.
void readLogbookLines(QStringView text, bool notes, ImportReading &reading,
    const ImportSurroundings &surroundings, Collector &collector)
{
    // So far is looked for the rest of a line that is not whole.
    constexpr qsizetype furthest = 4096;
    const qsizetype pieces = static_cast<qsizetype>(reading.format.columns.size()) + 1;
    ReceptionMaker maker(reading.format, surroundings);
    reading.examples.resize(reading.format.columns.size());
    CsvRow row;
    qsizetype number = 1;
    while (!text.isEmpty()) {
        const auto physical = logbookPhysicalLine(text);
        const auto line = logbookLine(text.first(std::min(text.size(), physical.length + furthest)), pieces);
        row = {};
        row.line = number;
        row.text = line.text;
        row.endsInCrLf = true;
        number += std::ranges::count(text.first(line.length), u'\n');
        text = text.sliced(line.length);
        if (row.isBlank() || (notes && row.text.startsWith(remarkMark))) {
            continue;
        }
        const qsizetype found = logbookPieces(row.text);
        if (found == pieces || (found == pieces - 1 && !row.text.endsWith(u'|'))) {
            for (const QStringView cell : row.text.split(u'|')) {
                row.cells.push_back(cell.toString());
            }
            row.cells.resize(reading.format.columns.size());
            collector.example(row);
        } else {
            row.problem = u"The line has %1 fields instead of %2"_s.arg(found - 1).arg(pieces - 1);
            if (found > pieces) {
                row.problem += u": \"|\" separates the fields"_s;
            }
        }
        // A deleted reception was never written; one that says so is refused like any other.
        if (auto made = maker.made(row)) {
            collector.add(std::move(*made));
        }
    }
}

// What the grid shows of the tags, instead of them: where no cell holds tags it stands for them.
void takeShownTags(std::vector<ImportRow> &rows)
{
    if (std::ranges::any_of(
            rows, [](const ImportRow &row) { return row.entry.fmlist.contains("fml="_L1); })) {
        return;
    }
    for (ImportRow &row : rows) {
        QString &tags = row.entry.fmlist;
        if (tags == "Sent"_L1 || tags == "Multi"_L1 || tags == "None"_L1) {
            tags = u"fml=%1#"_s.arg(tags.toLower());
        }
    }
}

} // namespace

ImportReading readImportFile(const ImportSource &source, const FormatChoice &choice,
    const KnownHeadings &known, const ImportSurroundings &general, qsizetype mostRows)
{
    ImportReading reading;
    ImportSurroundings surroundings = general;
    surroundings.zone = choice.zone.value_or(general.zone);
    reading.zone = surroundings.zone;
    const TextEncoding page = encodingOfPage(surroundings.regional.codePage.number());
    const TextEncoding encoding = choice.encoding.value_or(encodingOf(source.bytes, page));
    reading.format.encoding = encoding;
    if (!source.refusal.isEmpty()) {
        reading.refusal = source.refusal;
        return reading;
    }
    try {
        const QString text = decodedText(source.bytes, encoding);
        reading.format = importFormat(text, source.hasRemarks, choice, known);
        reading.format.encoding = encoding;
        for (const ImportColumn &column : reading.format.columns) {
            reading.heading += column.name;
        }
        Collector collector(reading, mostRows);
        switch (reading.format.kind) {
        case ImportKind::Xdr:
            for (ImportRow &row :
                readXdrLog(text, source.name, source.hasRemarks, reading.format.localTime, surroundings)) {
                collector.add(std::move(row));
            }
            break;
        case ImportKind::Logbook:
        case ImportKind::OlderLogbook:
            readLogbookLines(text, source.hasRemarks, reading, surroundings, collector);
            break;
        default:
            if (reading.format.columns.empty()) {
                reading.refusal = u"There are no columns in it, and no log that is known"_s;
            } else {
                readColumns(text, source.hasRemarks, reading, surroundings, collector);
            }
            break;
        }
    } catch (const RuntimeError &error) {
        reading.refusal = error.doing();
    }
    if (reading.format.kind == ImportKind::Shown) {
        takeShownTags(reading.rows);
    }
    for (ImportRow &row : reading.rows) {
        row.line += source.linesBefore;
    }
    return reading;
}

} // namespace quillon
