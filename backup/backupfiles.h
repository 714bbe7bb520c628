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

/// True when there is a logbook or a tx.lst.
[[nodiscard]] bool hasLog(const Config &config);

/// The archive of the files as they are on the disk. Its comment says of which directory they are and how
/// many receptions the logbook holds. Throws the run-time error of a file that cannot be read, and "Overflow"
/// for files beyond largestLog.
[[nodiscard]] QByteArray backupBytes(const Config &config, DateTime now);

/// The number of receptions that the comment of a backup tells.
[[nodiscard]] std::optional<qint32> receptionsTold(const QString &comment);

/// The log that a backup holds.
struct BackedUpLog
{
    Logbook log;
    std::optional<TransmitterList> sites; ///< nothing when the backup has no tx.lst
};

/// Reads a backup whole. Throws a run-time error that says what is wrong with it: no archive, a broken one,
/// one beyond the limits of readZip, one without a logbook, a logbook that cannot be read.
[[nodiscard]] BackedUpLog readBackup(const QString &path, const Regional &regional);

} // namespace quillon
