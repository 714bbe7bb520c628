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
constexpr int exitOfWrongWords = 2;
// What CTest is told to take for a test that was skipped.
constexpr int exitOfNothingPossible = 77;

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

enum class Ending {
    Well,
    Failed,
    NotPossible,
};

// Runs rounds of a kind and prints its line.
Ending run(const Kind &kind, const Plan &plan)
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
        const qint64 left =
            plan.milliseconds > 0 ? std::max(plan.milliseconds - timer.elapsed(), qint64(1)) : 0;
        Outcome one = kind.round({folder.path(), seed, plan.count, left});
        if (one.cases == 0 && one.problem.isEmpty()) {
            if (rounds == 1 && !kind.lacking.isEmpty()) {
                print(u"%1 is not possible here: %2"_s.arg(kind.name, kind.lacking));
                return Ending::NotPossible;
            }
            one.lose(u"nothing was done"_s);
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
    return problems.isEmpty() ? Ending::Well : Ending::Failed;
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

// What is no number of its kind ends the program.
double numberOf(const QString &text, const QString &what)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (!isNumber || number < 0) {
        std::fprintf(stderr, "\"%s\" is no number of %s\n", qPrintable(text), qPrintable(what));
        std::exit(exitOfWrongWords);
    }
    return number;
}

Plan planOf(const QCommandLineParser &options, qsizetype kindCount)
{
    Plan plan;
    plan.count = options.isSet(u"count"_s) ? qRound64(numberOf(options.value(u"count"_s), u"cases"_s)) : 0;
    plan.keep = options.value(u"keep"_s);
    plan.once = options.isSet(u"replay"_s);
    plan.seed = options.isSet(u"seed"_s) || plan.once
        ? options.value(plan.once ? u"replay"_s : u"seed"_s).toUInt()
        : QRandomGenerator::system()->bounded(1'000'000U);
    const QStringList words = options.positionalArguments();
    const double minutes = words.isEmpty() ? usualMinutes : numberOf(words.constFirst(), u"minutes"_s);
    if (options.isSet(u"seconds"_s)) {
        plan.milliseconds = qRound64(numberOf(options.value(u"seconds"_s), u"seconds"_s) * 1000);
    } else if (plan.count == 0) {
        plan.milliseconds = qRound64(minutes * 60'000) / kindCount;
    }
    // A count of nothing and a time of nothing are one round.
    plan.once = plan.once || (plan.count == 0 && plan.milliseconds == 0);
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
    QStringList wanted = options.values(u"kind"_s);
    const bool all = wanted.isEmpty();
    std::vector<Kind> chosen;
    for (const Kind &kind : kinds()) {
        if (options.isSet(u"list"_s)) {
            print(u"%1 %2"_s.arg(kind.name, -9).arg(kind.what));
        } else if (all || wanted.removeAll(kind.name) > 0) {
            chosen.push_back(kind);
        }
    }
    if (options.isSet(u"list"_s)) {
        return 0;
    }
    if (!wanted.isEmpty()) {
        std::fprintf(stderr, "there is no kind \"%s\"; --list names them\n", qPrintable(wanted.constFirst()));
        return exitOfWrongWords;
    }
    std::signal(SIGINT, stop);
    std::signal(SIGTERM, stop);
    warmUp();
    const Plan plan = planOf(options, static_cast<qsizetype>(chosen.size()));
    bool failed = false;
    bool possible = false;
    for (const Kind &kind : chosen) {
        const Ending ending = stopped != 0 ? Ending::Well : run(kind, plan);
        failed = failed || ending == Ending::Failed;
        possible = possible || ending != Ending::NotPossible;
    }
    return failed ? 1 : possible ? 0 : exitOfNothingPossible;
}
