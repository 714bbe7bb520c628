#pragma once

#include <QByteArray>
#include <QString>

// What the measured imports read.

namespace quillon::bench {

/// As many RDS Spy files as a busy listener has: four weeks of June 2010.
inline constexpr int spyFileCount = 20'000;
/// How many of them are of 12 June.
inline constexpr int spyFilesOfADay = 714;
/// The receptions of rdsdxLog.
inline constexpr int rdsdxLineCount = 10'000;

/// Makes spyFileCount files in the folder.
void writeSpyFolder(const QString &folder);

/// Makes files of so many receptions on a day of June 2010.
void writeSpyReceptions(const QString &folder, int day, int count);

/// An RDSDX log of rdsdxLineCount receptions of a day.
[[nodiscard]] QByteArray rdsdxLog();

/// The receptions of webServerFile: as many as nearly fill a log.
inline constexpr std::size_t webServerLines = 32'000;

/// The CSV of a web server's logger in local time.
[[nodiscard]] QByteArray webServerFile();

/// So many lines of a text that has them.
[[nodiscard]] QByteArray firstLines(const QByteArray &text, qsizetype count);

} // namespace quillon::bench
