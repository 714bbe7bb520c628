#include "live/receiver.h"
#include "live/ui/receiverdock.h"
#include "rds-signal/channel.h"
#include "rds-signal/groupmaker.h"
#include "support.h"

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

bool report(const char *what, double figure, const char *unit, double bar)
{
    const bool missed = figure > bar;
    std::printf("%-46s %10.3f %-4s (at most %g)%s\n", what, figure, unit, bar, missed ? "  MISSED" : "");
    return missed;
}

bool groupsToModel()
{
    const std::vector<ReceiverEvent> events = hour();
    const KnownStations known(bench::fullLog());
    qint64 resident = 0;
    double fastest = 1e9;
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
        fastest = std::min(fastest, processorMilliseconds() - before);
        if (round == 4) {
            resident = residentKilobytes();
        }
    }
    const double grown = static_cast<double>(residentKilobytes() - resident);
    const bool slow = report("a group to what is heard", fastest * 1000 / groupsOfAnHour, "us", 50);
    return report("memory after five more hours of groups", grown, "kB", 512) || slow;
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
        QMetaObject::Connection shown = QObject::connect(
            &frequency, &QLineEdit::textChanged, &loop, [&] { longest = std::max(longest, one.elapsed()); });
        QTimer::singleShot(apart - one.elapsed(), &loop, &QEventLoop::quit);
        loop.exec();
        QObject::disconnect(shown);
    }
    const double share = (processorMilliseconds() - before) / static_cast<double>(whole.elapsed()) * 100;
    const bool late = report("from group to window, the longest", static_cast<double>(longest), "ms", 50);
    return report("of a core at 20 groups a second", share, "%", 2) || late || longest == 0;
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const bool slow = groupsToModel();
    const bool late = dockAtTwentyGroups();
    return slow || late ? 1 : 0;
}
