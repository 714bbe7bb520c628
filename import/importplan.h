#pragma once

#include "core/logbook.h"
#include "core/logchange.h"
#include "import/alreadythere.h"
#include "import/importrow.h"

#include <QString>

#include <span>
#include <vector>

namespace quillon {

/// What is done with a row.
enum class ImportAction {
    LeaveOut,
    Add,
    Complete, ///< the empty fields of the entry that is the same reception
};

/// How an import went, or will go.
struct ImportTally
{
    qsizetype added = 0;
    qsizetype completed = 0; ///< entries of the log
    qsizetype alreadyThere = 0; ///< rows left out or with nothing to complete
    qsizetype leftOut = 0; ///< new ones that the listener left out
    qsizetype refused = 0;
    qsizetype lettersLost = 0; ///< of what came in: letters that the code page does not have
};

/// What the log becomes. `rows`, `matches` and `actions` are as many. Entries that are deleted meanwhile, or
/// whose fields are filled, are left as they are.
[[nodiscard]] LogChange importChange(const Logbook &log, std::span<const ImportRow *const> rows,
    std::span<const ImportMatch> matches, std::span<const ImportAction> actions, ImportTally &tally);

/// Why so many receptions do not fit into the log, and how many would; empty when they do.
[[nodiscard]] QString roomRefusal(const Logbook &log, qsizetype added);

/// The report of an import, one thing a line.
[[nodiscard]] QString importReport(const ImportTally &tally);

} // namespace quillon
