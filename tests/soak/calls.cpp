#include "firststart.h"
#include "kind.h"
#include "ledger.h"
#include "session.h"
#include "toldcalls.h"

#include "core/logbooklines.h"
#include "platform/files.h"

#include <QDir>
#include <QEvent>
#include <QObject>
#include <QWidget>

#include <array>
#include <cerrno>
#include <numeric>

namespace quillon::soak {

using namespace Qt::StringLiterals;

namespace {

constexpr int receptions = 20;
constexpr int mostCalls = 500;
constexpr qsizetype fewBytes = 100;

// A way in which a call fails.
struct Failure
{
    const char *name;
    int code = 0; ///< 0 for writes that take a part of what they are given
};

constexpr std::array failures {Failure {"EIO", EIO}, Failure {"ENOSPC", ENOSPC}, Failure {"EACCES", EACCES},
    Failure {"EINTR", EINTR}, Failure {"short writes", 0}};

// A leftover that stays does no harm. Its name is hidden, or that of the folder in which it is.
bool mayBeSilent(const ToldCalls &calls)
{
    return (calls.failed() == "remove" || calls.failed() == "removeDirectory")
        && calls.failedPath().contains("/.");
}

// Whether a part of the window has been shown, even if it has gone since.
class Appearance : public QObject
{
public:
    void watch(QWidget &part) { part.installEventFilter(this); }
    [[nodiscard]] bool happened() const { return m_happened; }

    bool eventFilter(QObject * /*part*/, QEvent *event) override
    {
        m_happened = m_happened || event->type() == QEvent::Show;
        return false;
    }

private:
    bool m_happened = false;
};

// One command on a folder of its own, with one of its calls failing.
class NthCall
{
public:
    NthCall(
        const Round &round, const QString &root, const Failure &failure, bool namesFiles, Outcome &outcome)
        : m_root(root)
        , m_failure(failure)
        , m_outcome(outcome)
        , m_ledger((layOut(root, receptions, freePort()), root))
        , m_teller([this](const QByteArray &line) { m_ledger.take(line); })
        , m_calls(m_teller)
        , m_session(root, m_calls, m_teller, receptions, round.seed)
    {
        if (namesFiles) {
            m_calls.refuseNameless();
        }
        m_session.start();
        m_noBackup.watch(*m_session.form().findChild<QWidget *>(u"noBackup"_s));
        check(m_ledger);
    }

    // Lets the call of that number fail; false when the command does not come so far.
    [[nodiscard]] bool run(const User::Command &command, int number)
    {
        m_calls.failAt(number, m_failure.code);
        m_session.run(command);
        const bool isReached = !m_calls.failed().isEmpty();
        if (isReached) {
            ++m_outcome.cases;
            afterFailure(command);
        } else if (m_session.failed() || !m_ledger.errors().isEmpty()) {
            m_outcome.lose(u"no call fails, and yet: "_s + QString::fromUtf8(m_ledger.errors().join('\n')));
        }
        check(m_ledger);
        return isReached;
    }
    // Only a full disk ends writing early: the rest of what is to be written follows.
    void runWithShortWrites(const User::Command &command)
    {
        m_calls.writeAtMost(fewBytes);
        m_session.run(command);
        ++m_outcome.cases;
        if (m_session.failed()) {
            m_outcome.lose(u"short writes are taken for an error"_s);
        }
        if (m_calls.hasTruncated()) {
            m_outcome.lose(u"a file lacks bytes, and that is not told"_s);
        }
        check(m_ledger);
    }

private:
    void afterFailure(const User::Command &command)
    {
        const QByteArray failed = m_calls.failed();
        const bool isTruncated = m_calls.hasTruncated();
        const bool mayBeSilent = soak::mayBeSilent(m_calls);
        // It is to be made once more.
        const bool hasToBeSilent = failed == "write" && m_failure.code == EINTR;
        m_calls.failAt(0, 0);
        // What the user was not told to be stored may be on the disk or not, until the next save.
        Ledger now = m_ledger;
        check(now);
        const bool isTold = m_session.failed() || m_noBackup.happened();
        if (isTold && hasToBeSilent) {
            m_outcome.lose(u"an interrupted write is taken for an error"_s);
        }
        if (!isTold && !mayBeSilent && !hasToBeSilent) {
            m_outcome.lose(QString::fromLatin1(failed) + u" failed, and that is not told"_s);
        }
        if (isTruncated && !isTold) {
            m_outcome.lose(u"a file lacks bytes, and that is not told"_s);
        }
        if (!m_session.failed() && !isStored()) {
            m_outcome.lose(u"all went well, and the log is not stored"_s);
        }
        m_session.form().document().saveUnsaved();
        if (!isStored()) {
            m_outcome.lose(u"the log is not stored with all calls well again"_s);
        }
        if (command.isOneStep) {
            // It was in memory, and is on the disk now.
            m_teller.done();
        }
    }
    [[nodiscard]] bool isStored()
    {
        return fileHolds(m_root + u"/log/RDSLog.log"_s,
            logbookBytes(m_session.form().log(), Regional::fromEnvironment().codePage));
    }
    void check(Ledger &ledger)
    {
        QStringList problems = ledger.problems();
        if (!ledger.messages().isEmpty()) {
            problems += QString::fromUtf8(ledger.messages());
        }
        if (!problems.isEmpty()) {
            m_outcome.lose(problems.join(u'\n'));
        }
    }

