#include "core/logbooklines.h"
#include "import/rdsdx.h"
#include "import/rdsspy.h"
#include "platform/folder.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <dirent.h>
#include <string>
#include <vector>

// Each import beside a plain loop over the same input.

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

constexpr int fileCount = 20'000;
constexpr int lineCount = 10'000;

const Regional &regional()
{
    static const Regional western {CodePage(1252), NumberFormat(), MonthNames::of(QLocale::c())};
    return western;
}

QString number(int value, int width)
{
    return u"%1"_s.arg(value, width, 10, QChar(u'0'));
}

// A folder with four weeks of receptions.
const QString &folder()
{
    static const QTemporaryDir directory;
    static const QString path = [] {
        for (int i = 0; i < fileCount; ++i) {
            const QString name = u"2010-06-"_s + number(i % 28 + 1, 2) + u' ' + number(i % 24, 2) + u'-'
                + number(i % 60, 2) + u"-00 D3C3 RADIO "_s + number(i, 5) + u".txt"_s;
            QFile file(directory.filePath(name));
            if (!file.open(QIODevice::WriteOnly)) {
                qFatal("cannot write %s", qPrintable(file.fileName()));
            }
        }
        return directory.path();
    }();
    return path;
}

const QByteArray &rdsdxFile()
{
    static const QByteArray file = [] {
        QByteArray bytes = "Freq   PI   PS       Time    ITU Station\r\n";
        for (int i = 0; i < lineCount; ++i) {
            const QByteArray clock =
                (number(i % 24, 2) + number(i % 60, 2) + u' ' + number(i % 59, 2)).toLatin1();
            bytes += "87.6   D3C3 BAYERN3  " + clock + " D   D, Wendelstein|Es, strong\r\n";
        }
        return bytes;
    }();
    return file;
}

void listOneDay(benchmark::State &state)
{
    const auto day = dayOf(u"12/06/2010"_s, regional().months);
    (void)folder();
    for (auto _ : state) {
        benchmark::DoNotOptimize(listRdsSpyFolder(folder(), day.value(), regional()));
    }
}
BENCHMARK(listOneDay)->Unit(benchmark::kMillisecond);

void readTheFolderAlone(benchmark::State &state)
{
    const QByteArray path = QFile::encodeName(folder());
    for (auto _ : state) {
        std::vector<std::string> names;
        DIR *open = ::opendir(path.constData());
        while (const dirent *entry = ::readdir(open)) {
            names.emplace_back(entry->d_name);
        }
        ::closedir(open);
        benchmark::DoNotOptimize(names);
    }
}
BENCHMARK(readTheFolderAlone)->Unit(benchmark::kMillisecond);

void importAndSerialise(benchmark::State &state)
{
    for (auto _ : state) {
        Logbook log;
        importRdsdx(log, rdsdxFile(), u"/logs/20100612.txt"_s, regional(), [](const QString &) {});
        benchmark::DoNotOptimize(logbookBytes(log, regional().codePage));
    }
}
BENCHMARK(importAndSerialise)->Unit(benchmark::kMillisecond);

void cutTheLinesAlone(benchmark::State &state)
{
    for (auto _ : state) {
        const std::string text = rdsdxFile().toStdString();
        std::vector<std::vector<std::string>> lines;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = text.find("\r\n", at);
            const std::string line = text.substr(at, end - at);
            lines.push_back({line.substr(0, 6), line.substr(7, 4), line.substr(12, 8), line.substr(21, 7),
                line.substr(29, 3), line.substr(33)});
            at = end + 2;
        }
        benchmark::DoNotOptimize(lines);
    }
}
BENCHMARK(cutTheLinesAlone)->Unit(benchmark::kMillisecond);

} // namespace
