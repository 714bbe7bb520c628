#pragma once

#include <QIcon>
#include <QString>

class QMenuBar;

namespace quillon {

/// Gives each entry of the menus its icon, from the desktop's theme or else our own; an entry that is not
/// known gets that of its menu. Entries that have one, and those that are ticked, stay as they are.
void giveMenuIcons(const QMenuBar &bar);

/// One of our own icons, drawn in the colour of the texts around it, whatever the palette is then.
[[nodiscard]] QIcon ownIcon(const QString &name);

} // namespace quillon
