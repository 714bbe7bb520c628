#include "export/mapscript.h"

#include <QStringBuilder>

namespace quillon {

QByteArray mapScript(QByteArrayView kml)
{
    // Names come from the air and from the network. In base64 none can end the text that it stands in, and
    // no encoding that a browser may assume reads it as something else.
    const QByteArray bytes = QByteArray::fromRawData(kml.data(), kml.size());
    return "window.quillonMap = \"" + bytes.toBase64() + "\";\n";
}

} // namespace quillon
