#include "export/pagefile.h"

#include "platform/files.h"
#include "platform/runtimeerror.h"

#include <QFile>

#include <cerrno>

namespace quillon {

using namespace Qt::StringLiterals;

void writePageFile(const QString &path, const QByteArray &bytes, FileCalls &calls)
{
    if (!fileHolds(path, bytes)) {
        writeFile(path, bytes, calls);
    }
}

void removePageFile(const QString &path, FileCalls &calls)
{
    if (QFile::exists(path) && calls.remove(QFile::encodeName(path)) < 0) {
        throw systemError(errno, u"Deleting "_s + path);
    }
}

} // namespace quillon
