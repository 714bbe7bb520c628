#pragma once

#include "import/importcolumns.h"
#include "import/importvalues.h"
#include "import/textencoding.h"

#include <QChar>
#include <QStringList>
#include <QStringView>
#include <QTimeZone>

#include <functional>
#include <optional>
#include <vector>

namespace quillon {

/// What a file of receptions is, told by its content.
enum class ImportKind {
    Columns, ///< a heading that nobody here knows: the listener says which column is what
    FMList, ///< the CSV export of a logbook that FMList keeps
    WebServer, ///< the CSV of the loggers of a web server for receivers
    Tef, ///< logbook.csv of a TEF6686 receiver
    Xdr, ///< a log of XDR-GTK, one file a station
    Urds, ///< *_fm_rds.csv
    Logbook, ///< a logbook of this program
    OlderLogbook, ///< the same, of ten fields
    Shown, ///< the CSV that this program writes of shown receptions
};

/// What the listener reads for it: "FMList logbook (CSV)" ...
[[nodiscard]] QString importKindCaption(ImportKind kind);

/// How a file is read.
struct ImportFormat
{
    ImportKind kind = ImportKind::Columns;
    TextEncoding encoding = TextEncoding::Utf8;
    QChar separator = u',';
    bool decimalComma = false;
    DateOrder dates = DateOrder::DayFirst;
    bool localTime = false; ///< times are not UTC
    qsizetype headingLine = 0; ///< the number of its line; 0 for a file without a heading
    std::vector<ImportColumn> columns;
    bool guessed = false; ///< the listener has not yet said what the columns are

    /// True for a kind whose cells stand between separators and may be quoted.
    [[nodiscard]] bool hasColumns() const { return kind != ImportKind::Xdr; }
    [[nodiscard]] bool hasQuotes() const;
    /// True for the kinds whose fields come in as they are: those that this program writes.
    [[nodiscard]] bool isOwn() const;
};

/// What the listener has set himself; the rest is told by the content.
struct FormatChoice
{
    std::optional<TextEncoding> encoding;
    std::optional<QChar> separator;
    std::optional<bool> decimalComma;
    std::optional<DateOrder> dates;
    std::optional<bool> localTime;
    std::optional<QTimeZone> zone; ///< of the local times
    std::optional<std::vector<ColumnUse>> columns; ///< by place
};

/// What the listener said of a heading once; nothing for one that he was not asked about.
using KnownHeadings = std::function<std::optional<FormatChoice>(const QStringList &heading)>;

/// The separators that are looked for, in this order.
inline constexpr std::array<QChar, 4> importSeparators {u';', u',', u'\t', u'|'};

/// The format of a text, whose encoding is settled. `notes` is true for a text with remarks of this program.
/// Throws what CsvReader throws.
[[nodiscard]] ImportFormat importFormat(
    QStringView text, bool notes, const FormatChoice &choice, const KnownHeadings &known);

} // namespace quillon
