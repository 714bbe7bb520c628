#include "supportreference.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <ctime>
#include <fcntl.h>
#include <unistd.h>

namespace quillon::bench {

using namespace Qt::StringLiterals;

namespace {

QByteArray linesToCut()
{
    constexpr int lines = 6'250;
    QByteArray text;
    for (int line = 0; line < lines; ++line) {
        text += "D" + QByteArray::number(100 + line % 900) + "|12/06/2010 18:22:05|Es|"
            + QByteArray::number(87.5 + line % 205 * 0.1, 'f', 1)
            + "|Brandenburg, Berlin (Alex)|D|strong for some minutes|RADIO_1|100|917.4|fml=sent#|4711|\r\n";
    }
    return text;
}

double processorTime()
{
    timespec now {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

void reference(benchmark::State &state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(referenceWork());
    }
}
BENCHMARK(reference)->Unit(benchmark::kMillisecond);

} // namespace

int referenceWork()
{
    static const QByteArray text = linesToCut();
    int pieces = 0;
    qsizetype begin = 0;
    std::vector<QStringList> rows;
    for (qsizetype end = text.indexOf('\n'); end >= 0; end = text.indexOf('\n', begin)) {
        rows.push_back(QString::fromLatin1(text.sliced(begin, end - begin)).split(u'|'));
        pieces += static_cast<int>(rows.back().size());
        begin = end + 1;
    }
    return pieces;
}

double referenceTime()
{
    constexpr double least = 10;
    const double before = processorTime();
    benchmark::DoNotOptimize(referenceWork());
    return std::max(processorTime() - before, least);
}

bool savePlain(const QByteArray &path, const QByteArray &bytes)
{
    const QByteArray beside = path + ".new";
    const int file = ::open(beside.constData(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0666);
    return ::write(file, bytes.constData(), static_cast<std::size_t>(bytes.size())) == bytes.size()
        && ::fsync(file) == 0 && ::close(file) == 0 && ::rename(beside.constData(), path.constData()) == 0;
}

double savePlainTime(const QByteArray &path, const QByteArray &bytes)
{
    const double before = processorTime();
    if (!savePlain(path, bytes)) {
        qFatal("cannot write %s", path.constData());
    }
    return processorTime() - before;
}

} // namespace quillon::bench
