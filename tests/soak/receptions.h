#pragma once

#include <QString>

namespace quillon::soak {

/// The name of a reception, which it has in common with no other of its case, and when it was heard.
[[nodiscard]] QString nameOf(int number);
[[nodiscard]] QString dateOf(int number);

} // namespace quillon::soak
