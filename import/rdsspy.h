#pragma once

#include "platform/datetime.h"
#include "platform/regional.h"
#include "platform/runtimeerror.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace quillon {

/// A reception that RDS Spy has written a file of. Only the file's name is read: "DATE TIME PI NAME.txt",
/// with "-" between the parts of date and time, for instance "2010-06-12 18-22-05 D3C3 RADIO 1.txt".
struct RdsSpyCandidate
{
    DateTime dateTime;
    QString line; ///< date and time, tab, PI code, tab, RDS name: "2010/06/12 18:22:05\tD3C3\tRADIO 1"
};

/// The reception of a file name; every ".txt" is left out of it, and the ending in any case. Throws
/// "Subscript out of range" for fewer than three parts, "Type mismatch" when the first two are no date and
/// time.
[[nodiscard]] RdsSpyCandidate rdsSpyCandidate(const QString &fileName, const MonthNames &months);

/// The seconds of a day, both bounds included.
struct Day
{
    DateTime first;
    DateTime last;

    [[nodiscard]] bool holds(DateTime moment) const { return first <= moment && moment <= last; }
};

/// The day that a text names; nothing when it is no date, or has a time of day.
[[nodiscard]] std::optional<Day> dayOf(const QString &text, const MonthNames &months);

/// The receptions of a day.
struct RdsSpyListing
{
    QStringList lines; ///< sorted by their text
    std::optional<RuntimeError> failure; ///< of the first name that is not a reception; the others are listed
};

/// The receptions among `fileNames` on that day. `folder` is for the message, which says what file to move
/// away.
[[nodiscard]] RdsSpyListing rdsSpyListing(
    const QStringList &fileNames, const QString &folder, const Day &day, const MonthNames &months);

/// rdsSpyListing of the ".txt" files of a folder. A folder that does not exist holds none; throws the
/// run-time error of one that cannot be read.
[[nodiscard]] RdsSpyListing listRdsSpyFolder(const QString &folder, const Day &day, const Regional &regional);

/// True for a line that is not selected: it begins with "*".
[[nodiscard]] bool isMarked(QStringView line);
/// The line as not selected: with "*" before it, unless it has one.
[[nodiscard]] QString marked(const QString &line);
/// The line as selected: without its "*".
[[nodiscard]] QString unmarked(const QString &line);
/// What marking every row of a sorted list, from the first to the last, makes of it.
[[nodiscard]] QStringList allMarked(QStringList lines);
/// What unmarking every row of a sorted list, from the last to the first, makes of it.
[[nodiscard]] QStringList allUnmarked(QStringList lines);

/// What goes into the entry form for a reception. The transmitter fields are emptied.
struct RdsSpyReception
{
    QString dateTime; ///< dd/mm/yyyy hh:nn:ss, the offset added
    QString freq; ///< as typed
    QString piCode;
    QString rdsName;
    QString country; ///< "TBD", to be determined later
};

/// The reception of a selected line. `offset` is the text of a whole number of hours. Throws "Type mismatch"
/// or "Overflow" for an offset that is none, and for a moment that is none.
[[nodiscard]] RdsSpyReception rdsSpyReception(
    const QString &line, const QString &freq, const QString &offset, const MonthNames &months);

} // namespace quillon
