#include "inputs.h"

#include <QDir>
#include <QFile>

namespace quillon::soak {

QByteArrayList samplesOf(const QString &reader)
{
    QByteArrayList samples;
    const QDir folder(QStringLiteral(QUILLON_CORPUS "/") + reader);
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    for (const QString &name : names) {
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::ReadOnly)) {
            samples += file.readAll();
        }
    }
    return samples;
}

} // namespace quillon::soak
