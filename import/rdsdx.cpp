#include "import/rdsdx.h"

#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/runtimeerror.h"

#include <algorithm>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QStringView trimmedOfBlanks(QStringView text)
{
    while (text.startsWith(u' ')) {
        text = text.sliced(1);
    }
    while (text.endsWith(u' ')) {
        text.chop(1);
    }
    return text;
}

// The text between two columns, which are counted from 1 and both belong to it.
QStringView columns(QStringView line, qsizetype first, qsizetype last)
{
    return trimmedOfBlanks(line.mid(first - 1, last - first + 1));
}

// The whole number that a text of digits is; -1 for any other text.
int wholeNumber(QStringView text)
{
    return !text.isEmpty() && std::ranges::all_of(text, isDigit) ? text.toInt() : -1;
}

QString lastPart(const QString &path)
{
    return path.sliced(std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\')) + 1);
}

// What a line leaves behind for the next one.
struct Carried
{
    QString transmitter;
};

LogEntry entryOf(const RdsdxLine &fields, const std::optional<RdsdxStation> &station, DateTime date,
    const Carried &carried)
{
    LogEntry entry;
    entry.dateTime = rdsdxDateTime(date, fields.time);
    if (!station) {
        throw RuntimeError(ErrorName::SubscriptOutOfRange, u"the station text has no \"|\""_s);
    }
    entry.piCode = fields.piCode.toString();
    entry.freq = fields.freq.toString();
    entry.rdsName = fields.rdsName.toString();
    entry.country = fields.country.toString();
    entry.transmitter = carried.transmitter;
    entry.notes = station->notes;
    return entry;
}

// The entry of the line; nothing for one without a frequency.
std::optional<LogEntry> entryOfLine(
    QStringView line, DateTime date, Carried &carried, const std::function<void(const QString &)> &status)
{
    const RdsdxLine fields = rdsdxLine(line);
    const std::optional<RdsdxStation> station = rdsdxStation(fields.station);
    if (station && station->transmitter) {
        carried.transmitter = *station->transmitter;
    }
    if (fields.freq.isEmpty()) {
        status(u"No Frequency for "_s + line);
        return std::nullopt;
    }
    return entryOf(fields, station, date, carried);
}

RuntimeError atLine(const RuntimeError &error, const QString &path, qsizetype number, const QString &line)
{
    return {error.name(),
        u"Importing %1, line %2: %3: \"%4\""_s.arg(path, QString::number(number), error.doing(), line)};
}

} // namespace

RdsdxLine rdsdxLine(QStringView line)
{
    return {columns(line, 1, 6), columns(line, 8, 11), columns(line, 13, 20), columns(line, 22, 28),
        columns(line, 30, 32), trimmedOfBlanks(line.mid(33))};
}

DateTime rdsdxDate(const QString &path)
{
    const QStringView name = QStringView(path).last(lastPart(path).size());
    const CivilTime day {
        wholeNumber(name.mid(0, 4)), wholeNumber(name.mid(4, 2)), wholeNumber(name.mid(6, 2)), 0, 0, 0};
    const auto date = name.size() >= 8 ? fromCivil(day) : std::nullopt;
    if (!date) {
        throw RuntimeError(ErrorName::TypeMismatch,
            u"Importing %1: its name does not begin with a date (yyyymmdd)"_s.arg(path));
    }
    return *date;
}

DateTime rdsdxDateTime(DateTime date, QStringView time)
{
    CivilTime parts = civil(date);
    parts.hour = wholeNumber(trimmedOfBlanks(time.mid(0, 2)));
    parts.minute = wholeNumber(trimmedOfBlanks(time.mid(2, 2)));
    parts.second = wholeNumber(trimmedOfBlanks(time.mid(5, 2)));
    const auto moment = fromCivil(parts);
    if (!moment) {
        throw RuntimeError(
            ErrorName::TypeMismatch, u"the time of day \"%1\" is not hhnn, a separator and ss"_s.arg(time));
    }
    return *moment;
}

std::optional<RdsdxStation> rdsdxStation(QStringView station)
{
    const qsizetype bar = station.indexOf(u'|');
    if (bar < 0) {
        return std::nullopt;
    }
    const QStringView place = station.first(bar);
    const QStringView rest = station.sliced(bar + 1);
    const qsizetype next = rest.indexOf(u'|');
    RdsdxStation result {{}, (next < 0 ? rest : rest.first(next)).toString()};
    const qsizetype comma = place.indexOf(u',');
    if (comma == place.lastIndexOf(u',')) {
        result.transmitter = place.sliced(comma + 1).toString();
    }
    return result;
}

RdsdxImport readRdsdx(QByteArrayView file, const QString &path, const Regional &regional,
    const std::function<void(const QString &)> &status)
{
    const DateTime date = rdsdxDate(path);
    const QList<QByteArrayView> lines = splitLines(file);
    if (lines.isEmpty()) {
        throw RuntimeError(ErrorName::InputPastEndOfFile,
            u"Importing %1: the file is empty, it has no header line"_s.arg(path));
    }
    Carried carried;
    RdsdxImport import;
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QString line = regional.codePage.decode(lines[i]);
        try {
            if (auto entry = entryOfLine(line, date, carried, status)) {
                import.entries.push_back(std::move(*entry));
                import.lines.push_back(i + 1);
            }
        } catch (const RuntimeError &error) {
            import.failure = atLine(error, path, i + 1, line);
            break;
        }
    }
    return import;
}

RuntimeError atRdsdxLine(const RuntimeError &error, QByteArrayView file, const QString &path,
    qsizetype number, const Regional &regional)
{
    return atLine(error, path, number, regional.codePage.decode(splitLines(file).at(number - 1)));
}

} // namespace quillon
