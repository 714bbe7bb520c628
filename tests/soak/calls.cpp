#include "kind.h"
#include "ledger.h"
#include "session.h"
#include "toldcalls.h"

#include "core/logbooklines.h"
#include "platform/files.h"

#include <array>
#include <cerrno>
#include <numeric>
#include <unistd.h>

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

// Whether a command may go well with this call failing.
bool mayBeSilent(const QByteArray &call, int code)
{
    return (call == "write" && code == EINTR) // it is made once more
        || call == "remove" // a leftover that stays does no harm
        || call == "makeDirectory"; // the folder of the day's backup: the status bar tells of it
}

// One command, with its first call failing, its second, and so on until it succeeds.
class NthCall
{
public:
    NthCall(const Round &round, const Session::Command &command, const Failure &failure, Outcome &outcome)
        : m_root(round.root)
        , m_command(command)
        , m_failure(failure)
        , m_outcome(outcome)
        , m_ledger(round.root)
        , m_teller([this](const QByteArray &line) { m_ledger.take(line); })
        , m_calls(m_teller)
        , m_session(round.root, m_calls, m_teller, receptions, round.seed)
    {
    }

    void run()
    {
        m_session.start();
        check(m_ledger, 0);
        if (m_failure.code == 0) {
            // Only a full disk ends writing early: the rest of what is to be written follows.
            m_calls.writeAtMost(fewBytes);
            m_session.run(m_command);
            ++m_outcome.cases;
            if (!m_session.failed() && m_calls.hasTruncated()) {
                lose(0, u"a file lacks bytes, and that is not told"_s);
            }
            check(m_ledger, 0);
            return;
        }
        for (int call = 1; call < mostCalls; ++call) {
            m_calls.failAt(call, m_failure.code);
            m_session.run(m_command);
            const QByteArray failed = m_calls.failed();
            const bool truncated = m_calls.hasTruncated();
            m_calls.failAt(0, 0);
            const bool reached = !failed.isEmpty();
            if (reached) {
                ++m_outcome.cases;
                afterFailure(call, failed, truncated);
            }
            check(m_ledger, call);
            if (!reached) {
                return;
            }
        }
        lose(mostCalls, u"it never succeeds"_s);
    }

private:
    void afterFailure(int call, const QByteArray &failed, bool truncated)
    {
        // What the user was not told to be stored may be on the disk or not, until the next save.
        Ledger now = m_ledger;
        check(now, call);
        if (!m_session.failed() && (!mayBeSilent(failed, m_failure.code) || truncated || !isStored())) {
            lose(call, QString::fromLatin1(failed) + u" failed, and that is not told"_s);
        }
        m_session.form().document().saveUnsaved();
        if (!isStored()) {
            lose(call, u"the log is not stored with all calls well again"_s);
        }
    }
    [[nodiscard]] bool isStored()
    {
        return fileHolds(m_root + u"/log/RDSLog.log"_s,
            logbookBytes(m_session.form().log(), Regional::fromEnvironment().codePage));
    }
    void check(Ledger &ledger, int call)
    {
        QStringList problems = ledger.problems();
        if (!ledger.messages().isEmpty()) {
            problems += QString::fromUtf8(ledger.messages());
        }
        if (!problems.isEmpty()) {
            lose(call, problems.join(u'\n'));
        }
    }
    void lose(int call, const QString &what)
    {
        m_outcome.lose(u"%1, call %2, %3: %4"_s.arg(QString::fromLatin1(m_command.name))
                           .arg(call)
                           .arg(QString::fromLatin1(m_failure.name), what));
    }

    QString m_root;
    const Session::Command &m_command;
    const Failure &m_failure;
    Outcome &m_outcome;
    Ledger m_ledger;
    Teller m_teller;
    ToldCalls m_calls;
    Session m_session;
};

} // namespace

// Each round is another command with another failure. Having no divisor in common, the two numbers meet in
// each pair once in as many rounds as there are pairs, and a few rounds see every failure.
Outcome callsRound(const Round &round)
{
    const auto &commands = Session::commands();
    if (std::gcd(commands.size(), failures.size()) != 1) {
        qFatal("some commands would never meet some failures");
    }
    const Session::Command &command = commands.at(round.seed % commands.size());
    const Failure &failure = failures.at(round.seed % failures.size());
    layOut(round.root, receptions, freePort());
    return outcomeOf([&](Outcome &outcome) { NthCall(round, command, failure, outcome).run(); });
}

} // namespace quillon::soak
