#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace quillon {

/// The bytes of a KML file as a script that does nothing but give them, in base64, to the page that loads it.
/// A page that was opened from a disk may not read the file beside it, but may load a script from there.
[[nodiscard]] QByteArray mapScript(QByteArrayView kml);

} // namespace quillon
