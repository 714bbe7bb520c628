#pragma once

#include <functional>

class QWidget;

namespace quillon {

/// Keeps the mouse wheel from changing what nobody looks at: over a combo of the window that has not the
/// focus, is disabled, or while `atRest` says that the window's form is at rest, it changes nothing, moves no
/// focus and scrolls nothing behind. And the list of an editable combo opens, and its arrow keys begin, at
/// what its text says, however it came there. Combos that are in the window now.
void keepCombosCalm(QWidget &window, const std::function<bool()> &atRest = {});

} // namespace quillon
