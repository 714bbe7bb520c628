#pragma once

#include <QString>

class QWidget;

namespace quillon {

class RuntimeError;

/// Shows a message with an OK button. Without a title the program's name stands there.
void showMessage(QWidget *parent, const QString &text, const QString &title = {});

/// Shows a message with an OK button, and one that unfolds the details.
void showMessageWith(QWidget *parent, const QString &text, const QString &details, const QString &title = {});

/// Shows a message with an OK button and a second one of that caption. True for OK and for Esc.
[[nodiscard]] bool showMessageOr(QWidget *parent, const QString &text, const QString &otherButton);

/// Asks a question with Yes and No; "No" is the default. True for "Yes".
[[nodiscard]] bool askYesNo(QWidget *parent, const QString &text, const QString &title);

/// Asks for a text. The answer, empty when cancelled.
[[nodiscard]] QString inputBox(
    QWidget *parent, const QString &prompt, const QString &title, const QString &defaultText = {});

/// Shows a run-time error.
void showRuntimeError(QWidget *parent, const RuntimeError &error);

} // namespace quillon
