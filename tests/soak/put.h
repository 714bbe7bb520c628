#pragma once

#include <QFile>
#include <QString>

namespace quillon::soak {

/// Writes a file in place, as other programs do: at once, and synced nowhere.
inline void put(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

} // namespace quillon::soak
