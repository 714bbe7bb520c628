// An RDS Spy import of 1,000 receptions into a log of 20,000 entries through the real windows, beside 1,000
// times what one Add costs there.

#include "core/logbooklines.h"
#include "import/ui/importrdsspy.h"
#include "platform/files.h"
#include "support.h"
#include "supportimport.h"
#include "supportwindow.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProgressBar>
#include <QSet>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace quillon;
using namespace quillon::bench;
using namespace Qt::StringLiterals;

namespace {

constexpr int entries = 20'000;
constexpr int repetitions = 25;

// Milliseconds by the clock and of the processor.
struct Cost
{
    double clock = 0;
    double processor = 0;
};

Cost costOf(const std::function<void()> &work)
{
    QElapsedTimer timer;
    settle();
    timer.start();
    const Times times = measured(work);
    return {static_cast<double>(timer.nsecsElapsed()) / 1e6, times.all};
}

// Counts the values of a progress bar that reach the screen.
class Painted : public QObject
{
public:
    explicit Painted(QProgressBar &bar)
        : m_bar(bar)
    {
        bar.installEventFilter(this);
    }
    [[nodiscard]] int values() const { return static_cast<int>(m_values.size()); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            m_values.insert(m_bar.value());
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QProgressBar &m_bar;
    QSet<int> m_values;
};

QByteArray logBytes()
{
    const Logbook full = fullLog();
    Logbook log;
    for (int i = 0; i < entries; ++i) {
        log.AddEntry(full.entry(i));
    }
    return logbookBytes(log, CodePage(1252));
}

Cost medianAdd(Window &window)
{
    std::vector<Cost> costs;
    for (int i = 0; i < repetitions; ++i) {
        window.typeReception();
        costs.push_back(costOf([&window] { window.click(u"Command1"_s); }));
    }
    const auto medianOf = [&costs](double Cost::*part) {
        std::ranges::sort(costs, {}, part);
        return costs[costs.size() / 2].*part;
    };
    return {medianOf(&Cost::clock), medianOf(&Cost::processor)};
}

struct Import
{
    Cost cost;
    int painted = 0;
};

Import importDay(Window &window, Answering &answering, int day)
{
    answering.text = u"%1/06/2010"_s.arg(day);
    window.trigger(u"menuImportRDSSpyLog"_s);
    answering.text.clear();
    auto &dialog = window.find<importRDSSpy>(u"importRDSSpy"_s);
    const Painted painted(window.find<QProgressBar>(u"progress"_s));
    auto *import = dialog.findChild<QAbstractButton *>(u"Command3"_s);
    const Cost cost = costOf([import] { import->click(); });
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return {cost, painted.values()};
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QTemporaryDir home;
    const QTemporaryDir spy;
    writeFile(home.filePath(u"RDSLog.log"_s), logBytes());
    writeFile(home.filePath(u"tx.lst"_s), transmitterBytes(fullTransmitterList(), CodePage(1252)));
    writeFile(
        home.filePath(u"LOGBOOK.INI"_s), QByteArray("RDSSPY_LOGS=" + QFile::encodeName(spy.path()) + "\r\n"));
    const std::vector<int> counts {250, 500, 1'000};
    for (std::size_t i = 0; i < counts.size(); ++i) {
        writeSpyReceptions(spy.path(), static_cast<int>(i) + 1, counts[i]);
    }
    Answering answering;
    Window window(home.path());
    std::printf("%-28s %12s %12s %12s %12s %10s\n", "", "clock ms", "processor ms", "of as many Adds",
        "processor", "painted");
    bool missed = false;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        const Cost add = medianAdd(window);
        std::printf("%-28s %12.2f %12.2f\n", "one Add", add.clock, add.processor);
        const int before = window.form().log().count();
        const Import import = importDay(window, answering, static_cast<int>(i) + 1);
        if (window.form().log().count() != before + counts[i]) {
            qFatal("not all receptions were imported");
        }
        const Cost ratio {
            import.cost.clock / counts[i] / add.clock, import.cost.processor / counts[i] / add.processor};
        // By the clock a disk that others use decides. A bar that moves shows more than its first and last
        // value.
        const bool bad = ratio.processor > 1 || import.painted < 10;
        std::printf("%-28s %12.0f %12.0f %12.2f %12.2f %10d%s\n",
            qPrintable(u"import of %1 receptions"_s.arg(counts[i])), import.cost.clock, import.cost.processor,
            ratio.clock, ratio.processor, import.painted, bad ? "  MISSED" : "");
        missed = missed || bad;
    }
    return missed ? 1 : 0;
}
