#pragma once

#include "core/logbook.h"

#include <QByteArray>
#include <QString>

#include <initializer_list>

// What an evening at full size begins with: a log, stations that the service knows, and a home on the disk.

namespace quillon::bench {

/// How many days of the log are to be searched, and on each so many entries, all but the last of which are
/// known to the service.
inline constexpr int evenings = 5;
inline constexpr int dayEntries = 4;
inline constexpr int dayMatches = 3;

/// The number in the log of an entry of a day.
[[nodiscard]] qint32 entryOf(int day, int number);

/// The PI code of an entry of a day; that of `dayEntries` is in no entry, and is known to the service.
[[nodiscard]] QString piOf(int day, int number);

/// The station list of the service.
[[nodiscard]] QByteArray eveningStations();

/// Marks every reception as sent.
void markAllSent(Logbook &log);

/// Makes the receptions from `first` on those of these numbers of an evening, which nobody has searched yet;
/// all of them on the day of the first.
void makeEvening(Logbook &log, qint32 first, int day, std::initializer_list<int> numbers);

/// The full log, all of it sent but for the entries of the days, which nobody has searched yet.
[[nodiscard]] Logbook eveningLog();

/// Writes all files of the program into the directory.
void writeHome(const QString &directory, const Logbook &log, const QString &serviceUrl);

} // namespace quillon::bench
