#include "import/importformat.h"

#include "core/logbookline.h"
#include "core/logfields.h"
#include "import/csv.h"
#include "import/importkinds.h"
#include "import/xdrlog.h"
#include "platform/numbers.h"
#include "platform/runtimeerror.h"

#include <algorithm>
#include <map>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int headRows = 60; // a heading stands among them
constexpr int sampleRows = 300; // they tell the decimal sign and the order of dates

std::vector<CsvRow> firstRows(QStringView text, CsvLayout layout, int count)
{
    CsvReader reader(text, layout);
    std::vector<CsvRow> rows;
    CsvRow row;
    while (static_cast<int>(rows.size()) < count && reader.next(row)) {
        if (!row.isBlank()) {
            rows.push_back(row);
        }
    }
    return rows;
}

// The same; none where a line is not one of this layout.
std::vector<CsvRow> firstRowsIfAny(QStringView text, CsvLayout layout)
{
    try {
        return firstRows(text, layout, headRows);
    } catch (const RuntimeError &) {
        return {};
    }
}

// How many rows have as many cells as the most usual row of more than one cell, and how many that is.
std::pair<int, std::size_t> usualWidth(const std::vector<CsvRow> &rows)
{
    std::map<std::size_t, int> widths;
    for (const CsvRow &row : rows) {
        ++widths[row.cells.size()];
    }
    std::pair<int, std::size_t> usual {0, 0};
    for (const auto &[width, count] : widths) {
        if (width > 1 && count >= usual.first) {
            usual = {count, width};
        }
    }
    return usual;
}

// A cell of a number, not a name.
bool looksLikeData(const CsvRow &row)
{
    return std::ranges::any_of(row.cells, [](const QString &cell) { return numeric(cell).has_value(); });
}

struct Sampled
{
    int commas = 0;
    int points = 0;
    bool dayBehindMonth = false;
    bool monthBehindDay = false;
    bool slashes = false;
};

void sampleNumber(QStringView cell, Sampled &sampled)
{
    const qsizetype comma = cell.lastIndexOf(u',');
    const qsizetype point = cell.lastIndexOf(u'.');
    if (comma > point && numeric(cell.first(comma)) && cell.count(u',') == 1) {
        ++sampled.commas;
    } else if (point > comma && cell.count(u'.') == 1) {
        ++sampled.points;
    }
}

void sampleDate(QStringView cell, Sampled &sampled)
{
    const QStringView day = cell.trimmed().split(u' ').front();
    const auto parts = day.split(day.contains(u'/') ? u'/' : day.contains(u'.') ? u'.' : u'-');
    if (parts.size() != 3 || parts[0].size() > 2) {
        return;
    }
    sampled.slashes = sampled.slashes || day.contains(u'/');
    sampled.monthBehindDay = sampled.monthBehindDay || parts[0].toInt() > 12;
    sampled.dayBehindMonth = sampled.dayBehindMonth || parts[1].toInt() > 12;
}

Sampled sample(const std::vector<CsvRow> &rows, const ImportFormat &format)
{
    Sampled sampled;
    for (const CsvRow &row : rows) {
        if (row.line <= format.headingLine) {
            continue;
        }
        for (std::size_t i = 0; i < format.columns.size() && i < row.cells.size(); ++i) {
            switch (format.columns[i].use) {
            case ColumnUse::Date:
            case ColumnUse::DateTime:
                sampleDate(row.cells[i], sampled);
                break;
            case ColumnUse::Freq:
            case ColumnUse::Power:
            case ColumnUse::PowerWatts:
            case ColumnUse::Dist:
                sampleNumber(row.cells[i], sampled);
                break;
            default:
                break;
            }
        }
    }
    return sampled;
}

// The layout in which a heading is known, or nothing.
std::optional<ImportFormat> knownHeading(QStringView text, bool notes, const FormatChoice &choice)
{
    for (const QChar separator : importSeparators) {
        if (choice.separator && *choice.separator != separator) {
            continue;
        }
        for (const CsvRow &row : firstRowsIfAny(text, {separator, true, notes})) {
            if (auto found = kindOfHeading(row.cells)) {
                ImportFormat format;
                format.kind = found->kind;
                format.columns = std::move(found->columns);
                format.localTime = found->localTime;
                format.separator = separator;
                format.headingLine = row.line;
                return format;
            }
        }
    }
    return std::nullopt;
}

