#pragma once

#include <QComboBox>
#include <QStringList>

namespace quillon::test {

/// What a combo box offers, from top to bottom.
[[nodiscard]] inline QStringList itemsOf(const QComboBox &combo)
{
    QStringList texts;
    for (int i = 0; i < combo.count(); ++i) {
        texts += combo.itemText(i);
    }
    return texts;
}

} // namespace quillon::test
