#include "import/importkinds.h"

#include "core/logbookline.h"
#include "core/logfields.h"
#include "platform/datetime.h"
#include "platform/numbers.h"

#include <algorithm>
#include <initializer_list>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

bool has(std::span<const QString> heading, QStringView name)
{
    return std::ranges::any_of(heading, [name](const QString &cell) {
        return QStringView(cell).trimmed().compare(name, Qt::CaseInsensitive) == 0;
    });
}

bool hasAll(std::span<const QString> heading, std::initializer_list<QStringView> names)
{
    return std::ranges::all_of(names, [heading](QStringView name) { return has(heading, name); });
}

ColumnUse useOfField(LogField field)
{
    switch (field) {
    case LogField::PiCode:
        return ColumnUse::PiCode;
    case LogField::DateTime:
        return ColumnUse::DateTime;
    case LogField::Prop:
        return ColumnUse::Prop;
    case LogField::Freq:
        return ColumnUse::Freq;
    case LogField::Transmitter:
        return ColumnUse::Transmitter;
    case LogField::Country:
        return ColumnUse::Country;
    case LogField::Notes:
        return ColumnUse::NotesText;
    case LogField::RdsName:
        return ColumnUse::Name;
    case LogField::Power:
        return ColumnUse::Power;
    case LogField::Dist:
        return ColumnUse::Dist;
    case LogField::FMList:
        return ColumnUse::FMList;
    case LogField::Uid:
        return ColumnUse::Uid;
    }
    return ColumnUse::Nothing;
}

// The column of the grid with this caption; nothing for a caption that it has not.
std::optional<ColumnUse> useOfCaption(QStringView caption)
{
    for (int i = 0; i < allColumnCount; ++i) {
        const LogColumn &column = logColumn(static_cast<GridColumn>(i));
        if (column.caption == caption) {
            return column.field ? useOfField(*column.field) : ColumnUse::Nothing;
        }
    }
    return std::nullopt;
}

// The heading of what this program writes of the grid; any of its columns may be missing but Date/Time and
// Freq.
std::optional<KnownHeading> shownHeading(std::span<const QString> heading)
{
    KnownHeading found {ImportKind::Shown, {}, false};
    for (const QString &cell : heading) {
        const auto use = useOfCaption(cell);
        if (!use) {
            return std::nullopt;
        }
        found.columns.push_back({cell, *use});
    }
    return hasAll(heading, {u"Date/Time", u"Freq"}) ? std::optional(found) : std::nullopt;
}

} // namespace

std::optional<KnownHeading> kindOfHeading(std::span<const QString> heading)
{
    if (auto shown = shownHeading(heading)) {
        return shown;
    }
    if (hasAll(heading, {u"Propa", u"MHz"})) {
        return KnownHeading {ImportKind::FMList, guessedColumns(heading), false};
    }
    if (hasAll(heading, {u"Date", u"Time", u"Frequency", u"PI", u"Radiotext"})) {
        return KnownHeading {ImportKind::Tef, guessedColumns(heading), false};
    }
    const bool utc = has(heading, u"time(utc)") || has(heading, u"time (utc)");
    if (hasAll(heading, {u"date", u"freq", u"pi", u"ps", u"id"}) && (utc || has(heading, u"time"))) {
        return KnownHeading {ImportKind::WebServer, guessedColumns(heading), !utc};
    }
    return std::nullopt;
}

std::optional<ImportKind> logbookKind(QStringView text, bool notes)
{
    while (notes && text.startsWith(remarkMark)) {
        text = text.sliced(logbookPhysicalLine(text).length);
    }
    for (const auto &[kind, pieces] : {std::pair {ImportKind::Logbook, currentLogbookPieces},
             std::pair {ImportKind::OlderLogbook, olderLogbookPieces}}) {
        const auto line = logbookLine(text, pieces);
        // A heading with as many "|" has words where a logbook has its moment.
        if (logbookPieces(line.text) == pieces && std::ranges::any_of(line.text.split(u'|')[1], isDigit)) {
            return kind;
        }
    }
    return std::nullopt;
}

std::vector<ImportColumn> logbookColumns(ImportKind kind)
{
    std::vector<ImportColumn> columns;
    for (std::size_t i = 0; i < logFields().size(); ++i) {
        const LogColumn &field = logFields()[i];
        if (kind == ImportKind::Logbook || field.inOlderLayout) {
            columns.push_back({field.caption.toString(), useOfField(static_cast<LogField>(i))});
        }
    }
    return columns;
}

bool isUrds(std::span<const CsvRow> rows)
{
    constexpr int firstHeader = 10;
    constexpr int lastHeader = 17;
    bool hasReception = false;
    for (const CsvRow &row : rows) {
        bool isNumber = false;
        const int kind = row.cell(0).trimmed().toInt(&isNumber);
        const bool isReception = (kind == 30 || kind == 31) && row.cells.size() > 3;
        if (!isNumber || (!isReception && (kind < firstHeader || kind > lastHeader))) {
            return false;
        }
        hasReception = hasReception || isReception;
    }
    return hasReception;
}

std::vector<ImportColumn> urdsColumns()
{
    using enum ColumnUse;
    return {{u"kind"_s, Nothing}, {u"epoch"_s, Epoch}, {u"freq"_s, Nothing}, {u"Hz"_s, Freq},
        {u"rds"_s, Notes}, {u"min"_s, Notes}, {u"max"_s, Notes}, {u"time"_s, Notes}, {u"lat"_s, Notes},
        {u"lon"_s, Notes}, {u"mode"_s, Notes}, {u"alt"_s, Notes}, {u"gps time"_s, Notes}, {u"PI"_s, PiCode},
        {u"PI count"_s, Notes}, {u"PS"_s, Name}, {u"PS count"_s, Notes}, {u"TA"_s, Notes}, {u"TP"_s, Notes},
        {u"music"_s, Notes}, {u"PTY"_s, Notes}, {u"group"_s, Notes}, {u"stereo"_s, Notes}};
}

} // namespace quillon