    QString m_root;
    const Failure &m_failure;
    Outcome &m_outcome;
    Ledger m_ledger;
    Teller m_teller;
    ToldCalls m_calls;
    Appearance m_noBackup;
    Session m_session;
};

// Every second time that all pairs are gone through, the file system knows no nameless files.
bool namesFiles(const Round &round)
{
    return round.seed / ((User::commands().size() + 1) * failures.size()) % 2 == 1;
}

// The first start of all with its call of that number failing; false when it does not come so far.
bool failFirstStart(
    const Round &round, const QString &root, const Failure &failure, int number, Outcome &outcome)
{
    Teller nobody([](const QByteArray &) {});
    ToldCalls undisturbed(nobody);
    const FirstStart reference(root + u"/whole"_s);
    const QString said = reference.run(undisturbed);
    ToldCalls calls(nobody);
    if (namesFiles(round)) {
        calls.refuseNameless();
    }
    if (failure.code == 0) {
        // The manual has millions of them.
        calls.writeAtMost(fewBytes * fewBytes);
    } else {
        calls.failAt(number, failure.code);
    }
    const FirstStart start(root);
    const QString told = start.run(calls);
    if (const QString wrong = start.unlike(reference.files()); !wrong.isEmpty()) {
        outcome.lose(wrong + u" after a first start that failed"_s);
    }
    const bool isReached = failure.code == 0 || !calls.failed().isEmpty();
    outcome.cases += isReached ? 1 : 0;
    const bool hasToBeSilent =
        !isReached || failure.code == 0 || (calls.failed() == "write" && failure.code == EINTR);
    if (hasToBeSilent && told != said) {
        outcome.lose(u"nothing was wrong, and yet it says: "_s + told);
    }
    if (!hasToBeSilent && told == said && !mayBeSilent(calls)) {
        outcome.lose(QString::fromLatin1(calls.failed()) + u" failed, and that is not told"_s);
    }
    if (calls.hasTruncated() && told == said) {
        outcome.lose(u"a file lacks bytes, and that is not told"_s);
    }
    // The next one makes the folder whole, and nothing else.
    const QString next = start.run(undisturbed);
    if (next != said || start.files() != reference.files()) {
        outcome.lose(u"after a first start that failed the next one says \"%1\" and has %2"_s.arg(
            next, start.files().keys().join(u", "_s)));
    }
    return isReached && failure.code != 0;
}

// One command on a new folder with its call of that number failing; false when it does not come so far.
bool failOneCall(const Round &round, const QString &root, const User::Command &command,
    const Failure &failure, int number, Outcome &outcome)
{
    NthCall once(round, root, failure, namesFiles(round), outcome);
    if (failure.code == 0) {
        once.runWithShortWrites(command);
        return false;
    }
    return once.run(command, number);
}

// The work with its first call failing, its second, and so on until it succeeds. Each time it is the first
// one on a new folder, so that its calls are the same up to the one that fails.
template<typename Work>
void failEachCall(
    const Round &round, const char *name, const Failure &failure, Outcome &outcome, const Work &work)
{
    bool isReached = true;
    for (int number = 1; isReached && outcome.problem.isEmpty(); ++number) {
        const QString root = round.root + u'/' + QString::number(number);
        isReached = work(root, number);
        if (number == mostCalls) {
            outcome.lose(u"it never succeeds"_s);
        }
        if (outcome.problem.isEmpty()) {
            QDir(root).removeRecursively();
        } else {
            outcome.problem += u" (%1, call %2, %3)"_s.arg(
                QString::fromLatin1(name), QString::number(number), QString::fromLatin1(failure.name));
        }
    }
}

} // namespace

// Each round is another command, or the first start, with another failure. Having no divisor in common, the
// two numbers meet in each pair once in as many rounds as there are pairs, and a few rounds see every
// failure.
Outcome callsRound(const Round &round)
{
    const auto &commands = User::commands();
    const std::size_t works = commands.size() + 1;
    if (std::gcd(works, failures.size()) != 1) {
        qFatal("some commands would never meet some failures");
    }
    const std::size_t work = round.seed % works;
    const Failure &failure = failures.at(round.seed % failures.size());
    return outcomeOf([&](Outcome &outcome) {
        if (work == commands.size()) {
            failEachCall(round, "first start", failure, outcome, [&](const QString &root, int number) {
                return failFirstStart(round, root, failure, number, outcome);
            });
            return;
        }
        const User::Command &command = commands.at(work);
        failEachCall(round, command.name, failure, outcome, [&](const QString &root, int number) {
            return failOneCall(round, root, command, failure, number, outcome);
        });
    });
}

} // namespace quillon::soak
