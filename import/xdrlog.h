#pragma once

#include "import/importrow.h"
#include "import/receptionmaker.h"

#include <QString>
#include <QStringView>

#include <vector>

namespace quillon {

/// True for a text whose first line is one of a log of XDR-GTK: a moment, a tab, what it is, a tab, a value.
[[nodiscard]] bool isXdrLog(QStringView text, bool notes);
/// True when one of its first lines has a time without the "Z" of UTC.
[[nodiscard]] bool isLocalXdrLog(QStringView text, bool notes);

/// The receptions of a log of XDR-GTK. `path` ends in DAY/KHZ-TIME.txt and gives the frequency. Each PI code
/// is a reception, at the moment when it was first sure, with the name, and in Notes the last of all else,
/// that came after it; one that was never sure has the moment when it first came and "PI?" in Notes. Throws
/// "Overflow" for a line that is too long and for too many PI codes.
[[nodiscard]] std::vector<ImportRow> readXdrLog(QStringView text, const QString &path, bool notes,
    bool localTime, const ImportSurroundings &surroundings);

} // namespace quillon
