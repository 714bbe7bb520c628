#include "export/kmlfiles.h"

#include "export/mapscript.h"
#include "export/pagefile.h"
#include "platform/files.h"

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

void writeMapFiles(const MapFiles &files, const QByteArray &document, FileCalls &calls)
{
    writePageFile(files.kml, document, calls);
    writePageFile(files.script, mapScript(document), calls);
}

bool writeMonthlyKml(const MapFiles &files, const HeardKml &heard, DateTime month, FileCalls &calls)
{
    if (const auto document = heard.month(month)) {
        writeMapFiles(files, *document, calls);
        return true;
    }
    removePageFile(files.kml, calls);
    removePageFile(files.script, calls);
    return false;
}

} // namespace quillon
