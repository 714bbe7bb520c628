#include "growthrun.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QKeyEvent>
#include <QTabWidget>

#include <tuple>

// The other windows: statistics, collection, map, and what is small.

namespace quillon::bench {

namespace {

void measureGraphs(GrowthRun &run)
{
    run.openAnew(u"menuStats"_s);
    const QDialog &stats = run.dialog(u"logStats"_s);
    const auto draw = [&stats] { press(stats, u"Command3"_s); };
    for (const auto &[name, month, hours] :
        {std::tuple(u"the months"_s, u"All"_s, false), std::tuple(u"months and hours"_s, u"All"_s, true),
            std::tuple(u"the days of a month"_s, u"June"_s, false),
            std::tuple(u"days and hours"_s, u"June"_s, true)}) {
        controlOf<QComboBox>(stats, u"Combo2"_s).setCurrentText(month);
        controlOf<QCheckBox>(stats, u"Check1"_s).setChecked(hours);
        run.measure(u"statistics: draw "_s + name, draw);
    }
    controlOf<QCheckBox>(stats, u"shownOnly"_s).setChecked(true);
    run.measure(u"statistics: draw what is shown"_s, draw);
    run.measure(u"statistics: save the picture"_s, [&stats] { press(stats, u"Command2"_s); });
}

void measureTabs(GrowthRun &run)
{
    const auto open = [&run] { run.openAnew(u"menuStatsCollection"_s); };
    const auto button = [&run](const QString &name) { press(run.dialog(u"collection"_s), name); };
    open();
    const auto &tabs = controlOf<QTabWidget>(run.dialog(u"collection"_s), u"tabs"_s);
    QStringList names;
    for (int tab = 0; tab < tabs.count(); ++tab) {
        names += u"the collection: "_s + tabs.tabText(tab).remove(u'&');
    }
    for (int tab = 0; tab < names.size(); ++tab) {
        const auto show = [&run, tab] {
            controlOf<QTabWidget>(run.dialog(u"collection"_s), u"tabs"_s).setCurrentIndex(tab);
        };
        // The first one is counted when the window opens.
        if (tab > 0) {
            run.measure(names[tab], open, show);
        }
        run.measure(names[tab] + u", as CSV"_s, [&button] { button(u"saveCsv"_s); });
        run.measure(names[tab] + u", as a picture"_s, [&button] { button(u"savePicture"_s); });
    }
    run.measure(u"the report of an opening"_s, [&button] { button(u"copyText"_s); });
    run.measure(u"the collection of what is shown"_s, open,
        [&run] { controlOf<QCheckBox>(run.dialog(u"collection"_s), u"shownOnly"_s).setChecked(true); });
}

void measureSetup(GrowthRun &run)
{
    run.measure(
        u"save the setup, the grid filled again"_s, [&run] { run.openAnew(u"menuSetup"_s); },
        [&run] { press(run.dialog(u"Form2"_s), u"Command1"_s); });
    run.closeDialogs();
}

} // namespace

void measureStatistics(GrowthRun &run)
{
    measureGraphs(run);
    measureTabs(run);
    run.closeDialogs();
}

void measureMap(GrowthRun &run)
{
    Window &window = run.window();
    auto &dock = window.find<QDockWidget>(u"mapDock"_s);
    auto &map = window.find<QWidget>(u"map"_s);
    auto &filter = window.find<QLineEdit>(u"filterText"_s);
    run.measure(
        u"the map"_s, [&dock] { dock.hide(); }, [&window] { window.trigger(u"menuViewMap"_s); });
    bool there = false;
    run.measure(u"the map moves"_s, [&] {
        QKeyEvent key(QEvent::KeyPress, (there = !there) ? Qt::Key_Right : Qt::Key_Left, Qt::NoModifier);
        QApplication::sendEvent(&map, &key);
    });
    run.measure(
        u"the map zooms"_s, [&] { press(dock, (there = !there) ? u"mapZoomIn"_s : u"mapZoomOut"_s); });
    run.measure(u"the map's clouds"_s, [&] { press(dock, u"mapClouds"_s); });
    run.measure(u"the map is copied"_s, [&] { press(dock, u"mapCopy"_s); });
    int row = 1;
    run.measure(u"a row is chosen, on the map, too"_s, [&] { window.chooseRow(row += run.entries() / 10); });
    run.measure(
        u"a filter, of the map, too"_s, [&] { filter.clear(); },
        [&] { filter.setText(u"freq>88 -gone a"_s); });
    filter.clear();
    // What follows later is waited for.
    window.trigger(u"menuStats"_s);
    controlOf<QCheckBox>(run.dialog(u"logStats"_s), u"shownOnly"_s).setChecked(true);
    press(run.dialog(u"logStats"_s), u"Command3"_s);
    window.trigger(u"menuStatsCollection"_s);
    run.measure(u"a change, map and statistics follow"_s, [&run] {
        run.changeOne();
        Window::rest();
    });
    run.closeDialogs();
    dock.hide();
}

void measureWindows(GrowthRun &run)
{
    Window &window = run.window();
    for (const auto &[name, command] : {std::pair(u"open the statistics"_s, u"menuStats"_s),
             std::pair(u"open the collection, countries"_s, u"menuStatsCollection"_s),
             std::pair(u"open the converter"_s, u"menuToolsConverter"_s),
             std::pair(u"open the setup"_s, u"menuSetup"_s), std::pair(u"open About"_s, u"menuAbout"_s)}) {
        run.measure(
            name, [&run] { run.closeDialogs(); }, [&] { window.trigger(command); });
    }
    run.measure(
        u"open the scratch pad"_s, [&run] { run.closeDialogs(); },
        [&window] { window.click(u"Command12"_s); });
    measureSetup(run);
}

} // namespace quillon::bench
