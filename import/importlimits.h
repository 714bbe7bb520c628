#pragma once

#include <QtGlobal>

namespace quillon {

// What an import takes in, so that no file can take all the memory or all the time.

/// Bytes of a file, as it is and unpacked.
inline constexpr qint64 mostImportBytes = qint64(32) * 1024 * 1024;
/// Bytes of all files of an import.
inline constexpr qint64 mostImportBytesInAll = qint64(64) * 1024 * 1024;
/// Files of a folder.
inline constexpr qsizetype mostImportFiles = 50'000;
/// Characters of a line, the line breaks within quotes included.
inline constexpr qsizetype longestImportLine = qsizetype(256) * 1024;
/// Cells of a line.
inline constexpr qsizetype mostImportColumns = 200;
/// Lines of all files of an import.
inline constexpr qsizetype mostImportRows = 200'000;
/// Characters of a cell that go into a field of the log.
inline constexpr qsizetype longestImportCell = 4000;

} // namespace quillon
