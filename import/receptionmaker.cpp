#include "import/receptionmaker.h"

#include "core/fieldchecks.h"
#include "core/linebreaks.h"
#include "core/logfields.h"
#include "geo/distance.h"
#include "import/storable.h"
#include "platform/numbers.h"

#include <algorithm>
#include <array>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestName = 60; // of a column, in Notes
constexpr int distPlaces = 1; // as a distance is calculated
constexpr int powerPlaces = 6;

QString shown(const QString &cell)
{
    constexpr qsizetype longest = 40;
    QString text = QString(cell).replace(u'\r', u' ').replace(u'\n', u' ');
    if (text.size() > longest) {
        text = text.first(longest) + u"..."_s;
    }
    return u'"' + text + u'"';
}

// What an apostrophe in front keeps a spreadsheet from taking for a formula.
QString withoutGuard(const QString &cell)
{
    const bool guarded = cell.size() > 1 && cell[0] == u'\'' && QStringView(u"=+-@'").contains(cell[1]);
    return guarded ? cell.sliced(1) : cell;
}

} // namespace

// What the cells of a row give beside the fields of the entry.
struct ReceptionMaker::Parts
{
    QString moment;
    QString date;
    QString time;
    QString epoch;
    QString offset;
    QString details;
    bool doubtful = false;
    QStringList notes;
    QString refusal;

    void refuse(const QString &why)
    {
        if (refusal.isEmpty()) {
            refusal = why;
        }
    }
};

ReceptionMaker::ReceptionMaker(const ImportFormat &format, const ImportSurroundings &surroundings)
    : m_format(format)
    , m_surroundings(surroundings)
    , m_localTime(surroundings.zone)
{
}

std::optional<ImportRow> ReceptionMaker::made(const CsvRow &row)
{
    if (m_format.kind == ImportKind::Urds && row.cell(0).trimmed() != "30"_L1) {
        return std::nullopt;
    }
    ImportRow made;
    made.line = row.line;
    if (!row.problem.isEmpty()) {
        made.refusal = row.problem;
    } else {
        Parts parts;
        take(row, made, parts);
        made.refusal = parts.refusal;
        if (made.refusal.isEmpty()) {
            made.refusal = makeStorable(made, m_surroundings.regional.codePage, m_format.isOwn());
        }
    }
    if (made.isRefused()) {
        made.text = row.text.toString();
    }
    return made;
}

void ReceptionMaker::take(const CsvRow &row, ImportRow &made, Parts &parts)
{
    const std::size_t columns = m_format.columns.size();
    for (std::size_t i = 0; i < columns; ++i) {
        const ImportColumn &column = m_format.columns[i];
        takeCell(column, row.cell(i), made, parts);
    }
    for (std::size_t i = columns; i < row.cells.size(); ++i) {
        if (row.cells[i].trimmed().isEmpty()) {
            continue;
        }
        if (m_format.kind != ImportKind::Urds) {
            parts.refuse(u"The row has %1 columns instead of %2"_s.arg(row.cells.size()).arg(columns));
            break;
        }
        // What these rows have behind the columns that are known differs from recorder to recorder.
        takeCell({u"column %1"_s.arg(i + 1), ColumnUse::Notes}, row.cells[i], made, parts);
    }
    if (!parts.refusal.isEmpty()) {
        return;
    }
    parts.refuse(takeMoment(parts, made));
    LogEntry &entry = made.entry;
    if (m_format.isOwn()) {
        // A file whose lines were turned by another program has lost the log's line ends.
        if (!row.endsInCrLf && m_format.kind == ImportKind::Shown) {
            entry.notes = withLineEnds(entry.notes);
        }
        return;
    }
    if (entry.piCode.isEmpty()) {
        entry.piCode = piWithin(parts.details);
    }
    if (entry.country.isEmpty()) {
        entry.country = u"TBD"_s;
    }
    if (parts.doubtful) {
        parts.notes.prepend(u"PI?"_s);
    }
    if (!entry.notes.isEmpty()) {
        parts.notes.prepend(entry.notes);
    }
    entry.notes = parts.notes.join(u"; "_s);
}

void ReceptionMaker::takeCell(const ImportColumn &column, const QString &cell, ImportRow &made, Parts &parts)
{
    const bool own = m_format.isOwn();
    const QString text =
        own ? (m_format.kind == ImportKind::Shown ? withoutGuard(cell) : cell) : cell.trimmed();
    LogEntry &entry = made.entry;
    switch (column.use) {
    case ColumnUse::Nothing:
        break;
    case ColumnUse::DateTime:
        parts.moment = text;
        break;
    case ColumnUse::Date:
        parts.date = text;
        break;
    case ColumnUse::Time:
        parts.time = text;
        break;
    case ColumnUse::Epoch:
        parts.epoch = text;
        break;
    case ColumnUse::UtcOffset:
        parts.offset = text;
        break;
    case ColumnUse::Freq:
        takeFrequency(text, made, parts);
        break;
    case ColumnUse::PiCode:
        takePi(text, made, parts);
        break;
    case ColumnUse::Name:
        takeName(column.name, text, made, parts);
        break;
    case ColumnUse::Country:
        entry.country = text;
        break;
    case ColumnUse::Transmitter:
        entry.transmitter = text;
        break;
    case ColumnUse::Power:
        entry.power = own ? text : number(text, 1, powerPlaces).toUpper();
        break;
    case ColumnUse::PowerWatts:
        entry.power = number(text, 1.0 / 1000, powerPlaces).toUpper();
        break;
    case ColumnUse::Dist:
        entry.dist = own ? text : number(text, m_surroundings.miles ? 1 / kilometresPerMile : 1, distPlaces);
        break;
    case ColumnUse::Prop:
        entry.prop = text;
        break;
    case ColumnUse::FMList:
        entry.fmlist = text;
        break;
    case ColumnUse::Uid:
        entry.uid = text;
        break;
    case ColumnUse::NotesText:
        entry.notes = m_format.kind == ImportKind::Shown ? text
            : own                                        ? unfoldedLineBreaks(text)
                                                         : withLineEnds(text);
        break;
    case ColumnUse::Details:
        parts.details = text;
        addNote(column.name, text, parts);
        break;
    case ColumnUse::Notes:
        addNote(column.name, text, parts);
        break;
    }
}

