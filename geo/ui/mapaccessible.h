#pragma once

namespace quillon {

/// Lets assistive tools see each dot of a MapView that is in sight as a button with the name, distance and
/// receptions of its site; pressing it is a click. Does it once for all maps.
void makeMapAccessible();

} // namespace quillon
