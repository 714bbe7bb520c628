#include "ui/desktop.h"

#include <QDesktopServices>
#include <QUrl>

namespace quillon {

void HyperJump(const QString &url)
{
    if (url.startsWith(u'/')) {
        openFile(url);
        return;
    }
    QDesktopServices::openUrl(QUrl(url));
}

void openFile(const QString &path)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

} // namespace quillon