void ReceptionMaker::addNote(const QString &name, const QString &text, Parts &parts)
{
    if (!text.isEmpty()) {
        // The mark with which a receiver says yes.
        const QString value = text == u"\u2022" ? u"yes"_s : withLineEnds(text);
        const QStringView column = QStringView(name).trimmed();
        parts.notes += column.first(std::min(column.size(), longestName)) + u": "_s + value;
    }
}

void ReceptionMaker::takeFrequency(const QString &text, ImportRow &made, Parts &parts) const
{
    if (m_format.isOwn()) {
        made.entry.freq = text;
        return;
    }
    const auto freq = importedFrequency(text, m_format.decimalComma);
    if (freq) {
        made.entry.freq = *freq;
    } else {
        parts.refuse(
            text.isEmpty() ? u"Frequency Empty"_s : u"The frequency %1 is no number"_s.arg(shown(text)));
    }
}

void ReceptionMaker::takePi(const QString &text, ImportRow &made, Parts &parts) const
{
    if (m_format.isOwn()) {
        made.entry.piCode = text;
        return;
    }
    if (QStringView(text).compare(deletedPiCode, Qt::CaseInsensitive) == 0) {
        made.entry.piCode = text;
        return;
    }
    if (const auto pi = importedPi(text)) {
        made.entry.piCode = pi->code;
        parts.doubtful = pi->doubtful && !pi->code.isEmpty();
    } else {
        parts.refuse(u"The PI code %1 is not four hexadecimal digits"_s.arg(shown(text)));
    }
}

void ReceptionMaker::takeName(const QString &column, const QString &text, ImportRow &made, Parts &parts) const
{
    if (m_format.isOwn()) {
        made.entry.rdsName = text;
        return;
    }
    made.entry.rdsName = importedRdsName(text);
    if (text.size() > rdsNameLength) {
        addNote(column, text, parts);
    }
}

// A number as the log writes it, with its unit taken off; a text that is none stays.
QString ReceptionMaker::number(const QString &cell, double factor, int places) const
{
    QStringView text = cell;
    double unit = 1;
    for (const auto &[word, by] : {std::pair {QStringView(u"kW"), 1.0}, std::pair {QStringView(u"W"), 0.001},
             std::pair {QStringView(u"km"), 1.0}}) {
        if (text.endsWith(word, Qt::CaseInsensitive)) {
            text = text.chopped(word.size()).trimmed();
            // A unit in the cell says it of this cell, whatever the heading says.
            unit = by;
            factor = factor == 0.001 ? 1 : factor;
            break;
        }
    }
    const auto plain = plainNumber(text, m_format.decimalComma);
    if (!plain) {
        return cell;
    }
    const double by = unit * factor;
    return by == 1 ? *plain : plainText(rounded(*numeric(*plain) * by, places));
}

// Sets the moment of the entry; why there is none otherwise.
QString ReceptionMaker::takeMoment(const Parts &parts, ImportRow &made)
{
    const MonthNames &months = m_surroundings.regional.months;
    ImportedMoment moment;
    if (!parts.epoch.isEmpty()) {
        const auto seconds = numeric(parts.epoch);
        const auto last = fromCivil({9999, 12, 31, 23, 59, 59});
        if (!seconds || *seconds < 0 || *seconds > double(last->seconds)) {
            return u"The time %1 is not the seconds since 1970"_s.arg(shown(parts.epoch));
        }
        made.entry.dateTime = {static_cast<qint64>(*seconds)};
        return {};
    }
    if (!parts.moment.isEmpty()) {
        auto found = importedMoment(parts.moment, m_format.dates, months);
        if (!found) {
            // A day without a time of day, as the log itself reads it.
            const auto plain = m_format.isOwn() ? parseDateTime(parts.moment, months) : std::nullopt;
            if (!plain) {
                return u"Date and time %1 are none"_s.arg(shown(parts.moment));
            }
            found = ImportedMoment {*plain, true};
        }
        moment = *found;
    } else {
        const auto date = importedDate(parts.date, m_format.dates, months);
        if (!date) {
            return parts.date.isEmpty() ? u"There is no date"_s
                                        : u"The date %1 is none"_s.arg(shown(parts.date));
        }
        const auto time = importedTime(parts.time);
        if (!time) {
            return parts.time.isEmpty() ? u"There is no time"_s
                                        : u"The time %1 is none"_s.arg(shown(parts.time));
        }
        moment = {{date->seconds + time->seconds}, time->isUtc};
    }
    if (!parts.offset.isEmpty()) {
        const auto offset = importedOffset(parts.offset);
        if (!offset) {
            return u"The UTC offset %1 is none"_s.arg(shown(parts.offset));
        }
        made.entry.dateTime = {moment.moment.seconds - *offset};
        return {};
    }
    made.entry.dateTime =
        m_format.localTime && !moment.isUtc ? m_localTime.utcOf(moment.moment) : moment.moment;
    return {};
}

} // namespace quillon
