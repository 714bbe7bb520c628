#include "driver/orders.h"
#include "kind.h"
#include "ledger.h"
#include "process.h"
#include "realprogram.h"
#include "session.h"
#include "toldcalls.h"

#include <QElapsedTimer>
#include <QRandomGenerator>

#include <algorithm>
#include <unistd.h>

namespace quillon::soak {

using namespace Qt::StringLiterals;

namespace {

constexpr int killsOfARound = 20;
constexpr int receptions = 100;
constexpr int numbersOfALife = 10'000;
constexpr quint32 longestLifeUs = 300'000;
constexpr quint32 longestEveningUs = 3'000'000; // some commands wait for seconds
constexpr quint32 longestStartUs = 120'000;
constexpr int mostCalls = 200;
constexpr int longestHang = 60'000; // milliseconds

// When a program dies.
struct Death
{
    enum class Cause { TimeAtWork, TimeAtStart, Call };
    Cause cause {};
    quint32 microseconds = 0;
    int call = 0;
    ToldCalls::Moment moment {};

    static Death drawn(QRandomGenerator &random)
    {
        const auto die = random.bounded(10);
        Death death;
        death.cause = die < 5 ? Cause::TimeAtWork : die < 9 ? Cause::Call : Cause::TimeAtStart;
        const bool isLong = die == 0;
        death.microseconds = random.bounded(death.cause == Cause::TimeAtStart ? longestStartUs
                : isLong                                                      ? longestEveningUs
                                                                              : longestLifeUs);
        death.call = death.cause == Cause::Call ? random.bounded(1, mostCalls) : 0;
        death.moment = static_cast<ToldCalls::Moment>(random.bounded(3));
        return death;
    }
};

// The program, with a user in it who works until it dies.
Program driven(const QString &root, int first, quint32 seed, const Death &death)
{
    QProcessEnvironment environment = programEnvironment(root);
    environment.insert(u"TMPDIR"_s, root + u"/tmp"_s);
    environment.insert(u"LD_PRELOAD"_s, QStringLiteral(QUILLON_DRIVER));
    // A library that comes before that of the sanitizer.
    environment.insert(
        u"ASAN_OPTIONS"_s, environment.value(u"ASAN_OPTIONS"_s) + u":verify_asan_link_order=0"_s);
    QByteArrayList words {QByteArrayLiteral(QUILLON_PROGRAM)};
    const QStringList arguments = programArguments(root, root + u"/log"_s);
    for (const QString &argument : arguments) {
        words += QFile::encodeName(argument);
    }
    const Orders orders {root, 0, first, seed, death.call, static_cast<int>(death.moment)};
    return {words, [=](int pipe) {
                Orders complete = orders;
                complete.pipe = pipe;
                QByteArrayList all {complete.variable()};
                const QStringList others = environment.toStringList();
                for (const QString &other : others) {
                    all += QFile::encodeName(other);
                }
                return all;
            }};
}

void take(Ledger &ledger, const QByteArray &lines)
{
    const QByteArrayList all = lines.split('\n');
    for (const QByteArray &line : all) {
        ledger.take(line);
    }
}

// Waits until the program has started or is no more; false when neither happens.
bool waitForStart(Process &process, Ledger &ledger)
{
    QElapsedTimer timer;
    timer.start();
    while (ledger.started() < 0 && timer.elapsed() < longestHang) {
        const QByteArray lines = process.told(longestHang);
        if (lines.isEmpty()) {
            return timer.elapsed() < longestHang;
        }
        take(ledger, lines);
    }
    return ledger.started() >= 0;
}

QString startProblem(const Ledger &ledger, int onDisk)
{
    if (ledger.started() >= 0 && ledger.started() != onDisk) {
        return u"the start found %1 receptions of %2"_s.arg(ledger.started()).arg(onDisk);
    }
    return ledger.messages().isEmpty() ? QString()
                                       : u"the start says: "_s + QString::fromUtf8(ledger.messages());
}

// What is said of a program in which nothing happens any more.
QString hanging(const Ledger &ledger, const QString &where)
{
    return ledger.confirmed() == 0
        ? u"nothing was done: the program hangs %1, or nobody works in it"_s.arg(where)
        : u"the program hangs "_s + where;
}

void kill(Process &process, Ledger &ledger, const Death &death, Outcome &outcome)
{
    if (death.cause == Death::Cause::TimeAtStart) {
        ::usleep(death.microseconds);
    } else if (!waitForStart(process, ledger)) {
        outcome.crash(hanging(ledger, u"at its start"_s));
    } else if (death.cause == Death::Cause::TimeAtWork) {
        ::usleep(death.microseconds);
    } else {
        // It kills itself.
        QElapsedTimer timer;
        timer.start();
        for (QByteArray lines = process.told(longestHang); !lines.isEmpty() && timer.elapsed() < longestHang;
             lines = process.told(longestHang)) {
            take(ledger, lines);
            timer.restart();
        }
        if (timer.elapsed() >= longestHang) {
            outcome.crash(hanging(ledger, u"in "_s + QString::fromUtf8(ledger.command())));
        }
    }
    take(ledger, process.end());
}

} // namespace

Outcome killsRound(const Round &round)
{
    Outcome outcome;
    QRandomGenerator random(round.seed);
    layOut(round.root, receptions, freePort());
    Ledger ledger(round.root);
    for (int i = 0; i <= killsOfARound && outcome.problem.isEmpty(); ++i) {
        const bool last = i == killsOfARound;
        const Death death = last ? Death {} : Death::drawn(random);
        const quint32 seed = random.generate();
        const int onDisk = ledger.onDisk();
        ledger.restart();
        Process process(driven(round.root, (i + 1) * numbersOfALife, seed, death));
        kill(process, ledger, death, outcome);
        outcome.cases += last ? 0 : 1;
        const QString at = u" (kill %1, in %2)"_s.arg(i + 1).arg(QString::fromUtf8(ledger.command()));
        if (!process.wasKilled()) {
            outcome.crash(u"the program ended by "_s + QString::fromUtf8(process.ending()) + at);
        }
        const QStringList problems = QStringList {startProblem(ledger, onDisk)} + ledger.problems();
        const QString problem = problems.join(u'\n').trimmed();
        if (!problem.isEmpty() || !ledger.errors().isEmpty()) {
            outcome.lose(problem + u'\n' + QString::fromUtf8(ledger.errors().join('\n')) + at);
        }
    }
    if (outcome.problem.isEmpty() && ledger.confirmed() == 0) {
        outcome.lose(u"nothing was done: nobody has come to work in the program"_s);
    }
    return outcome;
}

} // namespace quillon::soak
