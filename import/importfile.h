#pragma once

#include "import/importformat.h"
#include "import/importrow.h"
#include "import/receptionmaker.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace quillon {

/// A file of an import, or a part of a file of refused lines.
struct ImportSource
{
    QString name; ///< with as much of its path as tells it from the others
    QByteArray bytes; ///< unpacked
    bool hasRemarks = false; ///< it is of a file of refused lines
    qsizetype linesBefore = 0; ///< lines of that file before it
    QString refusal; ///< why nothing of it can be read; empty otherwise
    FormatChoice choice = {}; ///< as the file was read whose refused lines these are
};

/// What was read of a file.
struct ImportReading
{
    ImportFormat format;
    QTimeZone zone; ///< of the times that are local
    QStringList heading;
    QString headingText; ///< the line of the heading as it stands
    std::vector<QString> examples; ///< of each column, its first cell that is not empty
    std::vector<ImportRow> rows;
    QString refusal; ///< why it is not read, or not read to its end; the rows before it are here
};

/// Reads a file. What is wrong with it is told in the reading, never thrown. At most `mostRows` rows are
/// read.
[[nodiscard]] ImportReading readImportFile(const ImportSource &source, const FormatChoice &choice,
    const KnownHeadings &known, const ImportSurroundings &surroundings, qsizetype mostRows);

/// The files behind what was chosen: files, and the files of folders with the folders in them. Hidden files
/// are left out, gzip files unpacked, files of refused lines parted. What cannot be read is a source with a
/// refusal. Throws "Overflow" for more files, or more bytes in all, than an import takes.
[[nodiscard]] std::vector<ImportSource> importSources(const QStringList &paths);

/// The same of bytes that are read already: unpacked and parted.
[[nodiscard]] std::vector<ImportSource> sourcesOf(const QString &name, const QByteArray &bytes);

} // namespace quillon
