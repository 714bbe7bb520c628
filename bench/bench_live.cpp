#include "live/receiver.h"
#include "live/ui/receiverdock.h"
#include "rds-signal/channel.h"
#include "rds-signal/groupmaker.h"
#include "support.h"
#include "supportreference.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QLineEdit>
#include <QMainWindow>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <unistd.h>

// What a receiver costs: a group on its way to what is heard, an hour of groups, the dock at twenty groups a
// second.

using namespace quillon;
using namespace quillon::rdssignal;
using namespace Qt::StringLiterals;

namespace {

constexpr int groupsOfAnHour = 41'106;

double processorMilliseconds()
{
    timespec now {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// What the process holds in memory, in kB.
qint64 residentKilobytes()
{
    QFile file(u"/proc/self/statm"_s);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("no /proc");
    }
    return file.readAll().split(' ').at(1).toLongLong() * ::sysconf(_SC_PAGESIZE) / 1024;
}

/// A source whose groups come when the benchmark wants.
class Groups : public ReceiverSource
{
public:
    void say(const ReceiverEvent &event, qint64 when) { Q_EMIT told(event, when); }

protected:
    void attempt() override { listening(); }
    void hangUp() override { }
};

/// An hour of weak stations, one every half minute.
std::vector<ReceiverEvent> hour()
{
    std::vector<ReceiverEvent> events;
    Channel channel({0, 0.9, 7, 0.01, 1});
    GroupMaker maker({98'500'000, 0xD3C2, u"MDR JUMP"_s, u"Now: Sade"_s, {}, 0, 0xE0});
    for (int i = 0; i < groupsOfAnHour; ++i) {
        if (i % 342 == 0) {
            events.emplace_back(Tuned {87'600'000 + qint64 {i / 342 % 200} * 100'000});
            maker = GroupMaker({98'500'000, static_cast<quint16>(0xD000 + i / 342), u"MDR JUMP"_s,
                u"Now: Sade"_s, {}, 0, 0xE0});
        }
        events.emplace_back(GroupHeard {channel.received(maker.next(), i * 0.0876)});
    }
    return events;
}

/// A row of the table: a figure and what it is held to, which it may reach.
bool misses(const char *what, const char *unit, double figure, double heldTo)
{
    const double ratio = figure / heldTo;
    std::printf("%-50s %10.2f %10.2f %-4s %8.2f %8d%s\n", what, figure, heldTo, unit, ratio, 1,
        ratio > 1 ? "  MISSED" : "");
    std::fflush(stdout);
    return ratio > 1;
}

bool groupsToModel()
{
    const std::vector<ReceiverEvent> events = hour();
    const KnownStations known(bench::fullLog());
    qint64 resident = 0;
    std::vector<double> times;
    std::vector<double> references;
    for (int round = 0; round < 10; ++round) {
        Listening listening(known);
        HeardTable table;
        const double before = processorMilliseconds();
        qint64 when = 1'750'000'000'000;
        for (const ReceiverEvent &event : events) {
            listening.take(event, when += 88);
            if (listening.station()) {
                table.note(*listening.station());
            }
        }
        times.push_back(processorMilliseconds() - before);
        references.push_back(bench::referenceTime());
        if (round == 4) {
            resident = residentKilobytes();
        }
    }
    const double grown = static_cast<double>(residentKilobytes() - resident);
    const bool slow = misses("an hour of groups to what is heard, reference", "ms", bench::medianOf(times),
        bench::medianOf(references));
    return misses("memory after five more hours of groups", "kB", grown, 512) || slow;
}

bool dockAtTwentyGroups()
{
    constexpr int groups = 200;
    constexpr int apart = 50;
    const QTemporaryDir folder;
    const Logbook log = bench::fullLog();
    QMainWindow window;
    ReceiverDock dock(
        log, [](const HeardReception &) { return true; }, folder.path());
    window.addDockWidget(Qt::RightDockWidgetArea, &dock);
    window.resize(1200, 800);
    window.show();
    dock.start();
    auto made = std::make_unique<Groups>();
    Groups &source = *made;
    dock.receiver().listenTo(std::move(made));
    // What the first showing costs is no matter of groups.
    QEventLoop shown;
    QTimer::singleShot(500, &shown, &QEventLoop::quit);
    shown.exec();
    auto &frequency = *dock.findChild<QLineEdit *>(u"receiverFreq"_s);
    GroupMaker maker({98'500'000, 0xD3C2, u"MDR JUMP"_s, u"Now: Sade"_s, {}, 0, 0xE0});

    // A retune a second, which is seen in the window at once.
    qint64 longest = 0;
    QElapsedTimer whole;
    whole.start();
    const double before = processorMilliseconds();
    for (int i = 0; i < groups; ++i) {
        const qint64 hertz = 87'600'000 + qint64 {i / 20} * 100'000;
        QElapsedTimer one;
        one.start();
        source.say(Tuned {hertz}, nowMilliseconds());
        source.say(SignalHeard {30 + i % 10 / 10.0, u"dBf"}, nowMilliseconds());
        source.say(GroupHeard {maker.next()}, nowMilliseconds());
        QEventLoop loop;
        const QMetaObject::Connection seen = QObject::connect(
            &frequency, &QLineEdit::textChanged, &loop, [&] { longest = std::max(longest, one.elapsed()); });
        QTimer::singleShot(apart - one.elapsed(), &loop, &QEventLoop::quit);
        loop.exec();
        QObject::disconnect(seen);
    }
    const double share = (processorMilliseconds() - before) / static_cast<double>(whole.elapsed()) * 100;
    const bool late = misses("from group to window, the longest", "ms", static_cast<double>(longest), 50);
    return misses("processor at 20 groups a second, of a core", "%", share, 2) || late || longest == 0;
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    std::printf("%-50s %10s %10s %-4s %8s %8s\n", "a receiver", "figure", "held to", "", "ratio", "bar");
    const bool slow = groupsToModel();
    const bool late = dockAtTwentyGroups();
    return slow || late ? 1 : 0;
}
