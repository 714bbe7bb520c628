#include "ui/documentsfolder.h"

#include <QDir>
#include <QStandardPaths>

namespace quillon {

QString documentsFolder()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(documents).exists() ? documents : QDir::homePath();
}

} // namespace quillon
