#pragma once

#include "platform/codepage.h"
#include "platform/filecalls.h"

#include <QString>

namespace quillon {

/// What decides where the program's files are.
struct DirectoryChoice
{
    QString option; ///< the value of --directory, empty when not given
    QString variable; ///< the value of QUILLON_DIR
    QString programDirectory; ///< the folder of the program itself
    QString dataHome; ///< XDG_DATA_HOME, or what stands for it
};

/// The choice of this process.
[[nodiscard]] DirectoryChoice directoryChoiceOfProcess(const QString &option);

/// The application directory: the option; the variable; the program's own folder when it holds a LOGBOOK.INI
/// in any case; else `dataHome`/quillon. An absolute path without a "/" at its end.
[[nodiscard]] QString applicationDirectory(const DirectoryChoice &choice);

/// The folder of the files supplied with the program (country list, templates, map viewer, manual).
[[nodiscard]] QString suppliedDirectory();

/// Creates `directory` and copies the supplied files into it when it does not exist; leaves an existing one
/// as it is. The copied templates and the map viewer name `codePage` as the encoding of what the exports
/// write. Throws the run-time error of what failed; there is no directory then, so that the next start tries
/// anew, unless only the sync of the folder above it failed: it is there whole then. Removes beside it what a
/// start that was killed here has left.
void prepareApplicationDirectory(const QString &directory, const QString &supplied, const CodePage &codePage,
    FileCalls &calls = FileCalls::real());

} // namespace quillon
