#include "growthrun.h"
#include "ui/resultlist.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QTabBar>

#include <array>

// The searches of the log, and what the grid shows of it.

namespace quillon::bench {

namespace {

void measureSearchesOfFields(GrowthRun &run)
{
    Window &window = run.window();
    const std::array<std::array<QString, 3>, 4> fields {
        {{u"PI code"_s, u"Text1"_s, u"Command4"_s}, {u"name"_s, u"Text8"_s, u"Command6"_s},
            {u"frequency"_s, u"Text9"_s, u"Command7"_s}, {u"transmitter"_s, u"Text5"_s, u"Command8"_s}}};
    for (const auto &[name, field, button] : fields) {
        run.measure(
            u"search by %1, empty"_s.arg(name), [&] { window.write(field, {}); },
            [&] { window.click(button); });
    }
    run.measure(
        u"search by country"_s, [&window] { window.find<QComboBox>(u"Combo3"_s).setEditText(u"Germany"_s); },
        [&window] { window.click(u"Command13"_s); });
    auto &results = window.find<ResultList>(u"List1"_s);
    require(results.count() > 0, "a search by country");
    run.measure(u"double-click on a result of it"_s,
        [&results] { Q_EMIT results.lineActivated(results.count() - 1); });
}

void measureFind(GrowthRun &run)
{
    Window &window = run.window();
    const auto typed = [&](const QString &text) {
        return [&run, &window, text] {
            window.chooseRow(1);
            run.answers().type({text});
        };
    };
    const auto find = [&window] { window.trigger(u"menuToolsFind"_s); };
    run.measure(u"Find, of what is nowhere"_s, typed(u"GHI"_s), find);
    run.measure(u"Find"_s, typed(run.log().entry(run.entries() - 1).piCode), find);
    run.measure(
        u"Find Again"_s, [&window] { window.chooseRow(1); },
        [&window] { window.trigger(u"menuToolsFindAgain"_s); });
    run.answers().type({});
}

// What a reception probably was, by the stations of the log.
void measureCandidates(GrowthRun &run)
{
    constexpr int candidates = 2;
    Window &window = run.window();
    auto &tabs = window.find<QTabBar>(u"resultTabs"_s);
    run.measure(
        u"what it probably was, after a change"_s,
        [&] {
            tabs.setCurrentIndex(0);
            run.changeOne();
            window.chooseRow(run.entries() / 2);
        },
        [&tabs] { tabs.setCurrentIndex(candidates); });
    tabs.setCurrentIndex(0);
}

void measureColumns(GrowthRun &run)
{
    Window &window = run.window();
    const QList<QAction *> ticks = window.find<QMenu>(u"menuViewColumns"_s).actions();
    const auto tickAll = [&ticks] {
        for (int column = 0; column < allColumnCount; ++column) {
            ticks[column]->setChecked(true);
        }
    };
    const auto reset = [&window] { window.trigger(u"menuViewReset"_s); };
    run.measure(u"all columns"_s, reset, tickAll);
    run.measure(u"Reset Windows and Columns"_s, tickAll, reset);
    tickAll();
    for (int column = 0; column < allColumnCount; ++column) {
        run.measure(
            u"sort by "_s + logColumn(static_cast<GridColumn>(column)).caption,
            // From an order that is none of this column's.
            [&window, column] { Q_EMIT window.grid().headerClicked(column == 1 ? 2 : 1); },
            [&window, column] { Q_EMIT window.grid().headerClicked(column); });
    }
    reset();
}

} // namespace

void measureSearches(GrowthRun &run)
{
    measureSearchesOfFields(run);
    measureFind(run);
    measureCandidates(run);
}

void measureGrid(GrowthRun &run)
{
    Window &window = run.window();
    auto &box = window.find<QLineEdit>(u"filterText"_s);
    run.measure(
        u"a filter"_s, [&box] { box.clear(); }, [&box] { box.setText(u"freq>88 -gone a"_s); });
    run.measure(
        u"no filter any more"_s, [&box] { box.setText(u"freq>88 -gone a"_s); }, [&box] { box.clear(); });
    run.measure(u"a change, the filter's lists follow"_s, [&run] {
        run.changeOne();
        Window::rest();
    });
    measureColumns(run);
}

} // namespace quillon::bench
