#pragma once

#include "platform/codepage.h"

#include <QString>
#include <QStringList>

namespace quillon {

/// The names of the files in `directory` whose name ends in `ending` in any case, in the order of their text.
/// Folders and hidden files are left out. Names are UTF-8, composed (NFC); one that is not UTF-8 is read in
/// the code page. A folder that does not exist holds none; throws the run-time error of one that cannot be
/// read.
[[nodiscard]] QStringList fileNames(
    const QString &directory, const QString &ending, const CodePage &codePage);

} // namespace quillon
