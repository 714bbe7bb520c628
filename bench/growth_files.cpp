#include "export/shownfile.h"
#include "growthrun.h"
#include "platform/files.h"
#include "ui/resultlist.h"

#include <QDir>
#include <QRandomGenerator>

// What is written of the log: exports and backups.

namespace quillon::bench {

namespace {

// What is shown as files of each kind.
void measureShown(GrowthRun &run)
{
    LogRows rows(run.log(), MonthNames::of(QLocale::c()));
    rows.refill();
    const TransmitterList sites = fullTransmitterList();
    ShownLog shown {rows, sites, GeoPosition {51.5, -0.1}, u"BENCH"_s, UtcNow(),
        withoutDeleted(run.log(), rows.shown()), {}};
    for (int column = 0; column < gridColumnCount; ++column) {
        shown.columns.push_back(static_cast<GridColumn>(column));
    }
    for (const ShownFormat &format : shownFormats) {
        run.measure(u"shown as "_s + format.suffix, [&] { (void)shownBytes(shown, format.kind); });
    }
    const QString file = filePath(run.home(), u"shown.csv"_s);
    run.measure(
        u"Shown Receptions, the dialog included"_s, [&] { run.answers().choose(file); },
        [&run] { run.window().trigger(u"menuExportShown"_s); });
    require(QFile::exists(file), "the shown receptions are a file");
}

} // namespace

void measureExports(GrowthRun &run)
{
    Window &window = run.window();
    run.measure(u"re-calculate distances"_s, [&window] { window.click(u"Command10"_s); });
    run.measure(u"KML of the transmitters"_s, [&window] { window.trigger(u"menuExportGoogleTX"_s); });
    run.measure(u"KML of the log"_s, [&window] { window.trigger(u"menuExportGoogleLog"_s); });
    run.measure(
        u"text of the log"_s,
        [&run] {
            run.answers().type({u"01/01/2000"_s, u"31/12/2099"_s});
        },
        [&window] { window.trigger(u"menuExportEmail"_s); });
    run.measure(
        u"text of a day"_s,
        [&run] {
            run.answers().type({u"12/06/2005"_s, u"13/06/2005"_s});
        },
        [&window] { window.trigger(u"menuExportEmail"_s); });
    run.measure(u"web pages"_s, [&window] { window.trigger(u"menuExportWebPage"_s); });
    measureShown(run);
}

void measureBackups(GrowthRun &run)
{
    const QTemporaryDir folder;
    run.measure(
        u"update, the first of a day, backup included"_s,
        [&] {
            QDir(folder.path()).removeRecursively();
            run.open(folder.path());
            run.window().chooseRow(1);
            run.window().write(u"Text6"_s, QString::number(QRandomGenerator::global()->bounded(1'000'000)));
        },
        [&run] { run.window().click(u"Command3"_s); });
    Window &window = run.window();
    const auto list = [&run] { run.openAnew(u"menuFileBackups"_s); };
    run.measure(
        u"Backups"_s, [&run] { run.closeDialogs(); }, [&window] { window.trigger(u"menuFileBackups"_s); });
    // The first one of the day is the last one of the list, from before the update.
    run.measureStep(
        u"Restore"_s,
        [&] {
            list();
            auto &backups = controlOf<ResultList>(run.dialog(u"fileBackups"_s), u"backupList"_s);
            backups.setListIndex(backups.count() - 1);
        },
        [&run] { press(run.dialog(u"fileBackups"_s), u"backupRestore"_s); });
    const QString file = filePath(run.home(), u"now.zip"_s);
    run.measure(
        u"Back Up Now To"_s,
        [&] {
            list();
            run.answers().choose(file);
        },
        [&run] { press(run.dialog(u"fileBackups"_s), u"backupNow"_s); });
    require(QFile::exists(file), "a backup is made");
    run.open();
}

} // namespace quillon::bench
