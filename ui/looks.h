#pragma once

#include <QColor>

class QLineEdit;
class QPalette;

namespace quillon {

/// Gives the application's style what all windows need beyond it: the text of what is disabled stays
/// readable, and a field, a list or the grid that has the focus shows it by a ring. Called once, before the
/// first window; the desktop's style and colours stay, and may change while the program runs.
void installLooks();

/// Keeps a field wide enough for that many capitals of any kind, in the font that it has now.
void keepRoomForCapitals(QLineEdit &field, int count);

/// The contrast of two colours, 1 to 21 (WCAG 2.1, relative luminance).
[[nodiscard]] double contrastOf(const QColor &one, const QColor &other);

/// What a text that has to be read wants at least (WCAG 2.1, 1.4.3).
inline constexpr double readableContrast = 4.5;

/// The colours with the texts of what is disabled made readable on what is behind them.
[[nodiscard]] QPalette withReadableTexts(QPalette palette);

/// The ring of what has the focus, seen on the window and on the yellow of a loaded entry.
[[nodiscard]] QColor focusColour(const QPalette &palette);

} // namespace quillon
