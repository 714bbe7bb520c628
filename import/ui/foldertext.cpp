#include "import/ui/foldertext.h"

#include <QFileInfo>

namespace quillon {

using namespace Qt::StringLiterals;

QString missingFolderText(const QString &folder, const QString &program)
{
    if (folder.isEmpty()) {
        return u"No %1 directory is set. Set it in the menu Setup, under Directories."_s.arg(program);
    }
    if (!QFileInfo(folder).isDir()) {
        return u"There is no folder %1. Set the %2 directory in the menu Setup, under Directories."_s.arg(
            folder, program);
    }
    return {};
}

} // namespace quillon
