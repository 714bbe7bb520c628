#pragma once

#include <QString>

namespace quillon {

/// Where a file is offered to be saved at first: the documents of the listener, or the home where there is no
/// such folder.
[[nodiscard]] QString documentsFolder();

} // namespace quillon
