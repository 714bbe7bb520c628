#include "ui/desktop.h"

#include "fmlist/weblinks.h"

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

void callsignLookup(const QString &urlTemplate, const QString &callsign)
{
    HyperJump(callsignUrl(urlTemplate, callsign));
}

} // namespace quillon
