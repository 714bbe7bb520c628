#pragma once

#include "core/config.h"
#include "core/logbook.h"
#include "platform/datetime.h"
#include "platform/regional.h"
#include "txdb/transmitters.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace quillon {

/// The files that are backed up may be so large together; a usual log that is full takes a twentieth of it.
inline constexpr qint64 largestLog = qint64(64) << 20;

/// A stations.lst beyond that is left out; the comment says so.
inline constexpr qint64 largestStationList = qint64(8) << 20;

/// The name of the present logbook file, without its folder.
[[nodiscard]] QString logbookName(const Config &config);

/// True when there is a logbook or a tx.lst.
[[nodiscard]] bool hasLog(const Config &config);

/// The archive of the files as they are on the disk. Its comment says of which directory they are, which
/// logbook it is and how many receptions that holds. Throws the run-time error of a file that cannot be read,
/// and "Overflow" for files beyond largestLog, stations.lst not counted.
[[nodiscard]] QByteArray backupBytes(const Config &config, DateTime now);

/// The number of receptions that the comment of a backup tells.
[[nodiscard]] std::optional<qint32> receptionsTold(const QString &comment);

/// The name of the logbook that the comment of a backup tells; empty when it does not.
[[nodiscard]] QString logbookTold(const QString &comment);
/// True for two names of one file.
[[nodiscard]] bool isSameLogbook(const QString &one, const QString &other);

/// The log that a backup holds.
struct BackedUpLog
{
    Logbook log;
    std::optional<TransmitterList> sites; ///< nothing when the backup has no tx.lst
};

/// Reads a backup whole. Throws a run-time error that says what is wrong with it: no archive, a broken one,
/// one beyond the limits of readZip, one without a logbook or with another than that of this name, a logbook
/// that cannot be read.
[[nodiscard]] BackedUpLog readBackup(const QString &path, const QString &name, const Regional &regional);

} // namespace quillon
