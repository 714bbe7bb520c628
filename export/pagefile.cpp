#include "export/pagefile.h"

#include "platform/files.h"

#include <QFile>

namespace quillon {

namespace {

bool holds(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.size() == bytes.size() && file.readAll() == bytes;
}

} // namespace

void writePageFile(const QString &path, const QByteArray &bytes, FileCalls &calls)
{
    if (!holds(path, bytes)) {
        writeFile(path, bytes, calls);
    }
}

} // namespace quillon
