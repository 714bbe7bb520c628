#pragma once

namespace quillon::tour {

/// Light or dark.
enum class Shade { Light, Dark };

/// The toolkit's own style and a fixed font, so that the pictures are the same on every machine.
void setLook();

/// Gives all windows the palette of the shade.
void setShade(Shade shade);

} // namespace quillon::tour
