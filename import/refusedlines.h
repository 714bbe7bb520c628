#pragma once

#include "import/importfile.h"

#include <QByteArray>
#include <QByteArrayView>

#include <span>
#include <vector>

namespace quillon {

/// The refused lines of an import as they were, each behind a remark that says why, file by file under its
/// heading, in UTF-8. Whoever mends them can bring the file in again. `sources` and `readings` are as many.
[[nodiscard]] QByteArray refusedLines(
    std::span<const ImportSource> sources, std::span<const ImportReading> readings);

/// True for what refusedLines writes.
[[nodiscard]] bool isRefusedLines(QByteArrayView bytes);

/// The files in it, each under its name.
[[nodiscard]] std::vector<ImportSource> partsOfRefusedLines(QByteArrayView bytes);

} // namespace quillon