// Any file with columns: the separator that cuts most rows into equally many cells, and the first such row as
// the heading.
ImportFormat anyColumns(QStringView text, bool notes, const FormatChoice &choice, const KnownHeadings &known)
{
    ImportFormat format;
    std::vector<CsvRow> rows;
    std::pair<int, std::size_t> usual {0, 0};
    for (const QChar separator : importSeparators) {
        if (choice.separator && *choice.separator != separator) {
            continue;
        }
        auto found = firstRows(text, {separator, true, notes}, headRows);
        const auto width = usualWidth(found);
        if (width > usual || rows.empty()) {
            usual = std::max(width, usual);
            rows = std::move(found);
            format.separator = separator;
        }
    }
    const auto first =
        std::ranges::find_if(rows, [&](const CsvRow &row) { return row.cells.size() == usual.second; });
    if (first == rows.end()) {
        return format;
    }
    std::vector<QString> heading = first->cells;
    if (looksLikeData(*first)) {
        for (std::size_t i = 0; i < heading.size(); ++i) {
            heading[i] = u"Column %1"_s.arg(i + 1);
        }
        format.headingLine = 0;
    } else {
        format.headingLine = first->line;
    }
    format.columns = guessedColumns(heading);
    format.guessed = true;
    format.localTime = std::ranges::any_of(
        heading, [](const QString &name) { return name.contains("local"_L1, Qt::CaseInsensitive); });
    const QStringList names(heading.begin(), heading.end());
    // Names that were given here are those of any file without a heading.
    if (const auto told = known && format.headingLine > 0 ? known(names) : std::nullopt;
        told && told->columns && told->columns->size() == format.columns.size()) {
        for (std::size_t i = 0; i < format.columns.size(); ++i) {
            format.columns[i].use = told->columns->at(i);
        }
        format.localTime = told->localTime.value_or(format.localTime);
        format.guessed = false;
    }
    return format;
}

ImportFormat formatOfContent(
    QStringView text, bool notes, const FormatChoice &choice, const KnownHeadings &known)
{
    if (const auto kind = logbookKind(text, notes)) {
        ImportFormat format;
        format.kind = *kind;
        format.separator = u'|';
        format.columns = logbookColumns(*kind);
        return format;
    }
    if (isXdrLog(text, notes)) {
        ImportFormat format;
        format.kind = ImportKind::Xdr;
        format.separator = u'\t';
        format.localTime = isLocalXdrLog(text, notes);
        return format;
    }
    for (const QChar separator : {u',', u';'}) {
        if (isUrds(firstRowsIfAny(text, {separator, true, notes}))) {
            ImportFormat format;
            format.kind = ImportKind::Urds;
            format.separator = choice.separator.value_or(separator);
            format.columns = urdsColumns();
            return format;
        }
    }
    if (auto format = knownHeading(text, notes, choice)) {
        return *format;
    }
    return anyColumns(text, notes, choice, known);
}

} // namespace

QString importKindCaption(ImportKind kind)
{
    switch (kind) {
    case ImportKind::Columns:
        return u"File with columns"_s;
    case ImportKind::FMList:
        return u"FMList logbook (CSV)"_s;
    case ImportKind::WebServer:
        return u"Web server logger (CSV)"_s;
    case ImportKind::Tef:
        return u"TEF6686 logbook"_s;
    case ImportKind::Xdr:
        return u"XDR-GTK log"_s;
    case ImportKind::Urds:
        return u"URDS (fm_rds.csv)"_s;
    case ImportKind::Logbook:
        return u"Logbook of this program"_s;
    case ImportKind::OlderLogbook:
        return u"Older logbook of this program"_s;
    case ImportKind::Shown:
        return u"CSV of this program"_s;
    }
    return {};
}

bool ImportFormat::hasQuotes() const
{
    return kind != ImportKind::Tef && kind != ImportKind::Logbook && kind != ImportKind::OlderLogbook;
}

bool ImportFormat::isOwn() const
{
    return kind == ImportKind::Logbook || kind == ImportKind::OlderLogbook || kind == ImportKind::Shown;
}

ImportFormat importFormat(
    QStringView text, bool notes, const FormatChoice &choice, const KnownHeadings &known)
{
    ImportFormat format = formatOfContent(text, notes, choice, known);
    if (choice.columns) {
        for (std::size_t i = 0; i < std::min(format.columns.size(), choice.columns->size()); ++i) {
            format.columns[i].use = choice.columns->at(i);
        }
        format.guessed = false;
    }
    Sampled sampled;
    if (format.hasColumns() && !format.isOwn()) {
        sampled = sample(firstRows(text, {format.separator, format.hasQuotes(), notes}, sampleRows), format);
        const bool commaParts = format.separator == u',' && format.kind != ImportKind::Columns;
        format.decimalComma = !commaParts && sampled.commas > sampled.points;
    }
    const bool monthFirst = sampled.dayBehindMonth
        ? !sampled.monthBehindDay
        : format.kind == ImportKind::Tef && sampled.slashes && !sampled.monthBehindDay;
    format.dates = monthFirst ? DateOrder::MonthFirst : DateOrder::DayFirst;
    format.decimalComma = choice.decimalComma.value_or(format.decimalComma);
    format.dates = choice.dates.value_or(format.dates);
    format.localTime = choice.localTime.value_or(format.localTime);
    return format;
}

} // namespace quillon
