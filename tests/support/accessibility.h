#pragma once

#include <QList>
#include <QStringList>
#include <QWidget>

namespace quillon::test {

/// The controls of a window that the keyboard can reach; parts of a control do not count.
[[nodiscard]] QList<QWidget *> controlsOf(const QWidget &window);

/// The names of the controls that tell an assistive tool no name.
[[nodiscard]] QStringList withoutName(const QWidget &window);

/// The captions that claim the same letter, as "one and another".
[[nodiscard]] QStringList claimedTwice(const QStringList &captions);

/// The captions of a window's buttons and of the labels that lead to a field.
[[nodiscard]] QStringList captionsOf(const QWidget &window);

/// The controls that the Tab key does not come to, from the one that has the focus.
[[nodiscard]] QStringList notReached(QWidget &window);

/// The labels and buttons that have less room than their text takes or stand outside the window.
[[nodiscard]] QStringList cutOff(const QWidget &window);

} // namespace quillon::test
