#include "growthrun.h"
#include "supporthome.h"
#include "ui/resultlist.h"

// What is asked of FMList and sent to it; a stand-in answers.

namespace quillon::bench {

namespace {

void measureAutomaticSearch(GrowthRun &run)
{
    // It waits for two seconds after each reception that it finds.
    constexpr int repetitions = 3;
    Window &window = run.window();
    const QString day = dateText(run.log().entry(run.entries() - 1).dateTime);
    for (const auto &[name, command] :
        {std::pair(u"automatic search of 2 receptions"_s, u"menuFMListAutoSearch"_s),
            std::pair(u"the same by the PI code alone"_s, u"menuFMLSearchPI"_s)}) {
        run.measureStep(
            name, [&] { run.answers().type({day}); },
            [&] {
                window.trigger(command);
                require(!run.log().entry(run.entries() - 2).uid.isEmpty(), "the automatic search updates");
            },
            repetitions);
    }
}

void measureSearch(GrowthRun &run)
{
    Window &window = run.window();
    auto &results = window.find<ResultList>(u"List2"_s);
    const auto choose = [&] { window.chooseRow(window.grid().rowOfEntry(run.entries() - 2)); };
    const auto search = [&] {
        window.click(u"Command11"_s);
        require(results.count() == 1, "a search finds the station");
    };
    run.measure(u"Search FMList"_s, choose, search);
    run.measureStep(
        u"double-click on a result, update included"_s,
        [&] {
            choose();
            search();
        },
        [&results] { Q_EMIT results.lineActivated(0); });
}

void measureUpload(GrowthRun &run)
{
    Window &window = run.window();
    run.measure(
        u"upload of 10 receptions"_s,
        [&] {
            LogChange unsent;
            for (qint32 number = 0; number < growthReceptions; ++number) {
                unsent.setField(number, run.log().entry(number), LogField::FMList, QString());
            }
            require(!unsent.isEmpty(), "there is something to upload");
            window.form().document().commit({u"Update"_s, unsent, {}});
        },
        [&] {
            window.trigger(u"menuFMListUploadLogs"_s);
            require(!run.log().entry(growthReceptions - 1).fmlist.isEmpty(), "the upload");
        });
}

} // namespace

void measureFmlist(GrowthRun &run)
{
    measureSearch(run);
    measureAutomaticSearch(run);
    measureUpload(run);
    Window &window = run.window();
    window.chooseRow(1);
    run.measure(u"what opens a page or a file, all five"_s, [&window] {
        window.click(u"Command5"_s);
        for (const QString &command : {u"menuFMLPropMap"_s, u"menuFMLYouProp"_s,
                 u"menuFMLAutoUpdateViewLog"_s, u"menuHelpOnlineHelp"_s}) {
            window.trigger(command);
        }
    });
}

} // namespace quillon::bench
