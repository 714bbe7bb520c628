#pragma once

class QWidget;

namespace quillon {

/// Keeps what is typed and pasted into the one-line fields of a window on one line: a line break or a tab
/// becomes a blank, a line break at the end goes. Fields that are in the window now, editable combos
/// included.
void keepFieldsOnOneLine(QWidget &window);

} // namespace quillon
