#pragma once

#include "export/shownlog.h"

#include <QByteArray>

namespace quillon {

/// The receptions as KML, as the log's is: a placemark for each heard site with a place, with its receptions
/// in their order; sites stand in the order in which they first occur. In UTF-8, all text as references where
/// XML or HTML would read it. Receptions of sites without a place are not in it.
[[nodiscard]] QByteArray shownKml(const ShownLog &shown);

} // namespace quillon
