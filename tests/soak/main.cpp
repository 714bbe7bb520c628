#include "core/ui/form1.h"
#include "kind.h"
#include "support/testfiles.h"
#include "ui/looks.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>

#include <csignal>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::soak;

namespace {

constexpr int usualMinutes = 7;

// What the platform without a screen says of each window is of no interest.
void tell(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
{
    if (!text.startsWith(u"This plugin does not support"_s) && !text.startsWith(u"QStandardPaths"_s)) {
        std::fprintf(stderr, "%s\n", qPrintable(text));
    }
    if (type == QtFatalMsg) {
        std::abort();
    }
}

// Set by a signal: the round that runs is the last one.
volatile std::sig_atomic_t stopped = 0;

void stop(int /*signal*/)
{
    stopped = 1;
}

// The fonts and styles that each fork would otherwise read for itself. Nothing is painted: that may start
// threads, which no fork would have.
void warmUp()
{
    const test::TestDirectory folder(test::memoryDirectory.toString());
    Form1 form({folder.path(), QStringLiteral(QUILLON_SUPPLIED), Regional::fromEnvironment()});
    form.ensurePolished();
    form.adjustSize();
    if (QDir(u"/proc/self/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size() != 1) {
        qFatal("there are threads before the first fork");
    }
}

// How long to go on, and with what.
struct Plan
{
    qint64 milliseconds = 0; ///< for each kind; 0 for no end
    qint64 count = 0; ///< of cases of each kind; 0 for as many as there is time
    quint32 seed = 0;
    bool once = false; ///< one round, as it was
    QString keep; ///< where folders go in which something went wrong
};

void print(const QString &text)
{
    std::printf("%s\n", qPrintable(text));
    std::fflush(stdout);
}

// Puts what a round has left aside, so that it can be looked at.
void keepFolder(const QString &folder, const QString &as)
{
    QDir().mkpath(as);
    QProcess::execute(u"cp"_s, {u"-a"_s, folder + u"/."_s, as});
}

// Runs rounds of a kind, prints its line, and says whether all was well.
bool run(const Kind &kind, const Plan &plan)
{
    QElapsedTimer timer;
    timer.start();
    Outcome all;
    quint32 seed = plan.seed;
    QStringList problems;
    int rounds = 0;
    do {
        ++rounds;
        const test::TestDirectory folder(test::memoryDirectory.toString());
        const Outcome one = kind.round({folder.path(), seed, plan.count});
        if (one.cases == 0 && one.problem.isEmpty()) {
            print(kind.name + u" is not possible here"_s);
            return true;
        }
        all.cases += one.cases;
        all.lost += one.lost;
        all.crashes += one.crashes;
        if (!one.problem.isEmpty()) {
            const QString kept = u"%1/%2-%3"_s.arg(plan.keep, kind.name).arg(seed);
            keepFolder(folder.path(), kept);
            problems += u"%1\n    left in %2; once more: tools/soak --kind %3 --replay %4%5"_s.arg(
                one.problem, kept, kind.name, QString::number(seed),
                plan.count > 0 ? u" --count %1"_s.arg(plan.count) : QString());
        }
        ++seed;
    } while (stopped == 0 && !plan.once && (plan.milliseconds == 0 || timer.elapsed() < plan.milliseconds)
        && (plan.count == 0 || all.cases < plan.count));
    print(u"%1 %2 %3 in %4 rounds, %5 lost, %6 crashes, %7 s"_s.arg(kind.name, -9)
              .arg(all.cases, 9)
              .arg(kind.unit)
              .arg(rounds)
              .arg(all.lost)
              .arg(all.crashes)
              .arg(static_cast<double>(timer.elapsed()) / 1000, 0, 'f', 1));
    for (const QString &problem : std::as_const(problems)) {
        print(u"  "_s + problem);
    }
    return problems.isEmpty();
}

void addOptions(QCommandLineParser &options)
{
    options.setApplicationDescription(
        u"Brings the program into all kinds of trouble, and looks whether it keeps what it has promised."_s);
    options.addHelpOption();
    options.addOptions({
        {u"kind"_s, u"This kind alone; may stand more than once."_s, u"name"_s},
        {u"count"_s, u"So many cases of each kind, however long it takes."_s, u"number"_s},
        {u"seconds"_s, u"So long for each kind."_s, u"number"_s},
        {u"seed"_s, u"The first round has this seed, each further one the next."_s, u"number"_s},
        {u"replay"_s, u"The one round of this seed."_s, u"seed"_s},
        {u"keep"_s, u"Where folders go in which something went wrong."_s, u"folder"_s, u"soak-failures"_s},
        {u"list"_s, u"Names the kinds."_s},
    });
    options.addPositionalArgument(u"minutes"_s,
        u"For all kinds together; %1 when nothing is said."_s.arg(usualMinutes), u"[minutes]"_s);
}

Plan planOf(const QCommandLineParser &options, qsizetype kindCount)
{
    Plan plan;
    plan.count = options.value(u"count"_s).toLongLong();
    plan.keep = options.value(u"keep"_s);
    plan.once = options.isSet(u"replay"_s);
    plan.seed = options.isSet(u"seed"_s) || plan.once
        ? options.value(plan.once ? u"replay"_s : u"seed"_s).toUInt()
        : QRandomGenerator::system()->bounded(1'000'000U);
    const double minutes = options.positionalArguments().isEmpty()
        ? usualMinutes
        : options.positionalArguments().constFirst().toDouble();
    if (options.isSet(u"seconds"_s)) {
        plan.milliseconds = static_cast<qint64>(options.value(u"seconds"_s).toDouble() * 1000);
    } else if (plan.count == 0) {
        plan.milliseconds = static_cast<qint64>(minutes * 60'000) / kindCount;
    }
    return plan;
}

} // namespace

int main(int argc, char *argv[])
{
    qInstallMessageHandler(tell);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"quillon"_s);
    installLooks();
    QCommandLineParser options;
    addOptions(options);
    options.process(application);
    const QStringList wanted = options.values(u"kind"_s);
    std::vector<Kind> chosen;
    for (const Kind &kind : kinds()) {
        if (options.isSet(u"list"_s)) {
            print(u"%1 %2"_s.arg(kind.name, -9).arg(kind.what));
        } else if (wanted.isEmpty() || wanted.contains(kind.name)) {
            chosen.push_back(kind);
        }
    }
    if (chosen.empty()) {
        return options.isSet(u"list"_s) ? 0 : 2;
    }
    std::signal(SIGINT, stop);
    std::signal(SIGTERM, stop);
    warmUp();
    const Plan plan = planOf(options, static_cast<qsizetype>(chosen.size()));
    bool good = true;
    for (const Kind &kind : chosen) {
        good = (stopped != 0 || run(kind, plan)) && good;
    }
    return good ? 0 : 1;
}
