#include "export/kmlfiles.h"

#include "export/pagefile.h"
#include "platform/files.h"
#include "platform/runtimeerror.h"

#include <QFile>

#include <cerrno>

namespace quillon {

using namespace Qt::StringLiterals;

QString writeTransmitterKml(const QString &applicationDir, const TransmitterList &transmitters,
    const CodePage &codePage, FileCalls &calls)
{
    QString path = resolveFile(applicationDir, u"tx.kml"_s);
    writeFile(path, transmitterKml(transmitters, codePage), calls);
    return path;
}

QString writeLogbookKml(const QString &applicationDir, const Logbook &log,
    const TransmitterList &transmitters, const CodePage &codePage, FileCalls &calls)
{
    QString path = resolveFile(applicationDir, u"quillon.kml"_s);
    writeFile(path, logbookKml(log, transmitters, codePage), calls);
    return path;
}

bool writeMonthlyKml(const QString &path, const HeardKml &heard, DateTime month, FileCalls &calls)
{
    if (const auto document = heard.month(month)) {
        writePageFile(path, *document, calls);
        return true;
    }
    if (QFile::exists(path) && calls.remove(QFile::encodeName(path)) < 0) {
        throw systemError(errno, u"Deleting "_s + path);
    }
    return false;
}

} // namespace quillon
