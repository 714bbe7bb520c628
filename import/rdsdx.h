#pragma once

#include "core/logentry.h"
#include "platform/datetime.h"
#include "platform/regional.h"
#include "platform/runtimeerror.h"

#include <QByteArrayView>
#include <QString>
#include <QStringView>

#include <functional>
#include <optional>
#include <vector>

namespace quillon {

/// The fields of a line of an RDSDX log, cut at fixed columns and freed of the blanks around them.
struct RdsdxLine
{
    QStringView freq; ///< columns 1 to 6
    QStringView piCode; ///< 8 to 11
    QStringView rdsName; ///< 13 to 20
    QStringView time; ///< 22 to 28
    QStringView country; ///< 30 to 32
    QStringView station; ///< 34 to the end
};

/// The fields of a line; columns beyond its end are empty. They are views into `line`.
[[nodiscard]] RdsdxLine rdsdxLine(QStringView line);

/// Midnight of the day that a file is of: its name, the last part of `path`, begins with yyyymmdd. Throws
/// "Type mismatch" when there is no such day.
[[nodiscard]] DateTime rdsdxDate(const QString &path);

/// The moment on that day: hour in characters 1 and 2 of the time field, minute in 3 and 4, second in 6 and
/// 7 ("1430 22" is 14:30:22). Throws "Type mismatch" for what is no number and no time of day.
[[nodiscard]] DateTime rdsdxDateTime(DateTime date, QStringView time);

/// What the station text of a line names.
struct RdsdxStation
{
    /// With one comma before the first "|" what follows it, with none the whole; nothing with more of them.
    std::optional<QString> transmitter;
    QString notes; ///< what stands between the first "|" and the next
};

/// The parts of a station text; nothing when it has no "|".
[[nodiscard]] std::optional<RdsdxStation> rdsdxStation(QStringView station);

/// The receptions of an RDSDX log.
struct RdsdxImport
{
    std::vector<LogEntry> entries;
    std::vector<qsizetype> lines; ///< the number of the line that each of them is from, the header being 1
    std::optional<RuntimeError> failure; ///< of the line at which the reading stopped, after `entries`
};

/// Reads an RDSDX log. `path` names the file, in messages too. The first line is a header. A line without a
/// frequency is told to `status` as "No Frequency for " and the line, and left out. Throws what rdsdxDate
/// throws, and "Input past end of file" for an empty file. It stops with "Subscript out of range" at a line
/// without "|", with "Type mismatch" at a time that is none, and tells the file, the line number and the
/// line.
[[nodiscard]] RdsdxImport readRdsdx(QByteArrayView file, const QString &path, const Regional &regional,
    const std::function<void(const QString &)> &status);

/// `error` with the file, the line number and the line before and behind what it says.
[[nodiscard]] RuntimeError atRdsdxLine(const RuntimeError &error, QByteArrayView file, const QString &path,
    qsizetype number, const Regional &regional);

} // namespace quillon
