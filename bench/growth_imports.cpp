#include "growthrun.h"
#include "import/importsession.h"
#include "import/ui/importfile.h"
#include "platform/files.h"
#include "supportimport.h"

// What is brought into the log: each time the same few receptions, and as many as the log has.

namespace quillon::bench {

namespace {

void requireImported(GrowthRun &run, const char *what)
{
    require(run.log().count() == run.entries() + growthReceptions, what);
}

void measureSpy(GrowthRun &run)
{
    const QString folder = filePath(run.home(), u"spy"_s);
    writeSpyReceptions(folder, 12, growthReceptions);
    const auto list = [&] {
        run.answers().type({u"12/06/2010"_s});
        run.openAnew(u"menuImportRDSSpyLog"_s);
    };
    run.measure(
        u"RDS Spy Logs, a day of 10 receptions"_s, [&run] { run.closeDialogs(); }, list);
    run.measureStep(u"RDS Spy import of 10 receptions"_s, list, [&run] {
        press(run.dialog(u"importRDSSpy"_s), u"Command3"_s);
        requireImported(run, "the RDS Spy import");
    });
}

void measureRdsdx(GrowthRun &run)
{
    writeFile(filePath(run.home(), u"dx/20100612.txt"_s), firstLines(rdsdxLog(), 1 + growthReceptions));
    run.answers().decline(u"Perform FMList Auto Search?"_s);
    run.measureStep(
        u"RDSDX import of 10 receptions"_s, [&run] { run.openAnew(u"menuImportRDSDXLogCnv"_s); },
        [&run] {
            press(run.dialog(u"rdsdxlist"_s), u"OKButton"_s);
            requireImported(run, "the RDSDX import");
        });
}

void measureFile(GrowthRun &run, const QByteArray &receptions)
{
    const QString path = filePath(run.home(), u"log.csv"_s);
    writeFile(path, firstLines(receptions, 1 + growthReceptions));
    Window &window = run.window();
    const auto show = [&] {
        window.trigger(u"menuImportFile"_s);
        static_cast<importFile &>(run.dialog(u"importFile"_s)).show(QStringList {path});
    };
    run.measure(
        u"a file of 10 receptions is shown"_s, [&run] { run.closeDialogs(); }, show);
    run.measureStep(
        u"a file of 10 receptions is brought in"_s,
        [&] {
            run.closeDialogs();
            show();
        },
        [&run] {
            press(run.dialog(u"importFile"_s), u"importGo"_s);
            requireImported(run, "the import of a file");
        });
    run.closeDialogs();
}

void measureFileOfAsMany(GrowthRun &run, const QByteArray &receptions)
{
    const auto lines = std::min(run.entries(), static_cast<int>(webServerLines));
    const QByteArray file = firstLines(receptions, 1 + lines);
    const ImportSurroundings surroundings {
        {CodePage(1252), NumberFormat(), MonthNames::of(QLocale::c())}, QTimeZone("Europe/Berlin"), false};
    run.measure(u"a file of as many is brought in"_s, [&] {
        Logbook empty;
        ImportSession session(empty, surroundings, {}, usualImportMinutes);
        session.setSources(sourcesOf(u"log.csv"_s, file));
        ImportTally tally;
        empty.apply(session.change(tally));
    });
}

// A list of stations does not grow with the log, but comes before what a reception probably was.
void measureStations(GrowthRun &run)
{
    const QString path = filePath(run.home(), u"list.json"_s);
    QByteArray stations;
    for (int i = 0; i < 1000; ++i) {
        stations += (i > 0 ? "," : "") + "{\"id\":"_ba + QByteArray::number(i)
            + ",\"freq\":" + QByteArray::number(87.5 + i % 205 * 0.1, 'f', 1) + ",\"pi\":\""
            + QByteArray::number(0x1000 + i, 16) + "\",\"ps\":\"RADIO_" + QByteArray::number(i % 99) + "\"}";
    }
    const QByteArray site = R"({"name":"Ochsenkopf","itu":"D","lat":50.03,"lon":11.81,"stations":[)";
    writeFile(path, QByteArray("{\"locations\":{\"7\":" + site + stations + "]}}}"));
    run.measure(
        u"Station List of 1,000"_s, [&] { run.answers().choose(path); },
        [&run] { run.window().trigger(u"menuImportStations"_s); });
    require(QFile::exists(filePath(run.home(), u"stations.lst"_s)), "the list of stations");
}

} // namespace

void measureImports(GrowthRun &run)
{
    const QByteArray receptions = webServerFile();
    measureSpy(run);
    measureRdsdx(run);
    measureFile(run, receptions);
    measureFileOfAsMany(run, receptions);
    measureStations(run);
}

} // namespace quillon::bench
