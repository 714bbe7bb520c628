#pragma once

#include "stations/blocksource.h"
#include "stations/stationcollector.h"

namespace quillon {

/// Reads the JSON of an FM map service into `stations`: an object whose member "locations" holds, by number,
/// objects with "name", "itu", "lat", "lon" and "stations", a list of objects with "id", "freq", "pi",
/// "pireg", "ps", "station", "regname", "erp", "pol" and "inactive". Everything else is passed over. A
/// station that cannot be kept is refused with its line. Throws "Type mismatch" for what is no JSON or holds
/// no locations, naming the file, line and byte.
void readMapJson(BlockSource &source, StationCollector &stations);

} // namespace quillon
