#pragma once

#include "core/config.h"
#include "tour/walk.h"

#include <QList>

namespace quillon::tour {

/// One stop of the tour: what it shows, and how to get there. It leaves the main window with the focus and no
/// other window open.
struct Stop
{
    QString shows;
    void (*visit)(Walk &walk);
};

/// The main window: an entry, a new one, the searches of the log.
[[nodiscard]] QList<Stop> mainStops();
/// Quick Add, Find, converter, setup, scratch pad, about, statistics.
[[nodiscard]] QList<Stop> windowStops();
/// Backups as a log of some months has them, of a log that grows.
void makeBackups(const Config &config);
/// FMList: the search and the questions of the automatic one.
[[nodiscard]] QList<Stop> fmlistStops();
/// RDS Spy and RDSDX. They change the log, so they come late.
[[nodiscard]] QList<Stop> importStops();
/// The receiver while an opening is heard. It logs a station.
[[nodiscard]] QList<Stop> receiverStops();
/// The automatic search while it runs. It ends as the user would end it: the main window is closed.
[[nodiscard]] QList<Stop> lastStops();

} // namespace quillon::tour
