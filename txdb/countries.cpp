#include "txdb/countries.h"

#include "platform/files.h"

namespace quillon {

QStringList readCountries(QByteArrayView file, const CodePage &codePage)
{
    QStringList countries;
    const QList<QByteArrayView> lines = splitLines(file);
    for (const QByteArrayView line : lines) {
        if (!line.isEmpty()) {
            countries += codePage.decode(line);
        }
    }
    return countries;
}

} // namespace quillon
