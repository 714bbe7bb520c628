// exportall DIRECTORY: loads the logbook and the transmitters of an application directory, as the program
// does, and writes everything that it can export beside them.
#include "core/logbookfile.h"
#include "core/logfields.h"
#include "export/kmlfiles.h"
#include "export/shownfile.h"
#include "export/textlog.h"
#include "export/webpages.h"
#include "platform/files.h"
#include "platform/runtimeerror.h"

#include <QTextStream>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

void exportAll(const QString &directory)
{
    const Regional regional = Regional::fromEnvironment();
    Logbook log;
    KeptFile kept;
    loadLogbook(log, filePath(directory, u"RDSLog.log"_s), regional, kept);
    TransmitterList sites;
    const QString siteFile = filePath(directory, u"tx.lst"_s);
    readTransmitters(sites, readFile(siteFile), regional.codePage, siteFile);
    LogRows rows(log, regional.months);
    rows.refill();

    const QString callsign = u"<script>hostileRan(\"callsign\")</script>"_s;
    exportWebPages(directory, {rows, sites, callsign, u"V1.0.0"_s, UtcNow()}, regional);
    writeTransmitterKml(directory, sites, regional.codePage);
    writeLogbookKml(directory, log, sites, regional.codePage);
    writeTextLog(directory, rows, {*fromCivil({1900, 1, 1}), *fromCivil({2100, 1, 1}), false, {}}, regional);
    ShownLog shown {rows, sites, GeoPosition {51.5, -0.1}, callsign, UtcNow(),
        {rows.all().begin(), rows.all().end()}, {}};
    for (int column = 0; column < allColumnCount; ++column) {
        shown.columns.push_back(static_cast<GridColumn>(column));
    }
    for (const ShownFormat &format : shownFormats) {
        writeFile(filePath(directory, u"shown."_s + format.suffix), shownBytes(shown, format.kind));
    }
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        return 2;
    }
    try {
        exportAll(QString::fromLocal8Bit(argv[1]));
    } catch (const RuntimeError &error) {
        QTextStream(stderr) << error.text() << '\n';
        return 1;
    }
    return 0;
}
