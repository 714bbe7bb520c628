#pragma once

#include "core/logentry.h"

#include <QString>

namespace quillon {

/// A row of a file as it would stand in the log, or why it cannot.
struct ImportRow
{
    int source = 0; ///< the number of its file
    qsizetype line = 0; ///< its line in the file, from 1
    LogEntry entry; ///< as the code page has it
    QString refusal; ///< why it does not come in; empty for a reception
    QString text; ///< of a refused one, as it stands in the file
    int lettersLost = 0; ///< letters that the code page does not have

    [[nodiscard]] bool isRefused() const { return !refusal.isEmpty(); }
};

} // namespace quillon
