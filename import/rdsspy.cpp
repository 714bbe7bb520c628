#include "import/rdsspy.h"

#include "platform/folder.h"
#include "platform/numbers.h"

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 secondsPerHour = 3600;

QString trimmedOfBlanks(const QString &text)
{
    const auto isNoBlank = [](QChar c) { return c != u' '; };
    const auto last = std::find_if(text.crbegin(), text.crend(), isNoBlank).base();
    const auto first = std::find_if(text.cbegin(), last, isNoBlank);
    return text.sliced(first - text.cbegin(), last - first);
}

QString withoutEnding(QString fileName)
{
    constexpr QLatin1StringView ending(".txt");
    if (fileName.endsWith(ending, Qt::CaseInsensitive)) {
        fileName.chop(ending.size());
    }
    return fileName.remove(ending);
}

RuntimeError notAReception(const RuntimeError &error, const QString &folder, qsizetype others)
{
    const QString more =
        others == 0 ? QString() : u"\n%1 more of its files are not named like a reception."_s.arg(others);
    return {error.name(),
        u"Listing %1: %2.\nMove this file out of the folder; the other receptions are listed."_s.arg(
            folder, error.doing())
            + more};
}

} // namespace

RdsSpyCandidate rdsSpyCandidate(const QString &fileName, const MonthNames &months)
{
    const QString name = withoutEnding(fileName);
    const QStringList tokens = name.split(u' ');
    if (tokens.size() < 3) {
        throw RuntimeError(ErrorName::SubscriptOutOfRange,
            u"the file name \"%1\" has no date, time and PI code with blanks between"_s.arg(fileName));
    }
    const QString moment =
        QString(tokens[0]).replace(u'-', u'/') + u' ' + QString(tokens[1]).replace(u'-', u':');
    const auto dateTime = parseDateTime(moment, months);
    // A tab divides the line below: one in the moment would put it elsewhere.
    if (!dateTime || moment.contains(u'\t')) {
        throw RuntimeError(ErrorName::TypeMismatch,
            u"the file name \"%1\" does not begin with a date and a time: \"%2\""_s.arg(fileName, moment));
    }
    QString line = moment + u'\t' + tokens[2] + u'\t';
    for (const QString &word : tokens.sliced(3)) {
        line += word + u' ';
    }
    return {*dateTime, trimmedOfBlanks(line)};
}

std::optional<Day> dayOf(const QString &text, const MonthNames &months)
{
    const auto first = parseDateTime(QString(text + u" 00:00:00"_s), months);
    const auto last = parseDateTime(QString(text + u" 23:59:59"_s), months);
    if (!first || !last || !parseDateTime(text, months)) {
        return std::nullopt;
    }
    return Day {*first, *last};
}

RdsSpyListing rdsSpyListing(
    const QStringList &fileNames, const QString &folder, const Day &day, const MonthNames &months)
{
    RdsSpyListing listing;
    std::optional<RuntimeError> first;
    qsizetype others = 0;
    for (const QString &name : fileNames) {
        try {
            const RdsSpyCandidate candidate = rdsSpyCandidate(name, months);
            if (day.holds(candidate.dateTime)) {
                listing.lines += candidate.line;
            }
        } catch (const RuntimeError &error) {
            if (first) {
                ++others;
            } else {
                first = error;
            }
        }
    }
    std::ranges::sort(listing.lines);
    if (first) {
        listing.failure = notAReception(*first, folder, others);
    }
    return listing;
}

RdsSpyListing listRdsSpyFolder(const QString &folder, const Day &day, const Regional &regional)
{
    return rdsSpyListing(fileNames(folder, u".txt"_s, regional.codePage), folder, day, regional.months);
}

bool isMarked(QStringView line)
{
    return line.startsWith(u'*');
}

QString marked(const QString &line)
{
    return isMarked(line) ? line : QString(u'*' + line);
}

QString unmarked(const QString &line)
{
    return isMarked(line) ? line.sliced(1) : line;
}

QStringList allMarked(QStringList lines)
{
    std::ranges::transform(lines, lines.begin(), marked);
    std::ranges::sort(lines);
    return lines;
}

QStringList allUnmarked(QStringList lines)
{
    std::ranges::transform(lines, lines.begin(), unmarked);
    std::ranges::sort(lines);
    return lines;
}

RdsSpyReception rdsSpyReception(
    const QString &line, const QString &freq, const QString &offset, const MonthNames &months)
{
    const QStringList parts = line.split(u'\t');
    const DateTime received = toDateTime(parts.value(0), months, u"Date and time of a reception"_s);
    const qint16 hours = toInt16(offset, u"Time (Hour) Offset"_s);
    const DateTime entered {received.seconds + hours * secondsPerHour};
    constexpr int firstYear = 100;
    constexpr int lastYear = 9999;
    if (const int year = civil(entered).year; year < firstYear || year > lastYear) {
        throw RuntimeError(ErrorName::Overflow,
            u"\"%1\" with an offset of %2 hours is beyond the calendar"_s.arg(parts.value(0)).arg(hours));
    }
    return {generalText(entered), freq, parts.value(1), parts.value(2), u"TBD"_s};
}

} // namespace quillon
