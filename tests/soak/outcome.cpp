#include "kind.h"
#include "process.h"

#include <QByteArrayList>
#include <QElapsedTimer>

namespace quillon::soak {

using namespace Qt::StringLiterals;

Outcome outcomeOf(const std::function<void(Outcome &outcome)> &work, int within)
{
    Process process([&](const Process::Tell &tell) {
        Outcome outcome;
        work(outcome);
        QByteArray problem = outcome.problem.toUtf8();
        constexpr qsizetype most = 3'000;
        problem.truncate(most);
        tell(QByteArray::number(outcome.cases) + '\t' + QByteArray::number(outcome.lost) + '\t'
            + QByteArray::number(outcome.crashes) + '\t' + problem.replace('\n', ' ').replace('\t', ' ')
            + '\n');
    });
    QElapsedTimer timer;
    timer.start();
    const QByteArrayList words = process.told(within).trimmed().split('\t');
    const bool hung = timer.elapsed() >= within;
    if (hung) {
        process.end();
    } else {
        process.wait();
    }
    Outcome outcome;
    if (!process.wasDone()) {
        outcome.crash(
            hung ? u"the program hangs"_s : u"the program ended by "_s + QString::fromUtf8(process.ending()));
        return outcome;
    }
    outcome.cases = words.value(0).toLongLong();
    outcome.lost = words.value(1).toLongLong();
    outcome.crashes = words.value(2).toLongLong();
    outcome.problem = QString::fromUtf8(words.value(3));
    return outcome;
}

} // namespace quillon::soak
