#pragma once

#include "core/logentry.h"
#include "platform/codepage.h"
#include "platform/datetime.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace quillon {

/// What an automatic search sends of an entry.
enum class SearchMode {
    PiAndPs,
    Pi, ///< the RDS name stays out
};

/// The moments strictly between one day before and one day after the midnight that begins a day.
struct DayWindow
{
    DateTime after;
    DateTime before;

    /// The window of the day that `moment` falls on.
    [[nodiscard]] static DayWindow of(DateTime moment);

    /// True strictly inside; both bounds are out.
    [[nodiscard]] bool contains(DateTime moment) const { return after < moment && moment < before; }
};

/// The window of the day that the user typed. Throws "Type mismatch" when it is no date.
[[nodiscard]] DayWindow dayWindow(const QString &answer, const MonthNames &months);

/// True for an entry in the window that is not deleted and has no UID but blanks.
[[nodiscard]] bool isToBeSearched(const LogEntry &entry, DayWindow window);

/// The RDS name that a search in that mode sends.
[[nodiscard]] QString searchedName(SearchMode mode, const QString &rdsName);

/// What an automatic search does with an entry.
enum class Finding {
    None, ///< nothing found
    Exact, ///< one transmitter: the entry is updated with it
    Multi, ///< several
};

/// The finding that this number of matches is.
[[nodiscard]] Finding findingOf(int matches);

/// What the grid's FMList column shows for a finding: "None" or "Multi".
[[nodiscard]] QString findingText(Finding finding);

/// The FMList field with the finding in it: "fml=none" or "fml=multi"; as it is for an exact one.
[[nodiscard]] QString markedField(const QString &fmlist, Finding finding);

/// One line of the update log: the time, the stage ("BEFORE" or "AFTER") and each column's text after its
/// number and ":", all ended by tabs, then CR LF. A line break inside a text is written as "CRLF".
[[nodiscard]] QByteArray updateLogLine(
    DateTime now, const QString &stage, const QStringList &columns, const CodePage &codePage);

/// "Updated 3 entries".
[[nodiscard]] QString updatedText(int updated);

} // namespace quillon
