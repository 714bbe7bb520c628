#include "inputs.h"
#include "kind.h"
#include "mutation.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <sys/mman.h>

namespace quillon::soak {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 inputsOfARound = 20'000;

// A number that a child leaves behind, however it ends.
class SharedNumber
{
public:
    SharedNumber()
        : m_number(static_cast<qint64 *>(
            ::mmap(nullptr, sizeof(qint64), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)))
    {
        *m_number = 0;
    }
    ~SharedNumber() { ::munmap(m_number, sizeof(qint64)); }
    SharedNumber(const SharedNumber &) = delete;
    SharedNumber &operator=(const SharedNumber &) = delete;

    qint64 &operator*() { return *m_number; }

private:
    qint64 *m_number;
};

QString fuzzer(const QString &name)
{
    return QStringLiteral(QUILLON_FUZZERS "/fuzz_") + name;
}

} // namespace

// Junk for one reader, made from its samples.
Outcome inputRound(const Round &round)
{
    const Reader &reader = readers().at(round.seed % readers().size());
    const QByteArrayList samples = samplesOf(QString::fromLatin1(reader.name));
    SharedNumber done;
    Outcome outcome = outcomeOf([&](Outcome &all) {
        Mutation mutation(samples, round.seed);
        for (*done = 0; *done < inputsOfARound; ++*done) {
            const QByteArray &input = mutation.next();
            reader.read(reinterpret_cast<const std::uint8_t *>(input.constData()),
                static_cast<std::size_t>(input.size()));
        }
        all.cases = inputsOfARound;
    });
    if (!outcome.problem.isEmpty()) {
        // The same again, up to the input that was too much.
        Mutation mutation(samples, round.seed);
        for (qint64 i = 0; i < *done; ++i) {
            (void)mutation.next();
        }
        QFile file(round.root + u'/' + QString::fromLatin1(reader.name));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(mutation.next());
        }
        outcome.cases = *done;
        outcome.problem = QString::fromLatin1(reader.name) + u": "_s + outcome.problem;
    }
    return outcome;
}

// The same with a fuzzer that watches which code an input reaches, under the sanitizers, where the preset
// "fuzz" is built.
Outcome fuzzRound(const Round &round)
{
    const Reader &reader = readers().at(round.seed % readers().size());
    const QString name = QString::fromLatin1(reader.name);
    Outcome outcome;
    if (!QFile::exists(fuzzer(name))) {
        return outcome;
    }
    // What it has found stays from round to round.
    const QString found = QStringLiteral(QUILLON_FUZZERS "/../found/") + name;
    QDir().mkpath(found);
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(round.root + u"/"_s + name + u".txt"_s);
    process.start(fuzzer(name),
        {u"-runs=%1"_s.arg(inputsOfARound), u"-seed=%1"_s.arg(round.seed + 1),
            u"-artifact_prefix="_s + round.root + u'/', found, QStringLiteral(QUILLON_CORPUS "/") + name});
    process.waitForFinished(-1);
    outcome.cases = inputsOfARound;
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        outcome.crash(name + u" ended with %1"_s.arg(process.exitCode()));
    }
    return outcome;
}

} // namespace quillon::soak
