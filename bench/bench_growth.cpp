// How the commands of the main window grow with the log: each is measured in processor time at four sizes,
// and the exponent of its growth told.

#include "growthrun.h"
#include "supporthome.h"
#include "supportprogram.h"

using namespace quillon::bench;
using namespace Qt::StringLiterals;

namespace {

void measureAll(GrowthRun &run)
{
    run.measure(u"start"_s, [&run] { const Window window(run.home()); });
    run.open();
    for (const auto part :
        {measureEntries, measureMany, measureReceiver, measureImports, measureSearches, measureGrid,
            measureFmlist, measureExports, measureWindows, measureStatistics, measureMap, measureBackups}) {
        part(run);
    }
    run.close();
}

} // namespace

int main(int argc, char *argv[])
{
    const Program program(argc, argv);
    EveningAnswers answers;
    answers.beStrict();
    Service service(eveningStations());
    GrowthTable table;
    for (std::size_t size = 0; size < growthSizes.size(); ++size) {
        GrowthRun run(table, answers, service, size);
        measureAll(run);
    }
    return table.tell() ? 1 : 0;
}
