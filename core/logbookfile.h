#pragma once

#include "core/logbook.h"
#include "platform/keptfile.h"
#include "platform/regional.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace quillon {

/// How the lines of a logbook file are laid out: told by the pieces that "|" cuts the first line into.
enum class LogbookLayout {
    Unknown,
    Older, ///< ten fields, 11 pieces; read, never written
    Current, ///< twelve fields, 13 pieces
};

/// The layout that the first line of a file tells.
[[nodiscard]] LogbookLayout logbookLayout(QByteArrayView file);

/// Adds the entries of a file to the log; nothing when its layout is unknown. Returns true when every
/// field of the file is in the log and is written by the next save. Throws "Subscript out of range" for a
/// line with fewer fields, "Type mismatch" for a Date/Time that is none, what AddEntry throws for a log that
/// is full; the message names `fileName`, the line number and the line, and the entries before it are in the
/// log.
bool readLogbook(Logbook &log, QByteArrayView file, const Regional &regional, const QString &fileName);

/// What became of a logbook file at start.
enum class LogbookLoading {
    NoFile,
    Loaded,
    NotLoaded, ///< the first line has an unknown layout
};

/// Reads the logbook file at `path` into the log, and tells `kept` when nothing of it is lost. Throws what
/// readFile and readLogbook throw.
LogbookLoading loadLogbook(Logbook &log, const QString &path, const Regional &regional, KeptFile &kept);

/// What an empty grid says of a logbook whose first line has an unknown layout: which file, how many lines it
/// has, what is wrong with the first, and that a copy is kept.
[[nodiscard]] QString unreadableText(QByteArrayView file, const QString &fileName, const CodePage &codePage);

} // namespace quillon
